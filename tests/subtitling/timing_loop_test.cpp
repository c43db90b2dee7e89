#include <gtest/gtest.h>

#include "subtitling/editing_commands.h"
#include "subtitling/playing_station.h"
#include "subtitling/timing_loop.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

// Untimed texts between two subtitles already timed at 1-3 s and 12-14 s.
const u16 kScript = block("00:00:01:00", "00:00:03:00", "Early") +
                    u"One\r\rTwo first line\rtwo second line\r\rThree\r\r" +
                    block("00:00:12:00", "00:00:14:00", "Late");

TEST(TimingRun, InteractiveWritesTagsClearOfTimedSubtitlesShowsTheTextAndUndoesTheLastTag) {
  PlayingStation t;
  FormaSubState seenBeforeCueIn, seenAfterCueIn;
  LabelState durAfterReadingTime;
  t.open(kScript);
  t.italicise(u"two second line");
  t.cursorAt(u"One");
  t.markAt(2.0);  // One: in 1.8 lies inside Early, so it moves behind it
  t.markAt(4.0);
  t.when(4.5, [&] { seenBeforeCueIn = t.st.view.overlays.FormaSub; });
  t.markAt(5.0);  // the two-line subtitle
  t.when(6.0, [&] { seenAfterCueIn = t.st.view.overlays.FormaSub; });
  t.when(8.0, [&] { durAfterReadingTime = t.st.view.LabDur; });
  t.markAt(12.5);  // out 12.3 runs into Late and is pulled back
  t.markAt(15.0);  // Three, after Late
  t.markAt(15.5);  // below the one-line floor of 16.0
  timingLoop(t.st);
  EXPECT_EQ(t.content(), block("00:00:01:00", "00:00:03:00", "Early") +
                             block("00:00:03:01", "00:00:03:20", "One") +
                             u"SUB[0 2 00:00:04:20>00:00:11:24]\rTwo first line\rtwo second line\r\r" +
                             block("00:00:14:20", "00:00:15:20", "Three") +
                             block("00:00:12:00", "00:00:14:00", "Late"));
  EXPECT_EQ(t.st.s.tagUndoCount, 3);
  // The floor held the last subtitle's cue-out: the run waited for 16 s,
  // then stopped on the timed text behind it.
  EXPECT_GE(t.st.s.g_dblPosActual, 16.0);
  EXPECT_LT(t.st.s.g_dblPosActual, 16.1);

  // The coming text grey, white from its cue-in on.
  EXPECT_EQ(overlay(seenBeforeCueIn),
            "shown at 60,4000 height 700 | Two first line c0c0c0 align 2 | two second line c0c0c0 italic align 2");
  EXPECT_EQ(overlay(seenAfterCueIn),
            "shown at 60,4000 height 700 | Two first line ffffff align 2 | two second line ffffff italic align 2");
  // 31 characters at 14 a second after the cue-in at 5 s, green once read.
  EXPECT_EQ(durAfterReadingTime.caption, u"00:00:07:05");
  EXPECT_EQ(durAfterReadingTime.foreColor, 65280u);

  EXPECT_TRUE(windowRestored(t.st));

  mnu_undo(t.st);
  EXPECT_EQ(t.st.s.tagUndoCount, 2);
  EXPECT_EQ(t.content().find(u"00:00:14:20"), u16::npos);
  EXPECT_NE(t.content().find(u"\rThree\r\rSUB[0 N 00:00:12:00"), u16::npos);
  EXPECT_NEAR(t.st.s.g_dblPosActual, 12.8, 1e-9);  // two seconds of run-up
}

TEST(TimingRun, MarksKeepTheDelayInForceAndTheOverlayKeysStyleAndPlace) {
  PlayingStation t;
  t.open(u"Alpha\r\rBeta\r\r");
  t.cursorAt(u"Alpha");
  t.markAt(2.0);
  t.when(2.5, [&] {
    Session& s = t.st.s;
    s.miItalStyle = u"I";  // the overlay's I, R and U keys
    s.ultimaposhcc = u"R";
    s.ultimaposenpantalla = 3;
  });
  // A new delay counts from the next text shown, not for the open one.
  t.when(3.0, [&] { t.st.s.delay = 0.4; });
  t.markAt(4.0);
  FormaSubState beta;
  t.when(5.0, [&] { beta = t.st.view.overlays.FormaSub; });
  t.markAt(6.0);
  t.markAt(8.0);
  timingLoop(t.st);
  EXPECT_EQ(t.content(), u"SUB[3RI 00:00:01:20>00:00:03:20]\rAlpha\r\rSUB[3RN 00:00:05:15>00:00:07:15]\rBeta\r\r");
  // Place and alignment carry over to the next text; the style does not.
  EXPECT_EQ(overlay(beta), "shown at 60,3200 height 350 | Beta c0c0c0 align 3 |  ffffff align 3");
  EXPECT_TRUE(windowRestored(t.st));
}

