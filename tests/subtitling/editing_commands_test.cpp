#include <gtest/gtest.h>

#include "core/timecode.h"
#include "subtitling/editing_commands.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

struct Editing : ::testing::Test {
  SubtitlingStation t;
  const u16 text = block("00:00:01:00", "00:00:03:00", "One") + block("00:00:04:00", "00:00:06:00", "Two\rlines") +
                   block("00:00:07:00", "00:00:09:00", "Three");
  long at(const char16_t* what) { return static_cast<long>(t.content().find(what)); }
  void cursor(long p) { t.docs.select({p, p}); }
};

TEST_F(Editing, NextAndPreviousLeaveTheCursorInFrontOfATag) {
  t.open(u"Intro\n" + text);
  const struct {
    void (*command)(Station&);
    const char16_t* from;
    const char16_t* to;
  } moves[] = {
      {mnu_sub_next, u"Intro", u"SUB[0 N 00:00:01"},
      {mnu_sub_next, nullptr, u"SUB[0 N 00:00:04"},
      {mnu_sub_prev, nullptr, u"SUB[0 N 00:00:04"},  // one paragraph back, then forward: the same tag
      {mnu_sub_prev, u"Three", u"SUB[0 N 00:00:07"},
      {mnu_sub_next, nullptr, u"Three"},  // from the last tag: behind it
  };
  for (const auto& m : moves) {
    if (m.from) cursor(at(m.from));
    m.command(t.st);
    EXPECT_EQ(t.docs.selectionRange(), (TextRange{at(m.to), at(m.to)})) << toUtf8(m.to);
  }
}

TEST_F(Editing, EditHandsTheTagUnderTheCursorToTheTimingEditorOrEndsOnAFailedScan) {
  std::vector<int> edited;
  int ended = 0;
  t.st.editSubtitle = [&](Station& st, int i) {
    EXPECT_FALSE(st.s.checksDisabled);
    edited.push_back(i);
  };
  t.st.endProgram = [&](Station&) { ++ended; };
  t.open(text + block("00:00:02:00", "00:00:02:10", "Out of order"));
  cursor(at(u"SUB[0 N 00:00:04") + 5);
  mnu_sub_edit(t.st);
  cursor(at(u"Three"));
  mnu_sub_edit(t.st);  // text, not a tag
  EXPECT_EQ(edited, std::vector<int>{2});
  EXPECT_TRUE(t.boxes().empty());  // the checks were off for its scan
  t.open(u"SUB[0 N 00:00:01:00-00:00:03:00]\nBroken\n\n");
  cursor(0);
  mnu_sub_edit(t.st);
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(edited.size(), 1u);
}

TEST_F(Editing, UndoRemovesTheLastTagAndGoesBackTwoSeconds) {
  Session& s = t.st.s;
  std::vector<double> seeks;
  t.st.ira = [&](Station&, double p) { seeks.push_back(p); };
  s.videoFile = u"video";
  s.videoDuration = 100;
  s.tcEnd = 100;
  t.open(text);
  mnu_undo(t.st);  // nothing taken yet
  EXPECT_EQ(t.content(), text);
  s.tagUndo[1] = u"SUB[0 N 00:00:04:00>00:00:06:00]\r";
  s.tagUndoCount = 1;
  mnu_undo(t.st);
  EXPECT_EQ(t.content(), block("00:00:01:00", "00:00:03:00", "One") + u"Two\rlines\r\r" +
                             block("00:00:07:00", "00:00:09:00", "Three"));
  EXPECT_EQ(s.tagUndoCount, 0);
  EXPECT_EQ(seeks, std::vector<double>{2});
}

// Merged from the first cue-in to the last cue-out; a single tag loses its
// cue-out; nothing selected, nothing merged.
TEST_F(Editing, MergeJoinsTheSelectedSubtitles) {
  t.open(text);
  t.docs.select({at(u"SUB[0 N 00:00:01"), at(u"Three")});
  mnu_sub_merge(t.st);
  EXPECT_EQ(t.content(), u"SUB[0 N 00:00:01:00>00:00:09:00]\rOne\rTwo\rlines\rThree\r\r");
  t.open(text);
  t.docs.select({0, at(u"SUB[0 N 00:00:04")});
  mnu_sub_merge(t.st);
  EXPECT_EQ(left(t.content(), 25), u"SUB[0 N 00:00:01:00>]\rOne");
  cursor(0);
  const u16 before = t.content();
  mnu_sub_merge(t.st);
  EXPECT_EQ(t.content(), before);
}

TEST_F(Editing, DeleteTimingOnlyRenamesTheFirstTagInTheSelection) {
  t.open(text);
  t.docs.select({0, t.docs.length()});
  mnu_sub_deltiming(t.st);
  EXPECT_EQ(left(t.content(), 9), u"JOJO[0 N ");
  EXPECT_EQ(t.boxes(), std::vector<u16>{u"luego de Execute"});
  EXPECT_EQ(t.ui.lastBox().icon, Icon::None);
}

TEST_F(Editing, InterleaveRepairLeavesOneFrameMoreThanTheMinimum) {
  t.st.s.minInterleave = 2;
  t.st.s.g_fVideoRun = true;
  const u16 tight = block("00:00:01:00", "00:00:03:00", "One") + block("00:00:03:02", "00:00:05:00", "Two") +
                    block("00:00:05:03", "00:00:07:00", "Three") + block("00:00:06:00", "00:00:08:00", "Four") +
                    u"DUB[\r";
  t.open(tight);
  mnu_sub_changeinterleave(t.st);
  EXPECT_EQ(t.content(), block("00:00:01:00", "00:00:03:00", "One") + block("00:00:03:03", "00:00:05:00", "Two") +
                             block("00:00:05:03", "00:00:07:00", "Three") +
                             block("00:00:07:03", "00:00:08:00", "Four") + u"DUB[\r");
  EXPECT_TRUE(t.boxes().empty());
  EXPECT_FALSE(t.st.s.checksDisabled);
  EXPECT_FALSE(t.st.s.g_fVideoRun);
  EXPECT_EQ(t.st.s.scan.cueIn[2], 3 + 2.0 / 30);  // the table keeps what it read
  t.st.s.minInterleave = 0;
  t.open(tight);
  mnu_sub_changeinterleave(t.st);
  EXPECT_EQ(t.content(), tight);
}

TEST_F(Editing, HideTimecodesWalksTheTagsOneByOne) {
  t.open(text);
  mnu_opc_hideTC(t.st);
  EXPECT_EQ(t.boxes(), (std::vector<u16>{u"Timecode es SUB[0 N 00:00:01:00>00:00:03:00]",
                                         u"Timecode es SUB[0 N 00:00:04:00>00:00:06:00]",
                                         u"Timecode es SUB[0 N 00:00:07:00>00:00:09:00]"}));
  EXPECT_EQ(t.docs.selectionRange(), t.docs.paragraph(1));
  EXPECT_TRUE(t.st.view.panel(3).text.empty());
}

TEST_F(Editing, TimecodeOnTheClipboardIsAShortDubbingTag) {
  t.st.view.LabTimecode.caption = u"00:01:02:03";
  t.ui.clip = u"old";
  mnu_opc_tcclip(t.st);
  EXPECT_TRUE(t.st.view.menu("mnu_opc_tcclip").checked);
  EXPECT_EQ(t.ui.clip, u"DUB[00:01:02:03]\t");
  mnu_opc_tcclip(t.st);
  EXPECT_FALSE(t.st.s.timecodeInClipboard);
  EXPECT_TRUE(t.ui.clip.empty());
}

}  // namespace
}  // namespace quillon::testing
