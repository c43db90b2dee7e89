// The subtitling parameters and option items of the menu: each parameter is
// asked for with its current value, an empty answer keeps it, and a value out
// of range quietly takes the reset value.
#pragma once

#include <cstdint>

#include "core/station.h"

namespace quillon {

void mnu_tex_par_vel(Station& st);
void mnu_sub_par_min(Station& st);
void mnu_sub_par_min2(Station& st);
void mnu_sub_par_max(Station& st);
void mnu_sub_par_ilv(Station& st);
void mnu_sub_par_fast(Station& st);
void mnu_sub_par_slow(Station& st);
void mnu_sub_par_cxl(Station& st);
void mnu_sub_par_seq(Station& st);

// Option items: each toggles its check mark and the flag behind it.
void mnu_sub_opc_chk(Station& st);
void mnu_sub_opc_dis(Station& st);
void mnu_sub_opc_seq(Station& st);
void mnu_sub_opc_mtx(Station& st);
void mnu_sub_opc_col(Station& st);
// The simulation follows subtitles or dubbing: checking one unchecks the other.
void mnu_sub_opc_sim(Station& st);
void mnu_dub_opc_sim(Station& st);
void mnu_situ_off(Station& st);

// Overlay font size for a row of `maxChars` characters.
int16_t overlayFontSizeFor(int maxChars);

}  // namespace quillon
