#include <gtest/gtest.h>

#include "core/station.h"
#include "script/document_files.h"
#include "script/document_ops.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

// Any line end ends a paragraph; UTF-8 with or without its mark, else
// Windows-1252; saving writes LF.
TEST(PlainText, LineEndsAndEncodingsOnLoadAndLfOnSave) {
  const std::pair<const char*, const char16_t*> cases[] = {
      {"a\r\nb\rc\nd", u"a\rb\rc\rd\r"},
      {"\xEF\xBB\xBF" "Caf\xC3\xA9", u"Caf\u00e9\r"},
      {"Caf\xC3\xA9", u"Caf\u00e9\r"},
      {"Caf\xE9 \x85", u"Caf\u00e9 \u2026\r"},
  };
  for (const auto& [bytes, text] : cases) EXPECT_EQ(plainTextDocument(bytes)->text(), text) << bytes;
  EXPECT_EQ(plainTextBytes(*plainTextDocument("a\r\nb\rc\nd")), "a\nb\nc\nd\n");
}

TEST(PlainText, FileRoundTripNamesTheDocumentAndReportsMissingFiles) {
  std::string dir = testing::tempDir("plain");
  MemoryDocument d;
  d.setText(u"SUB[0 N 00:00:01:00>00:00:02:00]\r\u00c9t\u00e9\r\r");
  std::string error;
  ASSERT_TRUE(saveDocumentFile(d, dir + "/script.txt", error)) << error;
  auto back = loadDocumentFile(dir + "/script.txt", error);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->text(), d.text());
  EXPECT_EQ(back->name, u"script.txt");
  EXPECT_FALSE(loadDocumentFile(dir + "/missing.txt", error));
  EXPECT_NE(error.find("missing.txt"), std::string::npos);
}

// Wildcard finds move the cursor but report false; the replacement swaps
// the first match and clears the undo list.
TEST(DocumentOps, FindsAndReplaceOnTheTags) {
  testing::TestStation t;
  MemoryDocument& d = t.open(u"SUB[0 N 00:00:01:00>00:00:02:00]\nA\n\nSUB[0 N 00:00:03;00>00:00:04:00]\nB\n\n");
  EXPECT_FALSE(findCueIn(t.st, u"00:00:03:00"));
  EXPECT_EQ(t.docs.selection(), u"00:00:03;00>");
  EXPECT_TRUE(findFromTop(t.st, u"SUB["));
  EXPECT_EQ(t.docs.selectionRange().start, 0);
  EXPECT_FALSE(findCueOut(t.st, u"00:00:02:00"));
  EXPECT_EQ(t.docs.selection(), u"00:00:02:00]");
  d.insert(0, u"x", false, false);
  d.erase({0, 1});
  replaceInDocument(t.st, u"00:00:01^?00>00:00:02^?00]", u"00:00:05:00>00:00:06:00]");
  EXPECT_EQ(t.content().substr(0, 33), u"SUB[0 N 00:00:05:00>00:00:06:00]\r");
  EXPECT_EQ(d.undoDepth(), 0u);
  EXPECT_FALSE(replaceInDocument(t.st, u"absent", u"x"));
}

}  // namespace
}  // namespace quillon
