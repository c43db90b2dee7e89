#include <gtest/gtest.h>

#include "simulation/overlay_windows.h"
#include "simulation/sim_rig.h"

namespace quillon::testing {
namespace {

TEST(SubtitleOverlayKeys, PositionKeysStopAtTheirEndsAndPlaceTheWindowAgain) {
  SimRig rig;
  FormaSubState& f = rig.ov().FormaSub;
  f.Line1.caption = u"one line";
  f.Left = 0;
  rig.s().ultimaposenpantalla = 9;
  formaSubKeyDown(rig.st(), vk::U, 0);
  EXPECT_EQ(rig.s().ultimaposenpantalla, 9);
  EXPECT_EQ(f.Left, 1060);
  EXPECT_EQ(f.Top, 2000 + 1100);  // one line at position 9
  EXPECT_EQ(f.Height, 350);
  formaSubKeyDown(rig.st(), vk::B, 0);
  formaSubKeyDown(rig.st(), vk::D, 0);
  EXPECT_EQ(rig.s().ultimaposenpantalla, 0);
  f.Line2.caption = u"second";
  formaSubKeyDown(rig.st(), vk::T, 0);
  EXPECT_EQ(f.Top, 2000 + 4000 - 9 * 350);
  EXPECT_EQ(f.Height, 700);
}

TEST(SubtitleOverlayKeys, StyleAndAlignmentKeysSetTheLinesAndRememberTheChoice) {
  SimRig rig;
  FormaSubState& f = rig.ov().FormaSub;
  formaSubKeyDown(rig.st(), vk::D2, 0);
  EXPECT_FALSE(f.Line1.italic);
  EXPECT_TRUE(f.Line2.italic);
  EXPECT_EQ(rig.s().miItalStyle, u"2");
  formaSubKeyDown(rig.st(), vk::I, 0);
  EXPECT_TRUE(f.Line1.italic && f.Line2.italic);
  formaSubKeyDown(rig.st(), vk::R, 0);
  EXPECT_EQ(f.Line1.alignment, kAlignRight);
  EXPECT_EQ(f.Line2.alignment, kAlignRight);
  EXPECT_EQ(rig.s().ultimaposhcc, u"R");
}

TEST(SubtitleOverlayKeys, SpaceAndMouseMarkTheTimeAndShiftOrRightButtonChainTheNext) {
  SimRig rig;
  ira(rig.st(), 12.5);
  formaSubKeyDown(rig.st(), vk::Space, 0);
  EXPECT_DOUBLE_EQ(rig.s().TCSpacebar, 12.5);
  formaSubKeyDown(rig.st(), vk::Space, vk::ShiftMask);
  EXPECT_TRUE(rig.s().outnextin);

  rig.s().outnextin = false;
  ira(rig.st(), 20.0);
  formaSubMouseDown(rig.st(), kLeftButton);
  EXPECT_DOUBLE_EQ(rig.s().TCSpacebar, 20.0);
  formaSubMouseDown(rig.st(), kRightButton);
  EXPECT_TRUE(rig.s().outnextin);

  // A bare click on the window ends a timing run.
  rig.s().g_fsim = true;
  formaSubClick(rig.st());
  EXPECT_TRUE(rig.s().g_fsim);
  rig.s().g_fspot = true;
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
  EXPECT_DOUBLE_EQ(rig.now(), 12.0);
  EXPECT_EQ(rig.s().TCSpacebar, 0);
  formaSubKeyDown(rig.st(), vk::Down, 0);  // the label under edit follows
  EXPECT_EQ(v.LabDur.caption, u"00:00:12:01");
  EXPECT_EQ(v.LabCom.caption, u"00:00:10:00");

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
  formaSubKeyDown(rig.st(), vk::Down, 0);
  EXPECT_EQ(v.LabCom.caption, u"00:00:09:01");
  // Cue-out at the next subtitle's start: no further on.
  rig.s().editingcueout = true;
  v.LabDur.caption = SEGaTC(15.0, 30);
  ira(rig.st(), 15.0);
  formaSubKeyDown(rig.st(), vk::Down, 0);
  EXPECT_DOUBLE_EQ(rig.now(), 15.0);
}

TEST(SubtitleOverlayKeys, TabSwitchesTheMarkUnderEditAndGoesToItEnterSavesEscLoses) {
  EditRig rig;
  rig.s().editingcueout = true;
  formaSubKeyDown(rig.st(), vk::Tab, 0);
  EXPECT_FALSE(rig.s().editingcueout);
  EXPECT_NEAR(rig.now(), 10.0, 1e-9);
  formaSubKeyDown(rig.st(), vk::Enter, 0);
  EXPECT_TRUE(rig.s().saveedittiming);
  EXPECT_FALSE(rig.s().g_fedit);

  rig.s().g_fedit = true;
  rig.s().g_fsim = true;
  formaSubKeyDown(rig.st(), vk::Esc, 0);
  EXPECT_FALSE(rig.s().saveedittiming || rig.s().g_fedit || rig.s().g_fsim);
}

TEST(SubtitleOverlayKeys, EnterInTimingPausesAndResumesWithTheReactionDelay) {
  SimRig rig;
  rig.s().g_fspot = true;
  rig.s().delay = 0.3;
  resumevideo(rig.st());
  formaSubKeyDown(rig.st(), vk::Enter, 0);
  EXPECT_FALSE(rig.player.running());
  EXPECT_EQ(rig.s().ultimodelay, 0);
  formaSubKeyDown(rig.st(), vk::Enter, 0);
  EXPECT_TRUE(rig.player.running());
  EXPECT_DOUBLE_EQ(rig.s().ultimodelay, 0.3);
}

TEST(CaptionOverlayKeys, PositionIsAHexDigitAndAlignmentMovesTheWindow) {
  SimRig rig;
  FormaCCState& f = rig.ov().FormaCC;
  f.Width = 10 * 150;
  f.Height = 2 * 250;
  rig.s().ultimaposenpantallacc = 14;
  formaCCKeyDown(rig.st(), vk::U, 0);
  formaCCKeyDown(rig.st(), vk::U, 0);
  EXPECT_EQ(rig.s().ultimaposenpantallacc, 15);
  EXPECT_EQ(f.Top, 2000 + 750);
  formaCCKeyDown(rig.st(), vk::L, 0);
  EXPECT_EQ(f.Left, 1060);
  EXPECT_EQ(f.labline(3).alignment, kAlignLeft);
  formaCCKeyDown(rig.st(), vk::B, 0);
  EXPECT_EQ(f.Top, 2000 + 4500 - 500);
  formaCCKeyDown(rig.st(), vk::I, 0);
  for (int r = 1; r <= 4; ++r) EXPECT_TRUE(f.labline(r).italic);
}

}  // namespace
}  // namespace quillon::testing