TEST(TimingRun, AssistedTakesTheCueOutFromTheTextAndOutNextInChains) {
  PlayingStation t;
  mnu_tex_opc_asis(t.st);
  t.open(u"Alpha\r\rBeta gamma\r\r");
  t.cursorAt(u"Alpha");
  t.markAt(2.0);
  // A right click on the overlay before the cue-out: the next cue-in
  // follows the cue-out by one frame.
  t.when(2.5, [&] { t.st.s.outnextin = true; });
  timingLoop(t.st);
  EXPECT_EQ(t.content(), u"SUB[0 N 00:00:01:20>00:00:02:20]\rAlpha\r\rSUB[0 N 00:00:02:21>00:00:03:21]\rBeta gamma\r\r");
  // Each cue-out waited for its interleave and one frame to play.
  EXPECT_GE(t.st.s.g_dblPosActual, 4.08);
  EXPECT_TRUE(windowRestored(t.st));
}

// Text-less marks write a numbered list with sequential numbering, else
// tags each with an empty paragraph.
TEST(TimingRun, TextlessMarksWriteAListOrEmptyTags) {
  for (bool numbered : {true, false}) {
    PlayingStation t;
    mnu_tex_opc_less(t.st);
    t.st.s.sequentialNumbering = numbered;
    t.st.s.nextSeqNumber = 7;
    t.st.s.minimiseSubtitleWindow = !numbered;
    t.open(u"Notes\r");
    t.cursorAt(u"Notes");
    FormaSubState seen;
    t.when(1.0, [&] { seen = t.st.view.overlays.FormaSub; });
    t.markAt(2.0);
    t.markAt(4.0);
    t.markAt(5.0);
    t.markAt(5.5);  // held to the one-line floor of 6.0
    t.escapeAt(7.0);
    timingLoop(t.st);
    EXPECT_EQ(t.content(), numbered ? u"0007\t00:00:01:20\t00:00:03:20\r0008\t00:00:04:20\t00:00:05:20\rNotes\r"
                                    : u"SUB[0 N 00:00:01:20>00:00:03:20]\r\rSUB[0 N 00:00:04:20>00:00:05:20]\r\rNotes\r");
    EXPECT_EQ(t.st.s.nextSeqNumber, numbered ? 9 : 7);
    EXPECT_EQ(seen.Line1.caption, u"NO TEXT");
    EXPECT_EQ(seen.BackColor, numbered ? 0u : 65535u);
    EXPECT_EQ(t.st.s.tagUndoCount, 0);
    EXPECT_TRUE(windowRestored(t.st));
  }
}

// Every way out of a run leaves the window and the script as they were.
TEST(TimingRun, EveryWayOutRestoresTheWindow) {
  struct WayOut {
    const char* name;
    u16 script;
    bool escape;
    u16 expectedBox;
  };
  const WayOut ways[] = {
      {"escape", u"Alpha\r\r", true, u""},
      {"script end", u"\r\r\r", false, u""},
      {"timed text", u"CAP[0NC 00:00:01:00>00:00:02:00]\rAlpha\r\r", false, u""},
      {"long first line", u"Thirty-three characters on a line\r\r", false,
       u"Error: Maximum number of characters per row (32) exceeded in \r\rThirty-three characters on a line\r\r"},
      {"long second line", u"Short\rThirty-three characters on a line\r\r", false,
       u"Error: Maximum number of characters per row (32) exceeded in second line in \r\rThirty-three "
       u"characters on a line\r\r"},
  };
  for (const WayOut& w : ways) {
    SCOPED_TRACE(w.name);
    PlayingStation t(3.0);
    t.open(w.script);
    t.docs.select({0, 0});
    if (w.escape) t.escapeAt(1.0);
    timingLoop(t.st);
    EXPECT_TRUE(windowRestored(t.st));
    EXPECT_EQ(t.st.s.tagUndoCount, 0);
    EXPECT_EQ(t.content(), w.script);
    EXPECT_EQ(t.ui.boxTexts(), w.expectedBox.empty() ? std::vector<u16>{} : std::vector<u16>{w.expectedBox});
  }
}

TEST(TimingRun, VideoEndDuringTheCueOutStillWritesTheTag) {
  PlayingStation t(3.0);
  t.open(u"Alpha\r\rBeta\r\r");
  t.cursorAt(u"Alpha");
  t.markAt(1.6);
  timingLoop(t.st);
  // No cue-out mark: the one-second floor stands; no wait for Beta can
  // begin in the video's last tenth of a second.
  EXPECT_EQ(t.content(), u"SUB[0 N 00:00:01:10>00:00:02:10]\rAlpha\r\rBeta\r\r");
  EXPECT_TRUE(windowRestored(t.st));
}

}  // namespace
}  // namespace quillon::testing
