// The Simulate menus of the Subtitling and Closed Captions menus, and the
// two simulation options. Each run scans first and simulates only a script
// the scan accepts.
#pragma once

#include "core/station.h"

namespace quillon {

void mnu_sim_d(Station& st);  // "&All"
void mnu_sim_s(Station& st);  // "Text se&lection"
void mnu_sim_q(Station& st);  // "From current &timecode"
void mnu_cc_sim_d(Station& st);
void mnu_cc_sim_l(Station& st);
void mnu_cc_sim_q(Station& st);

// "&Jump to next block": skip gaps of over ten seconds.
void mnu_sim_con(Station& st);
// "&Follow simulation in Word document": the cursor follows the simulation.
void mnu_sim_follow(Station& st);

}  // namespace quillon
