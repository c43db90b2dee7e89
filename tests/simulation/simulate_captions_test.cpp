#include <gtest/gtest.h>

#include <tuple>

#include "simulation/overlay_windows.h"
#include "simulation/sim_rig.h"
#include "simulation/simulate_blocks.h"
#include "simulation/simulation_menus.h"

namespace quillon::testing {
namespace {

std::u16string capTag(const char16_t* attrs, double in, double out) {
  return u"CAP[" + std::u16string(attrs) + u" " + SEGaTC(in, 30) + u">" + SEGaTC(out, 30) + u"]\n";
}

struct CaptionSeen {
  double from;
  FormaCCState overlay;
};

void watchCaptions(SimRig& rig, std::vector<CaptionSeen>& seen) {
  rig.each = [&rig, &seen, was = false]() mutable {
    const FormaCCState& f = rig.ov().FormaCC;
    if (f.Visible && !was) seen.push_back({rig.now(), f});
    was = f.Visible;
  };
}

const std::u16string k32 = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ012345";

TEST(CaptionSimulation, StopsOnARowOfThirtyThreeCharactersWithTheCursorOnItsTag) {
  SimRig rig;
  rig.t.open(capTag(u"FIC", 1.0, 2.0) + k32 + u"\nsecond row\n\n" + capTag(u"0NL", 3.0, 4.0) + k32 + u"X\n\n" +
             capTag(u"0NL", 5.0, 6.0) + u"never shown\n\n\n\n");
  std::vector<CaptionSeen> seen;
  watchCaptions(rig, seen);
  mnu_cc_sim_d(rig.st());

  ASSERT_EQ(seen.size(), 1u);
  EXPECT_NEAR(seen[0].from, 1.0, 0.025);
  const FormaCCState& f = seen[0].overlay;
  EXPECT_EQ(f.labline(1).caption + u"|" + f.labline(2).caption + u"|" + f.labline(3).caption, k32 + u"|second row|");
  // Position F with two rows would rise above the picture: held at 750.
  EXPECT_EQ(std::tuple(f.Width, f.Height, f.Left, f.Top), std::tuple(4800, 500, 1000 + 60 + 350, 2000 + 750));

  ASSERT_EQ(rig.t.ui.boxes.size(), 1u);
  EXPECT_EQ(rig.t.ui.boxTexts()[0],
            u"Error: Maximum number of characters per row (32) exceeded in caption in [00:00:03:00]\r\r" + k32 +
                u"X\r\r");
  EXPECT_EQ(rig.t.docs.selection(), u"00:00:03:00");
  // Paused where it stopped, not run out.
  EXPECT_EQ(std::tuple(rig.player.running(), rig.st().view.toolbarButton(6).caption, rig.t.ui.pointer),
            std::tuple(false, u16(u"Play"), Pointer::Default));
  EXPECT_NEAR(rig.now(), 3.0, 0.03);
  expectMainWindowBack(rig.st());
}

TEST(CaptionSimulation, CaptionMoreThanASecondLateIsNotShownAtAll) {
  SimRig rig;
  // The second caption starts two seconds before the first one ends.
  rig.t.open(capTag(u"0NC", 1.0, 5.0) + u"first\n\n" + capTag(u"0NC", 3.0, 6.0) + u"late\n\n" +
             capTag(u"0NR", 7.0, 8.0) + u"right\n\n\n\n");
  std::vector<CaptionSeen> seen;
  watchCaptions(rig, seen);
  int notHourglass = 0;  // the hourglass stays on while captions play
  rig.each = [&, watch = rig.each] {
    watch();
    notHourglass += rig.t.ui.pointer != Pointer::Hourglass;
  };
  mnu_cc_sim_d(rig.st());
  EXPECT_EQ(std::tuple(notHourglass, rig.t.ui.pointer), std::tuple(0, Pointer::Default));
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[0].overlay.labline(1).caption + u"|" + seen[1].overlay.labline(1).caption, u"first|right");
  // Right-aligned: the width's distance from the picture's right edge, less 60.
  EXPECT_EQ(std::tuple(seen[1].overlay.Left, seen[1].overlay.Top), std::tuple(1000 - 60 + 5500 - 5 * 150, 2000 + 4500 - 250));
  EXPECT_NEAR(rig.now(), 8.1, 0.03);
}

}  // namespace
}  // namespace quillon::testing
