// Re-timing of one subtitle already in the script: the overlay shows it,
// the video waits on its cue-out, and the overlay's keys move the cue-in and
// cue-out labels until Enter keeps them or Esc drops them.
#pragma once

#include "core/station.h"

namespace quillon {

// `index` is the subtitle's entry in the scan table. With the keys ending
// in "save", the entry and its tag in the script take the labels' times.
void editSubtitle(Station& st, int index);

}  // namespace quillon
