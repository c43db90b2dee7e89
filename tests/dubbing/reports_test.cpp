#include <gtest/gtest.h>

#include "dubbing/dialogue_list.h"
#include "dubbing/line_count.h"
#include "subtitling/subtitling_fixture.h"

namespace quillon::testing {
namespace {

const char16_t kScript[] =
    u"DUB[0 N 00:00:01:00>00:00:03:15] ANA\nHola.\n\n"
    u"DUB[0 F 00:00:04:00>00:00:06:00] PEDRO\nQue tal, Ana?\n\n"
    u"DUB[0 N 00:00:07:00>00:00:09:00] ANA\nBien.\n\n";

// The list in a box and on the clipboard, of the whole script or of the
// tags in the selection; none without tags.
TEST(DialogueList, RowsThenCountsPerCharacter) {
  u16 transcript;
  for (long from : {0L, 44L, -1L}) {
    TestStation ts;
    ts.open(from < 0 ? u"Nothing timed\n" : kScript);
    ts.docs.select({std::max(from, 0L), from > 0 ? ts.docs.length() : 0});
    mnu_dub_out(ts.st);
    transcript += u"## list from " + numberText(static_cast<double>(from)) + u"\r";
    for (const u16& box : ts.ui.boxTexts()) transcript += box + u"\r";
    EXPECT_EQ(ts.ui.clip, ts.ui.boxes.empty() ? u16() : ts.ui.lastBox().text);
  }
  EXPECT_EQ(lines(transcript), golden("dubbing/golden/dialogue_list.txt"));
}

// Laid-out lines (60 characters a line) or the ACTRA fractions per dialogue
// and per character go at the head of the script.
TEST(LineCount, LinesPerCharacterGoAtTheHead) {
  u16 hundredTwenty;  // 24 words, 120 characters
  for (int i = 0; i < 24; ++i) hundredTwenty += u"abcd ";
  const u16 mixed = u"DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\nDUB[0 N 00:00:04:00>00:00:06:00] PEDRO\n"
                    u"This dialog is long enough to wrap onto a second line of the page when laid out\n\n"
                    u"DUB[00:00:07:00]\tANA\nBien.\n";
  const struct {
    bool actra;
    u16 script;
  } cases[] = {
      {false, mixed},
      {true, u"DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\nDUB[0 N 00:00:04:00>00:00:06:00] ANA\n" +
                 hundredTwenty + u"\n\nDUB[0 N 00:00:07:00>00:00:09:00] LUIS\nOne two three four five.\n"},
      {false, u"SUB[0 N 00:00:01:00>00:00:03:00]\nA subtitle\n\n"},
  };
  u16 transcript;
  for (const auto& c : cases) {
    TestStation ts;
    ts.st.s.actraGuidelines = c.actra;
    ts.open(c.script);
    ASSERT_TRUE(mnu_herr_lin(ts.st));
    transcript += u"## line count\r" + ts.content() + u"\r";
    EXPECT_EQ(ts.st.view.panel(3).text, u"");
  }
  EXPECT_EQ(lines(transcript), golden("dubbing/golden/line_count.txt"));
}

TEST(LineCount, ClearingTheRunWritesNoReport) {
  TestStation ts;
  ts.open(kScript);
  const u16 before = ts.content();
  ts.ui.onPump = [&] { ts.st.s.g_fsim = false; };
  EXPECT_FALSE(mnu_herr_lin(ts.st));
  EXPECT_EQ(ts.content(), before);
  EXPECT_EQ(ts.st.view.panel(3).text, u"");
}

}  // namespace
}  // namespace quillon::testing
