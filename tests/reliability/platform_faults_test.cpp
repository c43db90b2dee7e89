// Faults of the platform under a running command: the player that cannot
// open a video or dies in the middle of play, the pedal's adapter pulled
// out, the script closed under a timing run. Each command must end as it
// ends on an error, leave the window usable for the next command, and keep
// what was already written.
#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "captions/caption_timing_loop.h"
#include "dubbing/dub_marks.h"
#include "simulation/simulation_menus.h"
#include "subtitling/playing_station.h"
#include "subtitling/timing_loop.h"
#include "transport/pedal.h"
#include "transport/transport_fixture.h"

namespace quillon {
namespace {

using testing::PlayingStation;
using testing::TransportStation;
using testing::windowRestored;

// A pump budget for a command under test: past it the run counts as hung
// and is cut short, so a fault fails the test instead of hanging it.
struct PumpBound {
  PumpBound(testing::TestStation& t, long limit) : t_(t), limit_(limit) {
    auto inner = t.ui.onPump;
    t.ui.onPump = [this, inner] {
      if (inner) inner();
      if (++pumps_ > limit_) {
        hung = true;
        t_.st.s.g_fsim = t_.st.s.g_fedit = t_.st.s.g_fVideoRun = false;
      }
    };
  }
  bool hung = false;

