// The timing run: the script is walked subtitle by subtitle while the video
// plays, the coming text floats over the picture, and the operator's marks
// become SUB[ tags written in front of each text.
#pragma once

#include "core/station.h"

namespace quillon {

enum class TimingMode { Interactive, Assisted, Textless };

// The checked one of mnu_tex_opc_int, mnu_tex_opc_asis and mnu_tex_opc_less;
// interactive while none is checked yet.
TimingMode timingMode(const Station& st);
// Checks the mode's item alone; status panel 2 shows its letter (I, A, X)
// and the words in its tool tip.
void setTimingMode(Station& st, TimingMode mode);
void mnu_tex_opc_int(Station& st);
void mnu_tex_opc_asis(Station& st);
void mnu_tex_opc_less(Station& st);

// The run itself. It returns when the operator ends it (g_fsim cleared), at
// the end of the video or of the script, at text already timed, or at a row
// that is too long; the window comes back as it was on every way out.
void timingLoop(Station& st);
// mnu_temp ("&Timing") and runTiming.
void mnu_temp(Station& st);
void runTiming(Station& st);

// Installs editSubtitle as the station's hook, so that mnu_sub_edit and the
// keys reach it.
void installTimingCommands(Station& st);

}  // namespace quillon
