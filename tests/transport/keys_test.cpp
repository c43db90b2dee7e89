#include "transport/keys.h"

#include <gtest/gtest.h>

#include <tuple>

#include "core/timecode.h"
#include "transport/controls.h"
#include "transport/transport_fixture.h"
#include "transport/video_commands.h"
#include "transport/video_menu.h"

namespace quillon {
namespace {

using testing::TransportStation;
using Clicks = std::vector<std::string>;


// A key and where the video must stand after it.
struct Step {
  int key, mods;
  double at;
};

void play(Station& st, std::initializer_list<Step> steps) {
  for (const Step& s : steps) {
    formKeyDown(st, s.key, s.mods);
    EXPECT_DOUBLE_EQ(st.s.g_dblPosActual, s.at) << "key " << s.key << " mods " << s.mods;
  }
}

TEST(EscapeKey, EndsOnlyTheFirstThingThatApplies) {
  TransportStation t;
  t.openTaggedVideo();
  Session& s = t.st.s;
  resumevideo(t.st);
  enterFullScreen(t.st);
  s.g_fsim = s.g_fedit = true;
  s.blockStart = 3605;
  t.st.view.panel(8).text = u"Cue-out...";
  // Simulation, then edit, then full screen, then the open block and play.
  using State = std::tuple<bool, bool, bool, bool, double>;
  for (const State& after : {State{false, true, true, true, 3605}, State{false, false, true, true, 3605},
                             State{false, false, false, true, 3605}, State{false, false, false, false, 0}}) {
    formKeyDown(t.st, 27, 0);
    EXPECT_EQ(State(s.g_fsim, s.g_fedit, s.fullscreenmode != 0, s.g_fVideoRun, s.blockStart), after);
  }
  EXPECT_EQ(t.st.view.panel(8).text + t.st.view.menu("mnu_play").caption, u"&Play");
}

TEST(TransportKeys, SeeksJumpsAndFrameSteps) {
  TransportStation t;
  t.openTaggedVideo();
  Station& st = t.st;
  for (auto [to, at] : {std::pair{-3.0, 0.0}, {500.0, 120.0}, {50.0, 50.0}}) {
    ira(st, to);
    EXPECT_EQ(st.s.g_dblPosActual, at);
  }
  // Left, PageDown, "5", then keypad minus turns the digits back for keypad 3.
  play(st, {{37, 0, 49}, {34, 0, 54}, {53, 0, 59}, {109, 0, 59}, {99, 0, 56}, {40, 0, 56.04}});
  EXPECT_EQ(st.view.menu("mnu_dir").caption, u"Keyboard di&gits <-");
  EXPECT_TRUE(st.s.frameStepFlag);
  ira(st, 3);
  play(st, {{53, 0, 0}, {107, 0, 0}});  // "5" backwards from 3 stops at the start
  EXPECT_TRUE(st.s.keyDigitsForward);

  play(st, {{35, 0, 119}});  // End: a second before the end, and it runs
  EXPECT_TRUE(st.s.g_fVideoRun);
  play(st, {{13, 0, 119}, {36, 0, 0}});  // Enter toggles, Home
  EXPECT_FALSE(st.s.g_fVideoRun);
}

TEST(TransportKeys, SliderLeavesArrowsToItselfAndExportsScc) {
  TransportStation t;
  t.openTaggedVideo();
  t.recordClicks();
  ira(t.st, 50);
  t.st.view.overlays.focus = "slVideo";
  for (int key : {37, 39, 33, 34, 71}) keyDown(t.st, key, 0);
  EXPECT_TRUE(t.ui.inputPrompts.empty());
  keyDown(t.st, 50, 0);  // "2"
  EXPECT_DOUBLE_EQ(t.st.s.g_dblPosActual, 52);
  keyDown(t.st, 8, kCtrlMask);
  t.st.view.overlays.focus.clear();
  keyDown(t.st, 8, kCtrlMask);
  keyDown(t.st, 8, 0);
  EXPECT_EQ(t.clicks, (Clicks{"mnu_cc_scc", "mnu_sub_ebu"}));
}

TEST(Markers, SetGoAndMenuCaptions) {
  TransportStation t;
  t.openTaggedVideo();
  Station& st = t.st;
  ira(st, 12.5);
  formKeyDown(st, 112, 0);  // F1
  EXPECT_EQ(st.view.menu("mnu_iramarca1").caption, u"Marker &1 = 01:00:12:13");
  ira(st, 30);
  formKeyDown(st, 121, 0);  // F10
  EXPECT_EQ(st.view.menu("mnu_iramarca10").caption, u"Marker 1&0 = 01:00:30:00");
  formKeyDown(st, 123, 0);  // F12 has no menu item
  // Ctrl+F1 goes to marker 1; Ctrl+F3, unset, sets it here.
  play(st, {{112, kCtrlMask, 12.5}, {114, kCtrlMask, 12.5}});
  EXPECT_EQ(std::tuple(st.s.markers[3], st.s.markers[12]), std::tuple(12.5, 30.0));
}

TEST(SpaceMark, TwoPressesTagABlockAndCtrlSpaceGoesBackToIt) {
  TransportStation t;
  t.openTaggedVideo();
  t.open(u"First line\nSecond\nThird\n");
  Station& st = t.st;
  Session& s = st.s;
  s.characterWindow = false;  // no character asked: the tag goes in without a name
  s.switchToWordProcessor = false;
  s.delay = 0;
  resumevideo(st);
  ira(st, 10);
  formKeyDown(st, 32, 0);
  EXPECT_EQ(st.view.panel(8).text, u"Cue-out...");

  ira(st, 14);
  labTimecodeClick(st);  // the label's click is the same mark
  EXPECT_EQ(std::tuple(s.blockStart, s.lastCueIn, s.lastCueOut, st.view.panel(8).text),
            std::tuple(0.0, 3610.0, 3614.0, u16()));
  EXPECT_NE(t.content().find(u"DUB[0 N 01:00:10:00>01:00:14:00] "), std::u16string::npos) << toUtf8(t.content());
  // Without the switch to the document the video plays on after the tag.
  EXPECT_TRUE(s.g_fVideoRun);

  ira(st, 60);
  play(st, {{32, kCtrlMask, 9}});
}

}  // namespace
}  // namespace quillon
