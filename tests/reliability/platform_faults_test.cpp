// Faults of the platform under a running command: the player that cannot
// open a video or dies in the middle of play, the pedal's adapter pulled
// out, the script closed under a timing run. Each command must end as it
// ends on an error, leave the window usable for the next command, and keep
// what was already written.
#include <gtest/gtest.h>

#include <tuple>

#include "captions/caption_timing_loop.h"
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
  PumpBound(testing::TestStation& t, long limit) {
    t.ui.onPump = [this, &t, limit, inner = t.ui.onPump] {
      if (inner) inner();
      if (++pumps > limit) hung = true, t.st.s.g_fsim = t.st.s.g_fedit = t.st.s.g_fVideoRun = false;
    };
  }
  bool hung = false;
  long pumps = 0;
};

// A PAL video file tagged with a window from 00:00:00:00 to 00:02:00:00.
u16 palVideo(const std::string& name) {
  return u"\"" + fromUtf8(testing::videoFile(name, "\"P00000000000200000\"\r\n")) + u"\"";
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
    // The transport stays as it was: nothing new to time or simulate against.
    EXPECT_EQ(std::tuple(t.st.view.menu("mnu_sub").enabled, t.st.view.caption),
              std::tuple(before.menu("mnu_sub").enabled, before.caption));

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
  EXPECT_TRUE(windowRestored(t.st) && t.ui.boxes.empty() && !bound.hung);
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

  // Plugged in again: the port menu opens it, since the station no longer holds it.
  t.port.presentPorts.insert(1);
  mnu_footpedalcom(t.st, 1);
  EXPECT_EQ(t.ui.lastBox().text, u"Serial Port COM1 opened for foot pedal communications.");
}

TEST(DocumentFaults, TheScriptClosedInATimingRunEndsItAsTheScriptsEnd) {
  struct Case {
    const char16_t *script, *first, *closed;
    void (*run)(Station&);
  };
  const Case cases[] = {
      {kUntimed.c_str(), u"One", u"SUB[0 N 00:00:01:20>00:00:03:20]\rOne\r\rTwo\r\rThree\r\rFour\r\r",
       [](Station& st) { timingLoop(st); }},
      {u"Row one\rRow two\r\rSingle\r\rLast\r\r", u"Row one",
       u"CAP[0NC 00:00:01:20>00:00:03:20]\rRow one\rRow two\r\rSingle\r\rLast\r\r",
       [](Station& st) { mnu_cc_temp(st); }},
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
    EXPECT_TRUE(windowRestored(t.st) && t.ui.boxes.empty() && !bound.hung);
  }
}

}  // namespace
}  // namespace quillon
