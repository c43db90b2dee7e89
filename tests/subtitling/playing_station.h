// A station whose video plays on the scripted clock: the simulated player
// moves with each pump, Timer1's tick reads it, and actions scheduled at
// video positions stand for the operator's keys.
#pragma once

#include <array>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "core/timecode.h"
#include "doubles/simulated_player.h"
#include "support/station_fixture.h"
#include "transport/video_commands.h"

namespace quillon::testing {

struct PlayingStation : TestStation {
  explicit PlayingStation(double duration = 120, int fps = 25) : TestStation(fps), player([this] { return ui.clock; }) {
    Session& s = st.s;
    st.player = &player;
    player.fileDuration = duration;
    player.renderFile("clip.mp4");
    s.videoFile = u"clip.mp4";
    s.videoDuration = duration;
    s.tcStart = 0;
    s.tcEnd = duration;
    s.delay = 0.2;  // five frames at 25 fps
    s.readingSpeed = 14;
    s.minOnAir1 = 1;
    s.maxOnAir = 6;
    s.minInterleave = 0;
    s.maxCharsRow = 32;
    installTransport(st);
    // Positions land on multiples of 0.02 s, so marks at round times are
    // whole frames less the delay.
    ui.pumpStep = 0.02;
    ui.onPump = [this] {
      timer1Tick(st);
      if (next < actions.size() && transformadaTCactual(st.s) >= actions[next].at - 0.001) actions[next++].what();
    };
  }

  // The operator's actions, in the order given: each runs on the first pump
  // at which the video's timecode has reached its time, after the one before.
  void when(double at, std::function<void()> what) { actions.push_back({at, std::move(what)}); }
  // Pumps until every action has run.
  void playActions() {
    while (next < actions.size()) ui.pumpEvents();
  }
  // The overlay's timing press (Space): the mark at the present timecode.
  void markAt(double at) {
    when(at, [this] { st.s.TCSpacebar = transformadaTCactual(st.s); });
  }
  // The operator's Esc.
  void escapeAt(double at) {
    when(at, [this] { st.s.g_fsim = false; });
  }
  // Cursor to the start of the first paragraph holding `text`.
  void cursorAt(std::u16string_view text) {
    const long p = static_cast<long>(content().find(text));
    docs.select({p, p});
  }
  void italicise(std::u16string_view text) {
    const long p = static_cast<long>(content().find(text));
    docs.setItalic({p, p + static_cast<long>(text.size())}, true);
  }

  struct Action {
    double at;
    std::function<void()> what;
  };
  SimulatedPlayer player;
  std::vector<Action> actions;
  size_t next = 0;
};

// The subtitle overlay in one line: shown or not, place and height, then
// each line's text, colour (hex), italics and alignment.
inline std::string overlay(const FormaSubState& f) {
  std::ostringstream o;
  o << (f.Visible ? "shown" : "hidden") << " at " << f.Left << "," << f.Top << " height " << f.Height << std::hex;
  for (const OverlayLine* l : {&f.Line1, &f.Line2})
    o << " | " << toUtf8(l->caption) << " " << l->foreColor << (l->italic ? " italic" : "") << " align " << l->alignment;
  return o.str();
}

// The window as a timing run or an edit leaves it: everything enabled, the
// run over, the overlays hidden.
inline ::testing::AssertionResult windowRestored(const Station& st) {
  const ViewState& v = st.view;
  for (const char* m : {"mnu_file", "mnu_ctlVideo", "mnu_sub", "mnu_dub", "mnu_cc", "mnu_herr", "mnu_hlp"})
    if (!v.menu(m).enabled) return ::testing::AssertionFailure() << m << " left disabled";
  if (!v.toolbarEnabled) return ::testing::AssertionFailure() << "toolbar left disabled";
  if (!v.slVideo.enabled) return ::testing::AssertionFailure() << "slider left disabled";
  if (st.s.g_fsim) return ::testing::AssertionFailure() << "g_fsim left set";
  if (st.s.g_fspot) return ::testing::AssertionFailure() << "g_fspot left set";
  if (st.s.g_fVideoRun) return ::testing::AssertionFailure() << "video left running";
  if (v.overlays.FormaSub.Visible || v.overlays.FormaCC.Visible)
    return ::testing::AssertionFailure() << "overlay left visible";
  return ::testing::AssertionSuccess();
}

}  // namespace quillon::testing
