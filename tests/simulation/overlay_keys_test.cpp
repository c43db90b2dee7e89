#include <gtest/gtest.h>

#include <tuple>

#include "simulation/overlay_windows.h"
#include "simulation/sim_rig.h"

namespace quillon::testing {
namespace {

TEST(SubtitleOverlayKeys, SpaceAndMouseMarkTheTimeAndShiftOrRightButtonChainTheNext) {
  SimRig rig;
  using Mark = void (*)(Station&, bool chain);
  for (Mark mark : {+[](Station& st, bool chain) { formaSubKeyDown(st, vk::Space, chain ? vk::ShiftMask : 0); },
                    +[](Station& st, bool chain) { formaSubMouseDown(st, chain ? kRightButton : kLeftButton); }}) {
    rig.s().outnextin = false;
    ira(rig.st(), rig.now() + 12.5);
    mark(rig.st(), false);
    EXPECT_EQ(std::tuple(rig.s().TCSpacebar, rig.s().outnextin), std::tuple(rig.now(), false));
    mark(rig.st(), true);
    EXPECT_TRUE(rig.s().outnextin);
  }

  // A bare click on the window ends a timing run.
  rig.s().g_fsim = rig.s().g_fspot = true;
  formaSubClick(rig.st());
  EXPECT_FALSE(rig.s().g_fsim);
}

// An edit of a subtitle's timing: LabCom holds the cue-in, LabDur the cue-out.
struct EditRig : SimRig {
  EditRig() {
    s().g_fedit = true;
    s().lowerlimit = 9.0;
    s().upperlimit = 15.0;
    st().view.LabCom.caption = SEGaTC(10.0, 30);
    st().view.LabDur.caption = SEGaTC(12.0, 30);
  }
};

TEST(SubtitleOverlayKeys, DuringAnEditOnlyFrameStepsMoveAndStopAtTheOtherMarkAndTheNeighbours) {
  EditRig rig;
  ViewState& v = rig.st().view;
  rig.s().editingcueout = true;
  ira(rig.st(), 12.0);
  rig.s().TCSpacebar = 0;
  for (int k : {vk::Space, vk::Left, vk::Right, vk::PageUp, vk::PageDown}) formaSubKeyDown(rig.st(), k, 0);
  EXPECT_EQ(std::tuple(rig.now(), rig.s().TCSpacebar), std::tuple(12.0, 0.0));
  formaSubKeyDown(rig.st(), vk::Down, 0);  // the label under edit follows
  EXPECT_EQ(v.LabCom.caption + u" " + v.LabDur.caption, u"00:00:10:00 00:00:12:01");

  // Cue-out down to the cue-in: the step back is refused there.
  v.LabDur.caption = v.LabCom.caption;
  ira(rig.st(), 10.0);
  formaSubKeyDown(rig.st(), vk::Up, 0);
  EXPECT_DOUBLE_EQ(rig.now(), 10.0);
  // Cue-in at the previous subtitle's end: no further back.
  rig.s().editingcueout = false;
  v.LabCom.caption = SEGaTC(9.0, 30);
  ira(rig.st(), 9.0);
  formaSubKeyDown(rig.st(), vk::Up, 0);
  EXPECT_DOUBLE_EQ(rig.now(), 9.0);
}

TEST(SubtitleOverlayKeys, TabSwitchesTheMarkUnderEditAndGoesToItEnterSavesEscLoses) {
  EditRig rig;
  rig.s().editingcueout = true;
  formaSubKeyDown(rig.st(), vk::Tab, 0);
  EXPECT_EQ(std::tuple(rig.s().editingcueout, rig.now()), std::tuple(false, 10.0));
  formaSubKeyDown(rig.st(), vk::Enter, 0);
  EXPECT_EQ(std::tuple(rig.s().saveedittiming, rig.s().g_fedit), std::tuple(true, false));

  rig.s().g_fedit = rig.s().g_fsim = true;
  formaSubKeyDown(rig.st(), vk::Esc, 0);
  EXPECT_FALSE(rig.s().saveedittiming || rig.s().g_fedit || rig.s().g_fsim);
}

TEST(SubtitleOverlayKeys, EnterInTimingPausesAndResumesWithTheReactionDelay) {
  SimRig rig;
  rig.s().g_fspot = true;
  rig.s().delay = 0.3;
  resumevideo(rig.st());
  for (auto [running, delay] : {std::tuple{false, 0.0}, {true, 0.3}}) {
    formaSubKeyDown(rig.st(), vk::Enter, 0);
    EXPECT_EQ(std::tuple(rig.player.running(), rig.s().ultimodelay), std::tuple(running, delay));
  }
}

}  // namespace
}  // namespace quillon::testing
