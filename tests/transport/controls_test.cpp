#include "transport/controls.h"

#include <gtest/gtest.h>

#include <tuple>

#include "transport/keys.h"
#include "transport/transport_fixture.h"

namespace quillon {
namespace {

using testing::TransportStation;

TEST(Toolbar, ButtonsSeekAndHandTheFocusToTheSlider) {
  TransportStation t;
  t.openTaggedVideo();
  Station& st = t.st;
  const double fromFifty[12] = {0, 0, 40, 45, 49, 49.96, 50, 50.04, 51, 55, 60, 119};
  for (int b = 1; b <= 11; ++b) {
    if (b == 6) continue;
    ira(st, 50);
    st.view.overlays.focus.clear();
    toolbarClick(st, b);
    EXPECT_NEAR(st.s.g_dblPosActual, fromFifty[b], 1e-9) << "button " << b;
    EXPECT_EQ(st.view.overlays.focus, "slVideo");
  }
  EXPECT_TRUE(st.s.g_fVideoRun);  // button 11 runs the video
  toolbarClick(st, 6);
  EXPECT_EQ(std::tuple(st.s.g_fVideoRun, st.view.toolbarButton(6).image), std::tuple(false, 1));
}

TEST(Slider, ScrollSeeksToWholeSecondsButNotAfterAFrameStep) {
  TransportStation t;
  t.openTaggedVideo();
  Station& st = t.st;
  ira(st, 20);
  st.view.overlays.focus = "slVideo";
  // Down steps a frame, as does toolbar button 7; either leaves the flag
  // up, so the slider's first scroll after it is lost.
  for (auto [step, to, stepped] : {std::tuple{+[](Station& s) { keyDown(s, 40, 0); }, 21, 20.04},
                                   {+[](Station& s) { toolbarClick(s, 7); }, 60, 21.04}}) {
    step(st);
    st.view.slVideo.value = to;
    sliderScroll(st);
    EXPECT_DOUBLE_EQ(st.s.g_dblPosActual, stepped);
    sliderScroll(st);
    EXPECT_DOUBLE_EQ(st.s.g_dblPosActual, to);
  }
}

TEST(Timers, Timer1MovesThePositionInsideThePumpAndStopsAtTheEnd) {
  TransportStation t;
  t.openTaggedVideo(10);
  resumevideo(t.st);
  t.run(4);
  EXPECT_EQ(t.st.view.slVideo.value, 4);
  t.run(10);
  EXPECT_EQ(std::tuple(t.st.s.g_fVideoRun, t.st.view.toolbarButton(6).caption), std::tuple(false, u16(u"Play")));
  EXPECT_NEAR(t.st.s.g_dblPosActual, 10, 0.034);  // the last read before the end
  t.st.s.timecodeInClipboard = true;
  ira(t.st, 0);
  resumevideo(t.st);
  t.run(0.5);
  EXPECT_EQ(t.ui.clip, u"DUB[" + t.st.view.LabTimecode.caption + u"]\t");
}

}  // namespace
}  // namespace quillon
