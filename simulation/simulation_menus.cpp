#include "simulation/simulation_menus.h"

#include "script/document_ops.h"
#include "script/tag_grammar.h"
#include "simulation/simulate_blocks.h"

namespace quillon {

// Like every command on the script, a subtitle simulation attaches first, so
// that no open script is said in a box rather than by nothing happening.
void mnu_sim_d(Station& st) {
  if (attachDocument(st) && scanSubtitles(st, ScanMode::WholeScript)) simulateBlocks(st, SimulationStart::Top);
}

void mnu_sim_s(Station& st) {
  if (attachDocument(st) && scanSubtitles(st, ScanMode::Selection)) simulateBlocks(st, SimulationStart::Selection);
}

// The whole document is scanned; the engine picks the starting entry.
void mnu_sim_q(Station& st) {
  if (attachDocument(st) && scanSubtitles(st, ScanMode::WholeScript)) simulateBlocks(st, SimulationStart::CurrentPosition);
}

void mnu_cc_sim_d(Station& st) {
  if (scanCaptions(st, ScanMode::WholeScript)) simulateCaptions(st, SimulationStart::Top);
}

void mnu_cc_sim_l(Station& st) {
  if (scanCaptions(st, ScanMode::Selection)) simulateCaptions(st, SimulationStart::Selection);
}

void mnu_cc_sim_q(Station& st) {
  if (scanCaptions(st, ScanMode::FromCurrentPosition)) simulateCaptions(st, SimulationStart::CurrentPosition);
}

void mnu_sim_con(Station& st) {
  Session& s = st.s;
  s.jumpToNextBlock = !s.jumpToNextBlock;
  st.view.menu("mnu_sim_con").checked = s.jumpToNextBlock;
  StatusPanelState& p = st.view.panel(5);
  p.enabled = s.jumpToNextBlock;
  p.toolTip = s.jumpToNextBlock ? u"Jump option enabled." : u"Jump option disabled.";
}

void mnu_sim_follow(Station& st) {
  st.s.followSimulation = !st.s.followSimulation;
  st.view.menu("mnu_sim_follow").checked = st.s.followSimulation;
}

bool clickSimulationMenu(Station& st, std::string_view item) {
  struct Entry {
    std::string_view name;
    void (*run)(Station&);
  };
  static constexpr Entry kItems[] = {
      {"mnu_sim_d", mnu_sim_d},       {"mnu_sim_s", mnu_sim_s},       {"mnu_sim_q", mnu_sim_q},
      {"mnu_cc_sim_d", mnu_cc_sim_d}, {"mnu_cc_sim_l", mnu_cc_sim_l}, {"mnu_cc_sim_q", mnu_cc_sim_q},
      {"mnu_sim_con", mnu_sim_con},   {"mnu_sim_follow", mnu_sim_follow},
  };
  for (const Entry& e : kItems)
    if (e.name == item) {
      e.run(st);
      return true;
    }
  return false;
}

void installSimulation(Station& st) {
  auto before = std::move(st.clickMenu);
  st.clickMenu = [before = std::move(before)](Station& station, std::string_view item) {
    if (!clickSimulationMenu(station, item) && before) before(station, item);
  };
}

}  // namespace quillon