 private:
  testing::TestStation& t_;
  long limit_;
  long pumps_ = 0;
};

// A PAL video file tagged with a window from 00:00:00:00 to 00:02:00:00.
u16 palVideo(const std::string& name) {
  return u"\"" + fromUtf8(testing::videoFile(name, "\"P00000000000200000\"\r\n")) + u"\"";
}

// The operator opens the video again after the player has come back.
void reopenVideo(testing::TestStation& t, SimulatedPlayer& player, const std::string& name) {
  player.diesAt = std::numeric_limits<double>::infinity();
  abrirvideo(t.st, palVideo(name));
}

TEST(PlayerFaults, AVideoThePlayerCannotOpenGivesTheBoxAndChangesNothingElse) {
  // No player could be made at all, or this one cannot read the file.
  for (bool noPlayer : {true, false}) {
    SCOPED_TRACE(noPlayer ? "no player" : "unreadable file");
    TransportStation t;
    const u16 video = palVideo("broken.avi");
    if (noPlayer) t.st.player = nullptr;
    else t.player.failing.insert("renderFile");
    const ViewState before = t.st.view;
    abrirvideo(t.st, video);
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(std::tuple(t.ui.lastBox().text, t.ui.lastBox().icon, t.ui.pointer, t.st.s.g_fVideoRun,
                         t.st.s.videoDuration),
              std::tuple(u16(u"Error: Cannot create video object"), Icon::Critical, Pointer::Default, false, 0.0));
    if (!noPlayer) EXPECT_EQ(t.st.view.panel(3).text, u"");
    // The transport stays as it was: nothing new to time or simulate against.
    for (const char* m : {"mnu_ctlVideo", "mnu_tex_par", "mnu_sub", "mnu_dub", "mnu_cc"})
      EXPECT_EQ(t.st.view.menu(m).enabled, before.menu(m).enabled) << m;
    EXPECT_EQ(t.st.view.caption, before.caption);

    // The same file once the player can read it.
    t.st.player = &t.player;
    t.player.failing.clear();
    abrirvideo(t.st, video);
    EXPECT_EQ(std::tuple(t.ui.boxes.size(), t.player.running(), t.st.view.menu("mnu_sub").enabled),
              std::tuple(1u, true, true));
  }
}

TEST(PlayerFaults, APlayerDyingInPlayStopsTheVideoWhereItStood) {
  TransportStation t;
  t.openTaggedVideo(120);
  resumevideo(t.st);
  t.player.diesAt = t.ui.clock + 5;
  t.run(10);
  EXPECT_EQ(std::tuple(t.st.s.g_fVideoRun, t.st.view.menu("mnu_play").caption, t.ui.boxes.size()),
            std::tuple(false, u16(u"&Play"), 0u));
  EXPECT_NEAR(t.st.s.g_dblPosActual, 5, 0.05);  // not thrown back to 0
  EXPECT_EQ(t.st.view.LabTimecode.caption.substr(0, 7), u"01:00:0");

  reopenVideo(t, t.player, "again.avi");
  t.run(2);
  EXPECT_TRUE(t.st.s.g_fVideoRun);
  EXPECT_NEAR(t.st.s.g_dblPosActual, 2, 0.05);
}

const u16 kUntimed = u"One\r\rTwo\r\rThree\r\rFour\r\r";

TEST(PlayerFaults, APlayerDyingInATimingRunEndsItAsTheVideoEndKeepingTheTags) {
  PlayingStation t;
  PumpBound bound(t, 200000);
  t.open(kUntimed);
  t.cursorAt(u"One");
  for (double at : {2.0, 4.0, 5.0}) t.markAt(at);  // Two's cue-in; the player dies before its cue-out
  t.when(5.5, [&] { t.player.diesAt = t.ui.clock + 1.0; });
  timingLoop(t.st);
  // Two keeps its one-line floor, reached as the video stopped.
  EXPECT_EQ(t.content(), u"SUB[0 N 00:00:01:20>00:00:03:20]\rOne\r\r"
                         u"SUB[0 N 00:00:04:20>00:00:05:20]\rTwo\r\rThree\r\rFour\r\r");
  EXPECT_TRUE(windowRestored(t.st) && t.ui.boxes.empty());

  // The player back and the video open again, the run goes on from Three.
  reopenVideo(t, t.player, "timing.avi");
  t.cursorAt(u"Three");
  t.markAt(1.0);
  t.markAt(3.0);
  timingLoop(t.st);
  EXPECT_NE(t.content().find(u"SUB[0 N 00:00:00:20>00:00:02:20]\rThree"), u16::npos);
  EXPECT_FALSE(bound.hung);
}

TEST(PlayerFaults, APlayerDyingInASimulationClosesItAndTheNextOneRuns) {
  PlayingStation t;
  PumpBound bound(t, 200000);
  t.open(u"SUB[0 N 00:00:02:00>00:00:04:00]\rFirst\r\rSUB[0 N 00:00:06:00>00:00:09:00]\rSecond\r\r"
         u"SUB[0 N 00:00:30:00>00:00:33:00]\rThird\r\r");
  int shown = 0;
  auto inner = t.ui.onPump;
  t.ui.onPump = [&, inner, was = false]() mutable {
    inner();
    const bool showing = t.st.view.overlays.FormaSub.Visible;
    shown += showing && !was;
    was = showing;
  };
  t.player.diesAt = t.ui.clock + 7;  // in the middle of Second
  const u16 before = t.content();
  mnu_sim_d(t.st);
  EXPECT_EQ(shown, 2);
  EXPECT_TRUE(windowRestored(t.st) && t.st.view.slVideo.visible && t.st.view.toolbarVisible && t.ui.boxes.empty());
  EXPECT_EQ(t.content(), before);

  reopenVideo(t, t.player, "sim.avi");
  shown = 0;
  mnu_sim_d(t.st);
  EXPECT_EQ(shown, 3);
  EXPECT_FALSE(bound.hung);
}

TEST(PortFaults, ThePedalAdapterPulledInPlayLeavesThePlayAndTheKeysAndCanBeOpenedAgain) {
  TransportStation t;
  ASSERT_TRUE(t.port.open(1));  // as at start-up
  t.openTaggedVideo(120);
  resumevideo(t.st);
  t.run(1);
  t.port.lineChange(CommEvent::comEvCTS);  // forward pedal: +5 s
  t.run(1);
  EXPECT_NEAR(t.st.s.g_dblPosActual, 7, 0.1);

  t.port.lineChange(CommEvent::comEvDSR);  // a press the adapter never delivers
  t.port.vanish();
  t.port.lineChange(CommEvent::comEvCD);
  t.run(1);
  EXPECT_TRUE(t.st.s.g_fVideoRun && t.ui.boxes.empty());  // the middle pedal's stop was lost with the adapter
  EXPECT_NEAR(t.st.s.g_dblPosActual, 8, 0.1);
  advance5seconds(t.st);  // the keys still move the video
  t.run(0.5);
  EXPECT_NEAR(t.st.s.g_dblPosActual, 13.5, 0.1);

  // Plugged in again: the port menu opens it, since the station no longer holds it.
  mnu_footpedalcom(t.st, 1);
  EXPECT_EQ(t.ui.lastBox().text, u"An error occured trying to open serial port COM1.");
  t.port.presentPorts.insert(1);
  mnu_footpedalcom(t.st, 1);
  EXPECT_EQ(t.ui.lastBox().text, u"Serial Port COM1 opened for foot pedal communications.");
  t.port.lineChange(CommEvent::comEvDSR);
  t.run(1);
  EXPECT_FALSE(t.st.s.g_fVideoRun);
}

TEST(DocumentFaults, TheScriptClosedInATimingRunEndsItAsTheScriptsEnd) {
  struct Case {
    const char16_t *script, *first, *closed, *second, *retimed;
    void (*run)(Station&);
  };
  const Case cases[] = {
      {kUntimed.c_str(), u"One", u"SUB[0 N 00:00:01:20>00:00:03:20]\rOne\r\rTwo\r\rThree\r\rFour\r\r", u"Two",
       u"SUB[0 N 00:00:08:20>00:00:10:20]\rTwo\r\rThree", [](Station& st) { timingLoop(st); }},
      {u"Row one\rRow two\r\rSingle\r\rLast\r\r", u"Row one",
       u"CAP[0NC 00:00:01:20>00:00:03:20]\rRow one\rRow two\r\rSingle\r\rLast\r\r", u"Single",
       u"CAP[0NC 00:00:08:20>00:00:10:20]\rSingle\r", [](Station& st) { mnu_cc_temp(st); }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(toUtf8(c.first));
    PlayingStation t;
    PumpBound bound(t, 200000);
    u16 closed;
    t.open(c.script);
    t.cursorAt(c.first);
    for (double at : {2.0, 4.0, 5.0}) t.markAt(at);
    t.when(5.5, [&] {
      closed = t.docs.active()->text();
      t.docs.closeActive();
    });
    t.markAt(7.0);  // the second cue-out has no script to go to
    c.run(t.st);
    EXPECT_EQ(closed, c.closed);
    EXPECT_TRUE(windowRestored(t.st) && t.ui.boxes.empty());

    // The operator opens the script again and times on.
    t.open(closed);
    t.cursorAt(c.second);
    t.markAt(9.0);
    t.markAt(11.0);
    t.escapeAt(12.0);
    c.run(t.st);
    EXPECT_NE(t.content().find(c.retimed), u16::npos) << toUtf8(t.content());
    EXPECT_FALSE(bound.hung);
  }
}

TEST(DocumentFaults, TheScriptClosedBetweenDubbingMarksGivesTheAttachBoxAndTheNextBlockIsWritten) {
  PlayingStation t;
  PumpBound bound(t, 200000);
  u16 closed;
  Session& s = t.st.s;
  s.switchToWordProcessor = false;
  s.characterWindow = false;
  s.dub_voz_on = true;
  t.open(u"First line\r\rSecond line\r\rThird line\r\r");
  t.docs.select({0, 0});
  resumevideo(t.st);
  auto press = [&](double at) { t.when(at, [&] { mnu_dub_blo(t.st); }); };
  press(2.0);
  press(4.0);
  t.when(5.0, [&] {
    closed = t.docs.active()->text();
    t.docs.closeActive();
  });
  press(6.0);
  press(8.0);  // the block has no script to go to
  t.playActions();
  EXPECT_EQ(closed, u"DUB[0 N 00:00:01:20>00:00:03:20] First line\r\rSecond line\r\rThird line\r\r");
  EXPECT_EQ(t.ui.boxTexts(), std::vector<u16>{u"Error: No currently open Word document "});
  // Stopped at the mark, as for any block.
  EXPECT_EQ(std::tuple(s.g_fVideoRun, s.blockStart, t.st.view.menu("mnu_dub_blo").caption),
            std::tuple(false, 0.0, u16(u"Cue-in")));

  // The script open again, the operator plays on and marks the next block.
  t.open(closed);
  t.cursorAt(u"Second");
  resumevideo(t.st);
  press(10.0);
  press(12.0);
  t.playActions();
  EXPECT_NE(t.content().find(u"DUB[0 N 00:00:09:20>00:00:11:20] Second line"), u16::npos);
  EXPECT_TRUE(s.g_fVideoRun);
  EXPECT_FALSE(bound.hung);
}

}  // namespace
}  // namespace quillon
