// The house rules a subtitle is held to while the script is scanned: on-air
// duration, sequence, interleave, reading speed and row length. Each broken
// rule asks the operator; Yes lets a known exception stand, No stops the scan
// with the cursor on the tag at fault.
#pragma once

#include "core/station.h"

namespace quillon {

// Installs the checks into the subtitle scan: `beginSubtitleScan` zeroes the
// running totals, `checkSubtitle` runs the checks on each stored entry and
// keeps the totals.
void installSubtitleChecks(Station& st);

// Zeroes totalbloq2lineas, totalbloq1linea and totalChars.
void beginSubtitleChecks(Station& st);

// The checks in their order on entry `index` of the scan table, then the
// totals when the entry is `kept`. False when the operator answered No: the
// table then holds one entry and the cursor stands on the tag at fault.
bool checkSubtitleEntry(Station& st, int index, bool kept);

}  // namespace quillon
