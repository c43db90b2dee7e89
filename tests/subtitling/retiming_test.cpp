#include <gtest/gtest.h>

#include "core/timecode.h"
#include "subtitling/editing_commands.h"
#include "subtitling/retiming.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

struct Retiming : ::testing::Test {
  SubtitlingStation t{25};
  std::vector<double> seeks;
  void SetUp() override {
    t.st.ira = [this](Station&, double s) { seeks.push_back(s); };
  }
};

const char16_t* kScript =
    u"Title\n"
    u"SUB[2LI 00:00:01:00>00:00:03:12] note\nFirst\nline\n\n"
    u"DUB[0 F 00:00:04:00>00:00:05:00] ANNA\nHello there\n\n"
    u"SUB[0 N 00:00:06:00>00:00:08:00]\nLast\n\n";

TEST_F(Retiming, OffsetInPlaceMovesEveryTagFromTheFirstCueIn) {
  t.open(kScript);
  t.ui.inputs = {u16(u"00:01:00:00")};
  mnu_tex_off(t.st);
  EXPECT_EQ(t.ui.inputPrompts.back(),
            u"Enter new cue-in time code of the first subtitle/dialog in the selected block");
  EXPECT_EQ(t.content(), script(u"Title\n"
                                u"SUB[2LI 00:01:00:00>00:01:02:12] note\nFirst\nline\n\n"
                                u"DUB[0 F 00:01:03:00>00:01:04:00] ANNA\nHello there\n\n"
                                u"SUB[0 N 00:01:05:00>00:01:07:00]\nLast\n\n"));
}

TEST_F(Retiming, OffsetOfTheSelectedBlockOnly) {
  MemoryDocument& d = t.open(kScript);
  const long from = static_cast<long>(d.text().find(u"DUB["));
  t.docs.select({from, d.length()});
  t.ui.inputs = {u16(u"00:00:10:00")};
  mnu_tex_off(t.st);
  EXPECT_EQ(t.content(), script(u"Title\n"
                                u"SUB[2LI 00:00:01:00>00:00:03:12] note\nFirst\nline\n\n"
                                u"DUB[0 F 00:00:10:00>00:00:11:00] ANNA\nHello there\n\n"
                                u"SUB[0 N 00:00:12:00>00:00:14:00]\nLast\n\n"));
}

TEST_F(Retiming, AnUnreadableOffsetChangesNothing) {
  t.open(kScript);
  const u16 before = t.content();
  t.ui.inputs = {u16(u"soon")};
  mnu_tex_off(t.st);
  t.ui.inputs = {u16()};
  mnu_tex_off(t.st);
  EXPECT_EQ(t.content(), before);
  EXPECT_EQ(t.ui.boxTexts(), std::vector<u16>{u"Error in time code format: [soon]"});
}

TEST_F(Retiming, OffsetIntoANewDocumentWritesTheTagsAnew) {
  t.st.s.inSituOffset = false;
  t.open(kScript + std::u16string(u"DUB[0 N 00:00:09:00>00:00:10:00] BOB\nBye\n\n"));
  const u16 before = t.content();
  t.ui.inputs = {u16(u"00:00:02:00")};
  mnu_tex_off(t.st);
  ASSERT_EQ(t.docs.documents().size(), 2u);
  EXPECT_EQ(t.docs.fontName(), u"Arial Unicode MS");
  // Style 1 becomes I, the alignment goes, a voice-off tag is written on,
  // and a stop tag ends the last dubbing text (which, being last in its
  // script, was read without its final two characters).
  EXPECT_EQ(t.content(), script(u"SUB[2 I 00:00:02:00>00:00:04:12] note\nFirst\nline\n\n"
                                u"DUB[0 N 00:00:05:00>00:00:06:00] ANNA\nHello there\n\n"
                                u"SUB[0 N 00:00:07:00>00:00:09:00]\nLast\n\n"
                                u"DUB[0 N 00:00:10:00>00:00:11:00] BOB\nByeDUB[\n\n"));
  t.docs.activate(0);
  EXPECT_EQ(t.content(), before);
}

TEST_F(Retiming, PalToNtscKeepsTheSecondsAndRelabelsTheFrames) {
  t.open(u"SUB[0 N 00:00:01:12>00:00:02:24]\nA\n\nSUB[0 N 00:00:03;05>00:00:04:10]\nB\n\n");
  mnu_tex_PALtoNTSC(t.st);
  EXPECT_EQ(t.content(), script(u"SUB[0 N 00:00:01:14>00:00:02:29]\nA\n\nSUB[0 N 00:00:03:06>00:00:04:12]\nB\n\n"));
  EXPECT_EQ(t.st.s.g_fps, 25);
}

