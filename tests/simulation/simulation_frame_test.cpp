// What every simulation run shares: the script attached before anything
// else, and the main window given back whatever the operator did to its
// layout meanwhile.
#include <gtest/gtest.h>

#include <tuple>

#include "simulation/sim_rig.h"
#include "simulation/simulation_menus.h"
#include "transport/keys.h"
#include "transport/video_menu.h"

namespace quillon::testing {
namespace {

constexpr int kCtrlF = 70;

TEST(SimulationStart, SubtitleSimulationsAttachTheScriptFirst) {
  struct Case {
    const char* item;
    void (*run)(Station&);
  };
  for (const Case& c : {Case{"mnu_sim_d", mnu_sim_d}, Case{"mnu_sim_s", mnu_sim_s}, Case{"mnu_sim_q", mnu_sim_q}}) {
    SCOPED_TRACE(c.item);
    SimRig none;
    c.run(none.st());
    ASSERT_EQ(none.t.ui.boxTexts(), std::vector<u16>{u"Error: No currently open Word document "});
    EXPECT_EQ(std::tuple(none.t.ui.pumps, none.player.seeks), std::tuple(0, 0));

    // With a script open the attach names it in the status bar, and the
    // run goes ahead.
    SimRig open;
    open.t.open(subTag(u'0', u' ', u'N', 1.0, 2.0) + u"One\n\n\n\n");
    open.t.docs.selectAll();
    c.run(open.st());
    EXPECT_EQ(std::tuple(open.t.ui.boxes.size(), open.st().view.panels[1].text, open.t.ui.pumps > 0),
              std::tuple(0u, u16(u"Script1.txt"), true));
  }
}

// Ctrl+F on Text1 during the run: the subtitle engine ends by the way Esc
// and Ctrl+F take out of full screen; the caption engine keeps the full
// screen, and with it a layout that has no slider or toolbar.
TEST(SimulationEnd, FullScreenTakenDuringARunIsLeftOnlyBySubtitleSimulations) {
  struct Case {
    const char16_t* script;
    void (*run)(Station&);
    bool leaves;
  };
  const Case cases[] = {
      {u"SUB[0 N 00:00:01:00>00:00:02:00]\nOne\n\n\n\n", mnu_sim_d, true},
      {u"CAP[0NC 00:00:01:00>00:00:02:00]\nOne\n\n\n\n", mnu_cc_sim_d, false},
  };
  for (const Case& c : cases) {
    SimRig rig;
    rig.t.open(c.script);
    rig.st().view.overlays.mainLeft = 1500;
    rig.st().view.overlays.mainTop = 900;
    const ViewState before = rig.st().view;
    rig.at(1.5, [&] {
      text1KeyDown(rig.st(), kCtrlF, kCtrlMask);
      ASSERT_EQ(rig.s().fullscreenmode, 1);
    });
    c.run(rig.st());

    const ViewState& v = rig.st().view;
    EXPECT_FALSE(rig.s().g_fsim);
    const bool l = c.leaves;
    EXPECT_EQ(std::tuple(rig.s().fullscreenmode != 0, v.slVideo.visible, v.toolbarVisible, v.LabTimecode.visible,
                         v.menu("mnu_file").visible, v.menu("mnu_sub").visible, v.menu("mnu_hlp").visible),
              std::tuple(!l, l, l, l, l, l, l));
    if (l) {
      EXPECT_EQ(std::tuple(v.mainWidth, v.overlays.mainLeft, v.overlays.mainTop, v.caption),
                std::tuple(before.mainWidth, 1500, 900, u16(u"QUILLON: clip.avi - 30FPS")));
    } else {
      // Esc then leaves it as it would outside a run.
      escapeKey(rig.st());
      EXPECT_EQ(rig.s().fullscreenmode, 0);
      EXPECT_TRUE(v.LabTimecode.visible);
    }
  }
}

}  // namespace
}  // namespace quillon::testing
