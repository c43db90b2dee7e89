// The menu's mark of a dubbing block (mnu_dub_blo): the first press opens
// the block at the present timecode, the second closes it and hands it to
// the character choice, which writes the DUB[ tag.
#pragma once

#include "core/station.h"

namespace quillon {

// The item's caption says what the next press does: "Cue-in" or "Cue out".
// With the cue-in-only option every press closes a block. A press at a
// time not later than the open mark changes only the caption.
void mnu_dub_blo(Station& st);

}  // namespace quillon
