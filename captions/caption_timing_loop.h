// The caption twin of the subtitle timing run: blocks of up to four rows
// are shown on the caption overlay and written back as CAP[ tags.
#pragma once

#include "core/station.h"

namespace quillon {

// Runs until the operator ends it, the video or the script ends, text
// already timed is reached, or a row is longer than 32 characters.
void captionTimingLoop(Station& st);
// mnu_cc_temp ("&Timing").
void mnu_cc_temp(Station& st);

}  // namespace quillon
