#include <gtest/gtest.h>

#include "dubbing/dialogue_list.h"
#include "dubbing/line_count.h"
#include "script/document_service.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

const char16_t kScript[] =
    u"DUB[0 N 00:00:01:00>00:00:03:15] ANA\nHola.\n\n"
    u"DUB[0 F 00:00:04:00>00:00:06:00] PEDRO\nQue tal, Ana?\n\n"
    u"DUB[0 N 00:00:07:00>00:00:09:00] ANA\nBien.\n\n";

TEST(DialogueList, RowsThenCountsPerCharacter) {
  testing::TestStation ts;
  ts.open(kScript);
  mnu_dub_out(ts.st);
  const u16 expected =
      u"Dialog number\tCharacter\tCue-in\tCue-out\tDuration\tDialog\r"
      u"1\tANA\t00:00:01:00\t00:00:03:15\t00:00:02:15\tHola.\r\r\r"
      u"2\tPEDRO\t00:00:04:00\t00:00:06:00\t00:00:02:00\tQue tal, Ana?\r\r\r"
      u"3\tANA\t00:00:07:00\t00:00:09:00\t00:00:02:00\tBien.\r"
      u"ANA:\t2\rPEDRO:\t1\rTotal:\t3";
  ASSERT_EQ(ts.ui.boxes.size(), 1u);
  EXPECT_EQ(ts.ui.lastBox().text, expected);
  EXPECT_EQ(ts.ui.clip, expected);
}

TEST(DialogueList, ASelectionWithTagsLimitsTheList) {
  testing::TestStation ts;
  ts.open(kScript);
  const u16 text = ts.content();
  const long second = instr(text, u"DUB[0 F") - 1;
  ts.docs.select({second, static_cast<long>(text.size())});
  auto report = dialogueList(ts.st);
  ASSERT_TRUE(report);
  EXPECT_EQ(instr(*report, u"Hola."), 0);
  EXPECT_NE(instr(*report, u"1\tPEDRO\t"), 0);
}

TEST(DialogueList, NoTagsNoReport) {
  testing::TestStation ts;
  ts.open(u"Nothing timed\n");
  mnu_dub_out(ts.st);
  EXPECT_TRUE(ts.ui.boxes.empty());
}

TEST(LineCount, LaidOutLinesPerCharacterGoAtTheHead) {
  testing::TestStation ts;
  const u16 longDialog =
      u"This dialog is long enough to wrap onto a second line of the page when laid out";
  ts.open(u"DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\n"
          u"DUB[0 N 00:00:04:00>00:00:06:00] PEDRO\n" + longDialog + u"\n\n"
          u"DUB[00:00:07:00]\tANA\nBien.\n");
  ASSERT_TRUE(mnu_herr_lin(ts.st));
  EXPECT_EQ(ts.content(),
            u"Dialog number\tCharacter\tDialog\t# Lines\r"
            u"1\tANA\tHola.\t1.\r"
            u"2\tPEDRO\t" + longDialog + u"\t2.\r"
            u"3\tANA\tBien.\t1.\r"
            u"ANA:\t2\rPEDRO:\t2\rTotal:\t4"
            u"DUB[0 N 00:00:01:00>00:00:03:00] ANA\rHola.\r\r"
            u"DUB[0 N 00:00:04:00>00:00:06:00] PEDRO\r" + longDialog + u"\r\r"
            u"DUB[00:00:07:00]\tANA\rBien.\r");
  EXPECT_EQ(ts.st.view.panel(3).text, u"");
  EXPECT_EQ(ts.ui.pointer, Pointer::Default);
}

TEST(LineCount, ActraColumnKeepsFractionsAndRoundsTotals) {
  testing::TestStation ts;
  ts.st.s.actraGuidelines = true;
  u16 hundredTwenty;  // 24 words, 120 characters
  for (int i = 0; i < 24; ++i) hundredTwenty += u"abcd ";
  ts.open(u"DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\n"
          u"DUB[0 N 00:00:04:00>00:00:06:00] ANA\n" + hundredTwenty + u"\n\n"
          u"DUB[0 N 00:00:07:00>00:00:09:00] LUIS\nOne two three four five.\n");
  ASSERT_TRUE(mnu_herr_lin(ts.st));
  EXPECT_TRUE(startsWith(ts.content(), u"Dialog number\tCharacter\tDialog\t# Lines (ACTRA)\r"
                                       u"1\tANA\tHola.\t.333\r"
                                       u"2\tANA\t" + hundredTwenty + u"\t2.4\r"
                                       u"3\tLUIS\tOne two three four five.\t1.\r"
                                       u"ANA:\t3\rLUIS:\t1\rTotal:\t4DUB[0 N"));
}

TEST(LineCount, NoDubbingParagraphsGiveHeadAndZeroTotal) {
  testing::TestStation ts;
  ts.open(u"SUB[0 N 00:00:01:00>00:00:03:00]\nA subtitle\n\n");
  ASSERT_TRUE(mnu_herr_lin(ts.st));
  EXPECT_TRUE(startsWith(ts.content(), u"Dialog number\tCharacter\tDialog\t# Lines\rTotal:\t0SUB["));
}

TEST(LineCount, ClearingTheRunWritesNoReport) {
  testing::TestStation ts;
  ts.open(kScript);
  const u16 before = ts.content();
  ts.ui.onPump = [&] { ts.st.s.g_fsim = false; };
  EXPECT_FALSE(mnu_herr_lin(ts.st));
  EXPECT_EQ(ts.content(), before);
  EXPECT_EQ(ts.st.view.panel(3).text, u"");
}

}  // namespace
}  // namespace quillon
