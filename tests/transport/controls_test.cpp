#include "transport/controls.h"

#include <gtest/gtest.h>

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
  EXPECT_FALSE(st.s.g_fVideoRun);
  EXPECT_EQ(st.view.toolbarButton(6).image, 1);
  toolbarClick(st, 6);
  EXPECT_EQ(st.view.toolbarButton(6).image, 2);
}

TEST(Slider, ScrollSeeksToWholeSecondsButNotAfterAFrameStep) {
  TransportStation t;
  t.openTaggedVideo();
  Station& st = t.st;
  ira(st, 20);
  st.view.overlays.focus = "slVideo";
  keyDown(st, 40, 0);  // Down: a frame forward, and the slider moves itself too
  st.view.slVideo.value = 21;
  sliderScroll(st);
  EXPECT_DOUBLE_EQ(st.s.g_dblPosActual, 20.04);
  sliderScroll(st);
  EXPECT_DOUBLE_EQ(st.s.g_dblPosActual, 21);

  // A frame step from the toolbar leaves the flag up: the next scroll is lost.
  toolbarClick(st, 7);
  st.view.slVideo.value = 60;
  sliderScroll(st);
  EXPECT_DOUBLE_EQ(st.s.g_dblPosActual, 21.04);
  sliderScroll(st);
  EXPECT_DOUBLE_EQ(st.s.g_dblPosActual, 60);
}

TEST(Timers, Timer1MovesThePositionInsideThePumpAndStopsAtTheEnd) {
  TransportStation t;
  t.openTaggedVideo(10);
  resumevideo(t.st);
  t.run(4);
  EXPECT_NEAR(t.st.s.g_dblPosActual, 4, 0.034);
  EXPECT_EQ(t.st.view.slVideo.value, 4);
  t.run(10);
  EXPECT_FALSE(t.st.s.g_fVideoRun);
  EXPECT_EQ(t.st.view.toolbarButton(6).caption, u"Play");
  EXPECT_NEAR(t.st.s.g_dblPosActual, 10, 0.034);  // the last read before the end

  t.st.s.timecodeInClipboard = true;
  ira(t.st, 0);
  resumevideo(t.st);
  t.run(0.5);
  EXPECT_EQ(t.ui.clip, u"DUB[" + t.st.view.LabTimecode.caption + u"]\t");
}

TEST(Timers, Timer4BlinksTheLabelBeingEdited) {
  TransportStation t;
  ViewState& v = t.st.view;
  t.st.s.editingcueout = true;
  v.Timer4.setEnabled(true, t.ui.clock);
  t.run(0.26);
  EXPECT_FALSE(v.LabDur.visible);
  EXPECT_TRUE(v.LabCom.visible);
  t.run(0.25);
  EXPECT_TRUE(v.LabDur.visible);
  t.st.s.editingcueout = false;
  t.run(0.25);
  EXPECT_FALSE(v.LabCom.visible);
  EXPECT_TRUE(v.LabDur.visible);
}

}  // namespace
}  // namespace quillon
