// What an SCC encoder makes of the file's timing. It sends one two-byte word
// a frame, so a line of N words takes N frames from its own timecode, and a
// line whose time comes while the one before is still being sent waits for
// it. A caption appears when its end-of-caption word arrives: when that is
// after its cue-in, the caption plays late.
#pragma once

#include <vector>

#include "captions/scc_export.h"

namespace quillon {

struct LateCaption {
  int index = 0;   // in the scan table
  u16 cueIn;       // as the file's timecodes read
  long frames = 0; // how late it comes on
};

// Every caption of `lines` that comes on after its cue-in, in order.
std::vector<LateCaption> lateSccCaptions(const Station& st, const std::vector<SccLine>& lines);
// The same for the scanned captions as the station writes them.
std::vector<LateCaption> lateSccCaptions(Station& st);

// The warning before an SCC export: a box listing each late caption with its
// cue-in and how many frames late it comes on; nothing when none is. The
// export goes on after it.
void warnLateSccCaptions(Station& st);

}  // namespace quillon
