#include <gtest/gtest.h>

#include "script/tag_grammar.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

// A tag that only ends the text of the last block.
const u16 kStop = u"DUB[\r";

struct RuleChecks : ::testing::Test {
  SubtitlingStation t;
  // Boxes are counted per scan; the stop tag keeps the last text whole.
  bool scan(const u16& text) {
    t.ui.boxes.clear();
    t.open(text + kStop);
    return scanSubtitles(t.st, 0);
  }
};

TEST_F(RuleChecks, MinimumOnAirPassesAtTheLimitAndAsksBelowIt) {
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:02:00", "Exactly one second")));
  EXPECT_TRUE(t.boxes().empty());

  t.ui.answers = {Answer::Yes};
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:01:15", "Half a second")));
  ASSERT_EQ(t.boxes().size(), 1u);
  EXPECT_EQ(t.boxes()[0],
            u"1-line subtitle: On-air duration violation in [00:00:01:00]\rCue-out for:\r\rHalf a second\r\r"
            u"occurs too early.\rPlease allow subtitle at least 1.00 sec. on the air.\rContinue?");
  const MessageBoxRequest& box = t.ui.lastBox();
  EXPECT_EQ(box.buttons, Buttons::YesNo);
  EXPECT_EQ(box.icon, Icon::Critical);
  EXPECT_EQ(box.defaultButton, 2);
  EXPECT_EQ(box.title, u"QUILLON");
}

TEST_F(RuleChecks, AnswerNoStopsTheScanWithTheCursorOnTheCueOut) {
  t.ui.answers = {Answer::No};
  u16 text = block("00:00:01:00", "00:00:05:00", "Fine") + block("00:00:06:00", "00:00:06:15", "Short") +
             block("00:00:08:00", "00:00:09:00", "Never read");
  EXPECT_FALSE(scan(text));
  EXPECT_EQ(t.st.s.scan.subtitleCount, 1);
  EXPECT_EQ(t.selected(), u"00:00:06:15]");
  EXPECT_EQ(t.ui.pointer, Pointer::Default);
  EXPECT_EQ(t.boxes().size(), 1u);
}

TEST_F(RuleChecks, AnswerYesLetsTheScanGoOn) {
  t.ui.answers = {Answer::Yes};
  u16 text = block("00:00:06:00", "00:00:06:15", "Short") + block("00:00:08:00", "00:00:09:00", "Read");
  EXPECT_TRUE(scan(text));
  EXPECT_EQ(t.st.s.scan.subtitleCount, 2);
  EXPECT_EQ(t.boxes().size(), 1u);
}

TEST_F(RuleChecks, MaximumOnAirPassesAtTheLimitAndStopsOnTheCueIn) {
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:07:00", "Six seconds")));
  EXPECT_TRUE(t.boxes().empty());

  t.ui.answers = {Answer::No};
  EXPECT_FALSE(scan(block("00:00:01:00", "00:00:07:15", "Too long")));
  ASSERT_EQ(t.boxes().size(), 1u);
  EXPECT_EQ(t.boxes()[0],
            u"On-air duration violation in [00:00:01:00]\rCue-out for:\r\rToo long\r\roccurs too late.\r"
            u"Please maintain subtitles for less than 6.00 sec. on the air.\rContinue?");
  EXPECT_EQ(t.selected(), u"00:00:01:00>");
}

TEST_F(RuleChecks, CueInOnThePreviousCueOutPassesAndOneFrameEarlierFires) {
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:03:00", "One") + block("00:00:03:00", "00:00:05:00", "Two")));
  EXPECT_TRUE(t.boxes().empty());

  t.ui.answers = {Answer::No};
  EXPECT_FALSE(scan(block("00:00:01:00", "00:00:03:00", "One") + block("00:00:02:29", "00:00:05:00", "Two")));
  ASSERT_EQ(t.boxes().size(), 1u);
  EXPECT_EQ(t.boxes()[0],
            u"Time code sequence error in [00:00:02:29]\rCue-in for:\r\rTwo\r\r"
            u"occurs before cue-out for previous subtitle.\r\rContinue?");
  EXPECT_EQ(t.selected(), u"00:00:02:29>");
}

