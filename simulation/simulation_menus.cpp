#include "simulation/simulation_menus.h"

#include "core/settings.h"

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
  flipOption(st.view, "mnu_sim_con", st.s.jumpToNextBlock);
  showJumpPanel(st);
}

void mnu_sim_follow(Station& st) { flipOption(st.view, "mnu_sim_follow", st.s.followSimulation); }

}  // namespace quillon
