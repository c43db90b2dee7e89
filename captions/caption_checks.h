// The caption rules the caption scan applies to each caption it reads:
// minimum and maximum time on air, cue order and 32 characters a row.
#pragma once

#include "core/station.h"

namespace quillon {

inline constexpr int kCaptionRowWidth = 32;  // characters a caption row holds

// Checks the caption just stored at `index`. The first rule it breaks shows
// its box, puts the cursor on the fault and gives false.
bool checkCaption(Station& st, int index);

// Makes every caption scan of this station run checkCaption.
void installCaptionChecks(Station& st);

}  // namespace quillon