TEST_F(RuleChecks, InterleaveFiresOnAnExactGapAndPassesOneFrameMore) {
  const u16 twoFrames = block("00:00:01:00", "00:00:03:00", "One") + block("00:00:03:02", "00:00:05:00", "Two");
  const u16 threeFrames = block("00:00:01:00", "00:00:03:00", "One") + block("00:00:03:03", "00:00:05:00", "Two");
  EXPECT_TRUE(scan(twoFrames));  // no minimum set: the rule is off
  t.st.s.minInterleave = 2;
  EXPECT_TRUE(scan(threeFrames));
  EXPECT_TRUE(t.boxes().empty());
  t.ui.answers = {Answer::Yes};
  EXPECT_TRUE(scan(twoFrames));
  ASSERT_EQ(t.boxes().size(), 1u);
  EXPECT_EQ(t.boxes()[0],
            u"Warning: Minimum interleave violation in [00:00:03:02]\rCue-in for:\r\rTwo\r\roccurs too early.\r"
            u"Please allow at least 2 frames between consecutive subtitles.\rContinue?");
  EXPECT_EQ(t.ui.lastBox().icon, Icon::Critical);
}

TEST_F(RuleChecks, CueOutOnTheCueInIsASequenceFaultAndNotAShortSubtitle) {
  t.ui.answers = {Answer::No};
  EXPECT_FALSE(scan(block("00:00:04:00", "00:00:04:00", "Frozen")));
  ASSERT_EQ(t.boxes().size(), 1u);
  EXPECT_EQ(t.boxes()[0],
            u"Time code sequence error in [00:00:04:00]\rCue-out for:\r\rFrozen\r\r"
            u"occurs before cue-in for same subtitle.\r\rContinue?");
  EXPECT_EQ(t.selected(), u"00:00:04:00]");
}

TEST_F(RuleChecks, TimesAtZeroEscapeTheDurationAndInterleaveRules) {
  t.st.s.minInterleave = 2;
  EXPECT_TRUE(scan(block("00:00:00:00", "00:00:00:10", "Opens the show") +
                   block("00:00:02:00", "00:00:00:00", "Open cue-out")));
  EXPECT_TRUE(t.boxes().empty());
}

TEST_F(RuleChecks, FastSubtitlePassesAtTheLimitAndOffersBothRemedies) {
  t.st.s.readingSpeedCheck = true;
  t.st.s.readingSpeed = 10;
  t.st.s.fastThreshold = 25;  // 12.5 characters per second
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:03:00", "1234567890123456789012345")));
  EXPECT_TRUE(t.boxes().empty());

  t.ui.answers = {Answer::No};
  EXPECT_FALSE(scan(block("00:00:01:00", "00:00:03:00", "12345678901234567890123456")));
  ASSERT_EQ(t.boxes().size(), 1u);
  EXPECT_EQ(t.boxes()[0],
            u"Warning: Fast subtitle threshold exceded in [00:00:01:00]\r\r12345678901234567890123456\r\r(130%).\r\r"
            u"Either extend it in time by 00:18 (cue out => 00:00:03:18) \ror reduce it by 06 Caracters.\r\r"
            u"Continue?");
  EXPECT_EQ(t.ui.lastBox().icon, Icon::Exclamation);
  EXPECT_EQ(t.ui.lastBox().defaultButton, 2);
  EXPECT_EQ(t.selected(), u"00:00:01:00>");
}

TEST_F(RuleChecks, ReadingSpeedRulesNeedTheirOption) {
  t.st.s.readingSpeed = 10;
  t.st.s.slowThreshold = 50;
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:02:00", "12345678901234567890") +
                   block("00:00:03:00", "00:00:05:00", "1")));
  EXPECT_TRUE(t.boxes().empty());
}

TEST_F(RuleChecks, SlowSubtitlePassesAtTheLimitAndIsOffWithAZeroThreshold) {
  t.st.s.readingSpeedCheck = true;
  t.st.s.readingSpeed = 10;
  t.st.s.slowThreshold = 50;  // 5 characters per second
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:03:00", "1234567890")));
  EXPECT_TRUE(t.boxes().empty());

  t.ui.answers = {Answer::Yes};
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:03:00", "12345678")));
  ASSERT_EQ(t.boxes().size(), 1u);
  EXPECT_EQ(t.boxes()[0],
            u"Warning: Slow subtitle threshold exceded in [00:00:01:00]\r\r12345678\r\r\r(40%).\rContinue?");
  EXPECT_EQ(t.ui.lastBox().icon, Icon::Exclamation);

  t.st.s.slowThreshold = 0;
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:03:00", "12345678")));
  EXPECT_TRUE(t.boxes().empty());
}

