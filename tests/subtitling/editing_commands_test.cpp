#include <gtest/gtest.h>

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
  EXPECT_TRUE(t.ui.boxTexts().empty());  // the checks were off for its scan
  t.open(u"SUB[0 N 00:00:01:00-00:00:03:00]\nBroken\n\n");
  cursor(0);
  mnu_sub_edit(t.st);
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(edited.size(), 1u);
}

// Merge (from the first cue-in to the last cue-out; a single tag loses its
// cue-out), delete timing (only the first tag, renamed), the interleave
// repair (one frame more than the minimum) and hiding the timecodes (a box
// per tag). What each leaves is in golden/editing_commands.txt.
TEST(EditingCommands, EachCommandOnItsSelection) {
  const u16 three = block("00:00:01:00", "00:00:03:00", "One") + block("00:00:04:00", "00:00:06:00", "Two\rlines") +
                    block("00:00:07:00", "00:00:09:00", "Three");
  const u16 tight = block("00:00:01:00", "00:00:03:00", "One") + block("00:00:03:02", "00:00:05:00", "Two") +
                    block("00:00:05:03", "00:00:07:00", "Three") + block("00:00:06:00", "00:00:08:00", "Four") +
                    u"DUB[\r";
  const struct {
    const char* name;
    void (*command)(Station&);
    const u16& script;
    long from, to;  // the selection; -1: the script's end
    int interleave = 0;
  } cases[] = {
      {"merge of three", mnu_sub_merge, three, 0, 115},
      {"merge of one", mnu_sub_merge, three, 0, 38},
      {"merge of nothing", mnu_sub_merge, three, 0, 0},
      {"delete timing", mnu_sub_deltiming, three, 0, -1},
      {"interleave repair", mnu_sub_changeinterleave, tight, 0, 0, 2},
      {"interleave repair without a minimum", mnu_sub_changeinterleave, tight, 0, 0},
      {"hide timecodes", mnu_opc_hideTC, three, 0, 0},
  };
  u16 transcript;
  for (const auto& c : cases) {
    SubtitlingStation t;
    t.st.s.minInterleave = static_cast<int16_t>(c.interleave);
    t.st.s.g_fVideoRun = true;
    t.open(c.script);
    t.docs.select({c.from, c.to < 0 ? t.docs.length() : c.to});
    c.command(t.st);
    transcript += leftBy(c.name, t);
    EXPECT_FALSE(t.st.s.checksDisabled) << c.name;
    EXPECT_EQ(t.ui.pointer, Pointer::Default) << c.name;
  }
  EXPECT_EQ(lines(transcript), golden("subtitling/golden/editing_commands.txt"));
}

}  // namespace
}  // namespace quillon::testing
