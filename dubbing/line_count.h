// The line count (`mnu_herr_lin`): how many script lines each character
// speaks, the figure dubbing is paid by. The report goes in front of the
// document.
//
// The plain rule takes the document's laid-out line count of each dialog
// (the layout rule of script/layout.h). The ACTRA rule (`actraGuidelines`)
// counts a third of a line per word for one or two words, otherwise one
// line per 50 characters with at least one.
#pragma once

#include "core/station.h"

namespace quillon {

// Lines of one dialog paragraph under the ACTRA rule: `words` as the word
// statistic counts them, `characters` the paragraph's text without its mark.
double actraLines(long words, long characters);

// True when the report was written.
bool mnu_herr_lin(Station& st);

}  // namespace quillon
