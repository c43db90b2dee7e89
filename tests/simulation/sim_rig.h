// A station with a script, a playing simulated video and the main timer
// ticking on every pump of the simulated clock.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "core/timecode.h"
#include "doubles/simulated_player.h"
#include "support/station_fixture.h"
#include "transport/video_commands.h"

namespace quillon::testing {

struct SimRig {
  explicit SimRig(double duration = 600, int fps = 30) : t(fps), player([this] { return t.ui.clock; }) {
    player.fileDuration = duration;
    player.renderFile("clip.avi");
    Session& s = t.st.s;
    t.st.player = &player;
    s.videoFile = u"clip.avi";
    s.videoDuration = duration;
    s.tcStart = 0;
    s.tcEnd = duration;
    s.followSimulation = s.jumpToNextBlock = false;
    t.st.view.overlays.mainLeft = 1000, t.st.view.overlays.mainTop = 2000;
    t.st.view.overlays.focus = "slVideo";
    installTransport(t.st);
    t.ui.pumpStep = 0.01;
    t.ui.onPump = [this] {
      timer1Tick(t.st);
      if (each) each();
      while (!keys.empty() && keys.front().first <= now()) {
        auto key = std::move(keys.front().second);
        keys.erase(keys.begin());
        key();
      }
    };
  }

  Station& st() { return t.st; }
  Session& s() { return t.st.s; }
  OverlayState& ov() { return t.st.view.overlays; }
  // The video's position in seconds.
  double now() const { return t.st.s.g_dblPosActual; }
  // Something to do on the first pump at which the video has reached `at`.
  void at(double when, std::function<void()> what) { keys.emplace_back(when, std::move(what)); }

  TestStation t;
  SimulatedPlayer player;
  std::function<void()> each;  // called on every pump
  std::vector<std::pair<double, std::function<void()>>> keys;
};

// A subtitle tag paragraph with blank alignment unless told.
inline std::u16string subTag(char16_t pos, char16_t align, char16_t style, double in, double out, int fps = 30) {
  return u"SUB[" + std::u16string(1, pos) + std::u16string(1, align) + std::u16string(1, style) + u" " +
         SEGaTC(in, fps) + u">" + SEGaTC(out, fps) + u"]\n";
}

// The main window as a simulation must leave it.
inline void expectMainWindowBack(const Station& st) {
  const ViewState& v = st.view;
  EXPECT_FALSE(st.s.g_fsim);
  for (const char* m : {"mnu_file", "mnu_ctlVideo", "mnu_sub", "mnu_dub", "mnu_cc", "mnu_herr", "mnu_hlp"})
    EXPECT_TRUE(v.menu(m).enabled) << m;
  EXPECT_TRUE(v.slVideo.visible && v.toolbarVisible && v.panels[3].enabled);
  EXPECT_EQ(std::tuple(v.overlays.focus, v.overlays.Text1.Left), std::tuple(std::string("slVideo"), -1000));
  EXPECT_TRUE(v.overlays.Text1.Text.empty() && v.panels[3].text.empty());
  EXPECT_FALSE(v.overlays.Text1.Visible || v.overlays.FormaSub.Visible || v.overlays.FormaCC.Visible);
}

}  // namespace quillon::testing
