// Commands that act on subtitle tags already in the script: moving between
// them, re-timing one, taking back the last tags of a timing run, merging,
// the test replacement, interleave repair and the tag walk.
#pragma once

#include "core/station.h"
#include "script/tag_grammar.h"

namespace quillon {

void mnu_sub_next(Station& st);
void mnu_sub_prev(Station& st);
// Finds the tag under the cursor in a fresh scan and hands its entry to the
// station's editSubtitle. A scan that fails here ends the program.
void mnu_sub_edit(Station& st);
void mnu_undo(Station& st);
void mnu_sub_merge(Station& st);
void mnu_sub_deltiming(Station& st);
void mnu_sub_changeinterleave(Station& st);
void mnu_opc_hideTC(Station& st);
void mnu_opc_tcclip(Station& st);

// `ira` through the station's player when there is one; otherwise the
// position and its display move alone (nothing happens without a video).
void goToPosition(Station& st, double seconds);

// Runs scanSubtitles with the rule checks switched off for its length.
bool scanWithoutChecks(Station& st, ScanMode mode);

}  // namespace quillon
