#include <gtest/gtest.h>

#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

using testing::TestStation;

TEST(SubtitleScan, ReadsFieldsNoteAndTextWithItsTrailingMarks) {
  TestStation t(25);
  t.open(u"Title page\n\nSUB[3LI 00:00:01:00>00:00:02:12] check\nOne\nTwo\n\nSUB[0 N 00:00:03:00>00:00:04:00]\nLast\n\n");
  ASSERT_TRUE(scanSubtitles(t.st, ScanMode::WholeScript));
  const ScanTable& s = t.st.s.scan;
  ASSERT_EQ(s.count(), 2);
  EXPECT_DOUBLE_EQ(s.cueIn[1], 1);
  EXPECT_DOUBLE_EQ(s.cueOut[1], 2.48);
  EXPECT_EQ(u16({s.posDigit[1], s.alignChar[1], s.styleChar[1]}), u"3LI");
  EXPECT_EQ(s.noteText[1], u"check");
  EXPECT_EQ(s.text[1], u"One\rTwo\r\r");
  EXPECT_TRUE(s.isSubtitle[1]);
  EXPECT_EQ(s.records[1].line2, u"Two");
  // The last tag takes the text's length as its next place: two marks short.
  EXPECT_EQ(s.text[2], u"Last");
  EXPECT_TRUE(t.ui.boxes.empty());
}

// What a scan makes of a faulty tag: its answer, the entries it kept and
// the box, if any.
TEST(SubtitleScan, FaultyTagsAndNames) {
  const struct {
    const char* name;
    const char16_t* script;
    bool result;
    int kept;
    const char16_t* box;  // none when null
  } cases[] = {
      {"no tag", u"Just dialogue.\nNo timing yet.\n", false, 0, nullptr},
      {"header", u"SUB[0 N 00:00:01:00>00:00:02:00]\nA\n\nSUB[0 N 00:00:03:00-00:00:04:00]\nB\n\n", false, 1,
       u"Header format error in :\r\rSUB[0 N 00:00:03:00-00:00:04:00]\rB...\r\r"},
      {"timecode", u"SUB[0 N 00:00:01:00>00:00:02:00]\nA\n\nSUB[0 N 00:00:03:40>00:00:04:00]\nB\n\nSUB[0 N 00:00:05:00>00:00:06:00]\nC\n\n",
       true, 1, u"Error in time code format: [00:00:03:40]"},
      {"one-letter name", u"DUB[00:00:05:00]\tM\nYo.\n\n", false, 1,
       u"Error: Invalid Format in character name in TC=00:00:05:00"},
      {"empty name", u"DUB[00:00:05:00]\t\nYo.\n\n", true, 1, nullptr},
      {"CR behind the bracket", u"DUB[\nnot a tag\n\nSUB[0 N 00:00:01:00>00:00:02:00]\nA\n\n", true, 1, nullptr},
      {"sequence", u"DUB[0 N 00:00:01:00>00:00:02:00] ANNA\nA\n\nDUB[0 N 00:00:05:00>00:00:04:00] ANNA\nB\n\n", false, 1,
       u"Time code sequence error in [00:00:05:00]\rCue-out occurs before cue-in."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TestStation t;
    t.open(c.script);
    EXPECT_EQ(scanSubtitles(t.st, ScanMode::WholeScript), c.result);
    EXPECT_EQ(t.st.s.scan.subtitleCount, c.kept);
    EXPECT_EQ(t.ui.boxTexts(), c.box ? std::vector<u16>{c.box} : std::vector<u16>{});
  }
  // A header fault leaves the cursor on the tag.
  TestStation t;
  t.open(cases[1].script);
  scanSubtitles(t.st, ScanMode::WholeScript);
  EXPECT_EQ(t.docs.selectionRange().start, 36);
  EXPECT_EQ(t.ui.lastBox().icon, Icon::Critical);
}

}  // namespace
}  // namespace quillon