TEST_F(Retiming, NtscToPalIntoANewDocument) {
  t.st.s.inSituOffset = false;
  t.open(u"SUB[0 N 00:00:01:15>00:00:02:29]\nA\n\n");
  mnu_tex_NTSCtoPAL(t.st);
  EXPECT_EQ(t.content(), script(u"SUB[0 N 00:00:01:13>00:00:02:24]\nA\n"));
  EXPECT_EQ(t.st.s.g_fps, 25);
}

// A tag already rewritten may read as a later entry's old times; the later
// entry's own tag is rewritten all the same, and the first tag only once.
TEST(InPlaceRetiming, EveryTagIsRewrittenOnceWhereItStands) {
  struct Case {
    int fps;
    void (*command)(Station&);
    u16 before, after;
  } cases[] = {
      {30, mnu_tex_off,  // to 00:00:03:00: two seconds on
       block("00:00:01:00", "00:00:03:00", "A") + block("00:00:03:00", "00:00:05:00", "B"),
       block("00:00:03:00", "00:00:05:00", "A") + block("00:00:05:00", "00:00:07:00", "B")},
      {25, mnu_tex_PALtoNTSC, block("00:00:01:10", "00:00:02:10", "A") + block("00:00:01:12", "00:00:02:12", "B"),
       block("00:00:01:12", "00:00:02:12", "A") + block("00:00:01:14", "00:00:02:14", "B")},
      {30, mnu_sub_changeinterleave,  // two frames at least
       block("00:00:01:00", "00:00:02:00", "A") + block("00:00:02:01", "00:00:03:00", "B") +
           block("00:00:02:03", "00:00:03:00", "C"),
       block("00:00:01:00", "00:00:02:00", "A") + block("00:00:02:03", "00:00:03:00", "B") +
           block("00:00:03:03", "00:00:03:00", "C")},
  };
  for (const Case& c : cases) {
    SubtitlingStation t(c.fps);
    t.st.s.checksDisabled = true;  // the overlaps are the point here
    t.st.s.minInterleave = 2;
    t.ui.inputs = {u16(u"00:00:03:00")};
    t.open(c.before);
    c.command(t.st);
    EXPECT_EQ(t.content(), c.after) << "case " << (&c - cases);
  }
}

TEST_F(Retiming, BurntInTimecodeSetsTheWindowFromThePosition) {
  Session& s = t.st.s;
  s.videoFile = u"video";
  s.videoDuration = 600;
  s.g_dblPosActual = 10;
  s.g_fVideoRun = true;
  t.ui.inputs = {u16(u"010000")};
  mnu_tag_in(t.st);
  EXPECT_FALSE(s.g_fVideoRun);
  EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter burnt-in timecode (in point)...");
  EXPECT_DOUBLE_EQ(s.tcStart, 3590);
  EXPECT_DOUBLE_EQ(s.tcEnd, 4190);
  EXPECT_EQ(t.st.view.LabCom.caption, u"00:59:50:00");
  EXPECT_EQ(t.st.view.LabDur.caption, u"01:09:50:00");
  EXPECT_EQ(t.st.view.LabTimecode.caption, u"01:00:00:00");

  t.ui.inputs = {u16(u"01100012")};
  mnu_tag_out(t.st);
  EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter burnt-in timecode (out point)");
  EXPECT_DOUBLE_EQ(s.tcEnd, 600 - 10 + 4200 + 12.0 / 25);

  t.ui.inputs = {u16()};
  mnu_tag_in(t.st);
  t.ui.inputs = {u16(u"1:00")};
  mnu_tag_in(t.st);
  EXPECT_DOUBLE_EQ(s.tcStart, 3590);
  EXPECT_EQ(t.ui.boxTexts(), std::vector<u16>{u"Error in time code format: [1:00]"});
}

TEST_F(Retiming, GoToTimecodeOffersTheSelectedTimecodeAndSeeksWithinTheVideo) {
  Session& s = t.st.s;
  s.videoFile = u"video";
  s.videoDuration = 100;
  s.tcStart = 3600;
  s.tcEnd = 3700;
  MemoryDocument& d = t.open(block("01:00:20:00", "01:00:22:00", "A"));
  t.docs.select({8, 19});
  mnu_tex_iTC(t.st);  // the selected timecode is offered and taken
  EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter destination time code");
  t.ui.inputs = {u16(u"01003000")};
  mnu_tex_iTC(t.st);
  t.ui.inputs = {u16(u"02:00:00:00")};
  mnu_tex_iTC(t.st);
  EXPECT_EQ(seeks, (std::vector<double>{20, 30}));
  (void)d;
}

}  // namespace
}  // namespace quillon::testing
