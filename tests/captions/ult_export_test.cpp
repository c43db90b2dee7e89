#include <gtest/gtest.h>

#include <filesystem>

#include "captions/caption_checks.h"
#include "captions/ult_export.h"
#include "script/tag_grammar.h"
#include "golden.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

struct UltExport : ::testing::Test {
  testing::TestStation ts;
  FormCCult form;
  std::string dir = testing::tempDir("ult");
  void SetUp() override { installCaptionChecks(ts.st); }

  // The whole command: scan, file dialog, the form's OK.
  std::string exportUlt(std::u16string_view script, const std::string& name = "out.ult") {
    ts.open(script);
    const std::string path = dir + "/" + name;
    std::filesystem::remove(path);
    ts.ui.savePaths.push_back(path);
    EXPECT_TRUE(mnu_cc_ult(ts.st, form));
    EXPECT_TRUE(form.visible);
    formCCultProximo(ts.st, form);
    EXPECT_FALSE(form.visible);
    return testing::readFile(path);
  }
};

// Captions a tenth apart share no clear; italic four rows right-aligned get
// no padding nor italic code; a position out of range leaves the PAC out.
TEST_F(UltExport, ScriptsMatchTheGoldenFiles) {
  const std::pair<const char*, const char16_t*> cases[] = {
      {"three_captions.ult", u"CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n\nCAP[0NL 00:00:12:03>00:00:14:00]\nOk\n\n"
                             u"CAP[0NC 00:00:20:00>00:00:22:00]\nNo\n"},
      {"four_rows.ult", u"CAP[1IR 01:02:03:04>01:02:05:04]\nA\nBB\nCCC\nDDDDD\n"},
      {"out_of_range.ult", u"CAP[FNC 00:00:10:00>00:00:12:00]\nHi\n"},
  };
  for (const auto& [name, script] : cases) {
    ts.ui.boxes.clear();
    EXPECT_TRUE(testing::matchesCaptionGolden(name, exportUlt(script)));
  }
  EXPECT_EQ(ts.ui.boxTexts(), std::vector<u16>{u"RANGE ERROR IN FIRSTBYTE"});
  EXPECT_EQ(ts.ui.saveRequests.at(0).defaultName, u"Script1.ult");
}

TEST_F(UltExport, ProgramInfoGoesAheadOfTheRecords) {
  form.programInfo() = u"Show \u00e9";
  const std::string file = exportUlt(u"CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n");
  EXPECT_EQ(file.substr(232, 6), "Show \xe9");
  EXPECT_EQ(file.substr(238, 3), std::string("\xf1\x09\x00", 3));  // the first record's mark and size
  // The form keeps the text as typed for the next export.
  EXPECT_EQ(form.programInfo(), u"Show \u00e9");
}

TEST_F(UltExport, WrongExtensionWritesNothing) {
  ts.open(u"CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n");
  const std::string path = dir + "/out.ULT";
  ts.ui.savePaths.push_back(path);
  ASSERT_TRUE(mnu_cc_ult(ts.st, form));
  EXPECT_FALSE(formCCultProximo(ts.st, form));
  EXPECT_EQ(ts.ui.lastBox().text, u"Error: Wrong closed caption file extension");
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_FALSE(form.visible);
}

TEST_F(UltExport, CancelWhileWritingLeavesAnEmptyFile) {
  // Enough captions for the write to take several steps.
  u16 script;
  for (int i = 0; i < 200; ++i)  // a subtitle tag's fields in a caption's order
    script += u"CAP" + subtitleTag(0, u'N', u'C', 10 + 3 * i, 12 + 3 * i, 30).substr(3) + u"Some caption text here\r\r";
  ts.open(script);
  const std::string path = dir + "/cancelled.ult";
  ts.ui.savePaths.push_back(path);
  ASSERT_TRUE(mnu_cc_ult(ts.st, form));
  ts.ui.onPump = [&] {
    if (form.commandCaption == u"Cancel" && form.progressValue >= 2048) formCCultProximo(ts.st, form);
  };
  EXPECT_FALSE(formCCultProximo(ts.st, form));
  EXPECT_TRUE(std::filesystem::exists(path));
  EXPECT_EQ(testing::readFile(path), "");
  EXPECT_EQ(form.commandCaption, u"OK");
}

}  // namespace
}  // namespace quillon