TEST_F(RuleChecks, ZeroDurationPassesTheReadingSpeedRules) {
  t.st.s.readingSpeedCheck = true;
  t.st.s.slowThreshold = 50;
  t.ui.answers = {Answer::Yes};  // the sequence rule still asks
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:01:00", "Text")));
  EXPECT_EQ(t.boxes().size(), 1u);
}

TEST_F(RuleChecks, TwoLinesOfSixteenPassAndCountThirtyThreeForReadingSpeed) {
  t.st.s.readingSpeedCheck = true;
  t.st.s.readingSpeed = 16.5;
  t.st.s.fastThreshold = 0;
  // 33 characters in 2 seconds is exactly the limit; one more is not.
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:03:00", "1234567890123456\r1234567890123456")));
  EXPECT_TRUE(t.boxes().empty());
  t.ui.answers = {Answer::Yes};
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:03:00", "1234567890123456\r12345678901234567")));
  EXPECT_EQ(t.boxes().size(), 1u);
}

TEST_F(RuleChecks, RowLengthOfASingleLine) {
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:03:00", "12345678901234567890123456789012")));
  EXPECT_TRUE(t.boxes().empty());
  t.ui.answers = {Answer::Yes};
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:03:00", "123456789012345678901234567890123")));
  ASSERT_EQ(t.boxes().size(), 1u);
  EXPECT_EQ(t.boxes()[0],
            u"Error: Maximum number of characters per row (32) exceeded in single-line subtitle in [00:00:01:00]\r\r"
            u"123456789012345678901234567890123\r\r\rContinue?");
  EXPECT_EQ(t.ui.lastBox().icon, Icon::Critical);
}

TEST_F(RuleChecks, RowLengthOfEachLineOfTwo) {
  t.st.s.maxCharsRow = 5;
  t.ui.answers = {Answer::Yes, Answer::Yes};
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:03:00", "123456\r1234567")));
  ASSERT_EQ(t.boxes().size(), 2u);
  EXPECT_EQ(t.boxes()[0],
            u"Error: Maximum number of characters per row (5) exceeded in first line of subtitle in [00:00:01:00]\r\r"
            u"123456\r\rContinue?");
  EXPECT_EQ(t.boxes()[1],
            u"Error: Maximum number of characters per row (5) exceeded in second line of subtitle in [00:00:01:00]\r\r"
            u"1234567\rContinue?");

  t.ui.boxes.clear();
  t.ui.answers = {Answer::No};
  EXPECT_FALSE(scan(block("00:00:01:00", "00:00:03:00", "123456\r1234567")));
  EXPECT_EQ(t.boxes().size(), 1u);  // No on the first line: the second is not asked
}

TEST_F(RuleChecks, DisabledChecksAskNothingAndTheTotalsStillGrow) {
  t.st.s.checksDisabled = true;
  EXPECT_TRUE(scan(block("00:00:01:00", "00:00:01:05", "Short and far too long for one row of text") +
                   block("00:00:00:10", "00:00:00:05", "Two\rLines") + block("00:00:09:00", "00:00:10:00", "\rLate")));
  EXPECT_TRUE(t.boxes().empty());
  EXPECT_EQ(t.st.s.totalbloq1linea, 2);  // a text opening with an empty line is one line
  EXPECT_EQ(t.st.s.totalbloq2lineas, 1);
  EXPECT_EQ(t.st.s.totalChars, 42 + 9 + 5);
}

TEST_F(RuleChecks, TotalsStartFromZeroOnEveryScanAndSkipDubbing) {
  t.st.s.checksDisabled = true;
  u16 text = block("00:00:01:00", "00:00:02:00", "One") + u"DUB[0 N 00:00:03:00>00:00:04:00] JOHN\rHello\r\r" +
             block("00:00:05:00", "00:00:06:00", "Two\rLines");
  scan(text);
  scan(text);
  EXPECT_EQ(t.st.s.totalbloq1linea, 1);
  EXPECT_EQ(t.st.s.totalbloq2lineas, 1);
  EXPECT_EQ(t.st.s.totalChars, 3 + 9);
}

}  // namespace
}  // namespace quillon::testing
