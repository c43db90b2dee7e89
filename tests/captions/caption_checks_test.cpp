#include <gtest/gtest.h>

#include "captions/caption_checks.h"
#include "script/document_service.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

struct CaptionScan : ::testing::Test {
  testing::TestStation ts;
  void SetUp() override { installCaptionChecks(ts.st); }
  bool scan(std::u16string_view text) {
    ts.open(text);
    return scanCaptions(ts.st, 0);
  }
  u16 selected() { return ts.docs.selection(); }
};

TEST_F(CaptionScan, ReadsAttributesTimesAndUpToFourRows) {
  ASSERT_TRUE(scan(u"CAP[3IR 00:00:01:00>00:00:03:00]\nOne\nTwo\n\nCAP[0NL 00:00:04:00>00:00:06:15]\nA\nB\nC\nD\n"));
  const ScanTable& t = ts.st.s.scan;
  ASSERT_EQ(t.count(), 2);
  EXPECT_EQ(t.posDigit[1], u'3');
  EXPECT_EQ(t.styleChar[1], u'I');
  EXPECT_EQ(t.alignChar[1], u'R');
  EXPECT_DOUBLE_EQ(t.cueIn[1], 1.0);
  EXPECT_DOUBLE_EQ(t.cueOut[2], 6.5);
  EXPECT_EQ(t.captionRows[1][0], u"One");
  EXPECT_EQ(t.captionRows[1][1], u"Two");
  EXPECT_EQ(t.captionRows[1][2], u"");
  EXPECT_EQ(t.captionRows[1][3], u"");
  EXPECT_EQ(t.captionRows[2][3], u"D");
  EXPECT_TRUE(t.isSubtitle[2]);
  EXPECT_TRUE(ts.ui.boxes.empty());
}

TEST_F(CaptionScan, ThirtyTwoCharactersPassAndThirtyThreeStop) {
  const u16 row32(32, u'x');
  EXPECT_TRUE(scan(u"CAP[0NC 00:00:01:00>00:00:03:00]\n" + row32 + u"\n"));
  EXPECT_TRUE(ts.ui.boxes.empty());

  const u16 row33 = u"abcdefghijklmnopqrstuvwxyz0123456";
  EXPECT_FALSE(scan(u"CAP[0NC 00:00:01:00>00:00:03:00]\nshort\n" + row33 + u"\n"));
  ASSERT_EQ(ts.ui.boxes.size(), 1u);
  EXPECT_EQ(ts.ui.lastBox().text,
            u"Error: Maximum number of characters per row (32) exceeded in2 of caption in [00:00:01:00]\r"
            u"abcdefghijklmnopqrstuvwxyz012345");
  EXPECT_EQ(ts.ui.lastBox().icon, Icon::Critical);
  EXPECT_EQ(ts.st.s.scan.subtitleCount, 1.0);
  EXPECT_EQ(selected(), row33);
}

TEST_F(CaptionScan, TooShortAnEntryStopsAtItsCueOut) {
  ts.st.s.minCaptionOnAir = 1.5;
  EXPECT_FALSE(scan(u"CAP[0NC 00:00:01:00>00:00:02:00]\nFirst row\nSecond row\n"));
  EXPECT_EQ(ts.ui.boxes.at(0).box.text,
            u"Minimum On-air duration violation in [00:00:01:00]\rFirst row\r"
            u"Please allow captions at least 1.50 sec. on the air.");
  EXPECT_EQ(selected(), u"00:00:02:00]");
  EXPECT_EQ(ts.st.s.scan.subtitleCount, 1.0);
}

TEST_F(CaptionScan, TooLongAnEntryStopsAtItsCueIn) {
  EXPECT_FALSE(scan(u"CAP[0NC 00:00:01:00>00:00:07:01]\nRow\n"));
  EXPECT_EQ(ts.ui.boxes.at(0).box.text,
            u"On-air duration violation in [00:00:01:00]\rCue-out for:\rRow\roccurs too late.\r"
            u"Please maintain subtitles for less than 6.00 sec. on the air.");
  EXPECT_EQ(selected(), u"00:00:01:00>");
}

TEST_F(CaptionScan, ExactLimitsPass) {
  EXPECT_TRUE(scan(u"CAP[0NC 00:00:01:00>00:00:02:00]\nA\n\nCAP[0NC 00:00:03:00>00:00:09:00]\nB\n"));
  EXPECT_TRUE(ts.ui.boxes.empty());
}

TEST_F(CaptionScan, CueOutBeforeCueInIsASequenceError) {
  EXPECT_FALSE(scan(u"CAP[0NC 00:00:05:00>00:00:04:00]\nBackwards\n"));
  EXPECT_EQ(ts.ui.boxes.at(0).box.text,
            u"Time code sequence error in [00:00:05:00]\rCue-out for:\rBackwards\r"
            u"occurs before cue-in for same subtitle.");
  EXPECT_EQ(selected(), u"00:00:04:00]");
}

TEST_F(CaptionScan, AZeroCueEscapesTheDurationChecks) {
  // Cue-in 0: neither duration rule applies, even for twenty seconds.
  EXPECT_TRUE(scan(u"CAP[0NC 00:00:00:00>00:00:20:00]\nOpen\n"));
  EXPECT_TRUE(ts.ui.boxes.empty());
}

TEST_F(CaptionScan, DurationIsCheckedBeforeRowLength) {
  EXPECT_FALSE(scan(u"CAP[0NC 00:00:01:00>00:00:01:10]\n" + u16(40, u'y') + u"\n"));
  ASSERT_EQ(ts.ui.boxes.size(), 1u);
  EXPECT_TRUE(startsWith(ts.ui.lastBox().text, u"Minimum On-air duration violation"));
}

TEST_F(CaptionScan, MisplacedBracketGivesTheHeaderMessage) {
  EXPECT_FALSE(scan(u"CAP[0NC 00:00:01:00 >00:00:03:00]\nRow\n"));
  ASSERT_EQ(ts.ui.boxes.size(), 1u);
  EXPECT_EQ(ts.ui.lastBox().text, u"Header format error in :\r\rCAP[0NC 00:00:01:00 >00:00:03:...\r\r");
  EXPECT_EQ(ts.st.s.scan.subtitleCount, 1.0);
}

}  // namespace
}  // namespace quillon
