// Timing and text file merge: a timing document of numbered entries is
// loaded into tables, then `SUB[` tags are written in front of the numbered
// paragraphs of a text document, with a report of what did not match.
#pragma once

#include "core/station.h"

namespace quillon {

// `mnu_sub_mge_load`: reads the active document's entries into the timing
// tables. True when a load succeeded (the merge is then enabled).
bool cargarTiming(Station& st);
// `mnu_sub_mge_mge`: tags the active document; the report goes to the
// clipboard and a box. Returns the report (empty when all matched).
u16 mergeTiming(Station& st);

// `mnu_sub_mge_off` has no action. The entry stays in the menu, disabled for
// the whole session, so that the operator is not offered a command that does
// nothing; a timing document is offset after the merge with the
// whole-script offset.
void mnuSubMgeOff(Station& st);
// Start-of-session state of the merge entries: the merge waits for a load,
// the offset entry stays disabled.
void prepareMergeMenus(Station& st);

// "A"/"a" = 1 up to "Z"/"z" = 26, anything else 0.
int letterIndex(u16v text);
// True when every character is a digit; an empty text passes.
bool allDigits(u16v text);

}  // namespace quillon
