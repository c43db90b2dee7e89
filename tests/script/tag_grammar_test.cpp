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

TEST(SubtitleScan, ModeOneReadsOnlyTheSelectionAndModeTwoDropsWhatIsBehindThePosition) {
  TestStation t;
  t.open(testing::generatedSubtitleScript(3));
  t.docs.select({0, t.docs.paragraph(5).start});  // the first subtitle only
  ASSERT_TRUE(scanSubtitles(t.st, ScanMode::Selection));
  EXPECT_EQ(t.st.s.scan.count(), 1);

  t.st.s.videoFile = u"v.mp4";
  t.st.s.videoDuration = 100;
  t.st.s.tcEnd = 100;
  t.st.s.g_dblPosActual = 12;  // the first subtitle starts at 10
  ASSERT_TRUE(scanSubtitles(t.st, ScanMode::FromCurrentPosition));
  EXPECT_EQ(t.st.s.scan.count(), 2);
  EXPECT_DOUBLE_EQ(t.st.s.scan.cueIn[1], 14);
}

TEST(DubbingScan, BothTagFormsBackFillOpenCueOutsAndFillTheRoster) {
  TestStation t;
  t.open(u"DUB[0 N 00:00:01:00>00:00:02:00] ANNA\nHi.\n\nDUB[00:00:05:00]\tMARK\nYo.\n\nDUB[00:00:07:00]\tANNA\nBye.\n\n");
  ASSERT_TRUE(scanSubtitles(t.st, ScanMode::WholeScript));
  const ScanTable& s = t.st.s.scan;
  ASSERT_EQ(s.count(), 3);
  EXPECT_FALSE(s.isSubtitle[1]);
  EXPECT_TRUE(s.voiceOn[1]);
  EXPECT_DOUBLE_EQ(s.cueOut[2], 7);  // closed by the next cue-in
  EXPECT_EQ(s.cueOut[3], 0);
  EXPECT_EQ(s.text[1], u"Hi.\r\r");
  EXPECT_EQ((std::vector<int>{s.voiceIndex[1], s.voiceIndex[2], s.voiceIndex[3]}), (std::vector<int>{1, 2, 1}));
  EXPECT_EQ(t.st.s.roster.numvoces, 2);
  EXPECT_EQ(t.st.s.roster.voces[2], u"MARK");
}

TEST(TagWriting, SubtitleAndTextlessTagsHaveTheirLayouts) {
  EXPECT_EQ(subtitleTag(12, u'R', u'1', 1, 2.48, 25), u"SUB[2R1 00:00:01:00>00:00:02:12]\r");
  EXPECT_EQ(textlessSubtitleTag(0, u' ', 1, 2, 30), u"SUB[0 N 00:00:01:00>00:00:02:00]\r\r");
  EXPECT_EQ(wholeTagPattern(u"00:00:01:00", u"00:00:02:00"), u"SUB[^?^?^? 00:00:01^?00>00:00:02^?00]");
  TestStation t;
  t.open(u"First line\n\n");
  insertSubtitleTag(t.st, subtitleTag(0, u' ', u'N', 1, 2, 30));
  EXPECT_EQ(t.content(), u"SUB[0 N 00:00:01:00>00:00:02:00]\rFirst line\r\r");
}

}  // namespace
}  // namespace quillon
