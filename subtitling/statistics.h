// The statistics box and the printable subtitle list, both from a scan of
// the selection (or of the whole script when the selection holds no tags).
#pragma once

#include <optional>

#include "core/station.h"

namespace quillon {

// Scans and builds the statistics text; nullopt when there is nothing to count.
std::optional<u16> subtitleStatistics(Station& st);
// Scans and builds the list: a head row, then one row per subtitle.
u16 subtitleList(Station& st);

void mnu_sim_est(Station& st);  // the statistics in a box
void mnu_sub_out(Station& st);  // the list in a box and on the clipboard

}  // namespace quillon
