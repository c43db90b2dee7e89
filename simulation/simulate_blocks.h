// The simulation engines: the scan table played against the running video.
// Subtitles show on FormaSub, dubbing blocks sweep through Text1, captions
// show on FormaCC. Each engine is one pumped loop that owns the main window
// while it runs and ends when g_fsim is cleared (Esc on any of its windows),
// at the end of the table or near the end of the video.
#pragma once

#include "core/station.h"

namespace quillon {

class WysiwygRenderer;

// Mode 0 plays everything from the start of the video, mode 1 the entries of
// the scanned selection from two seconds before the first, mode 2 goes on
// from where the video stands. `renderer` serves the WYSIWYG branch only.
void simulateBlocks(Station& st, int mode, WysiwygRenderer* renderer = nullptr);
void simulateCaptions(Station& st, int mode);

// The start of both simulations: the video put where `mode` starts it (0 the
// top, 1 two seconds before the first entry, 2 where it stands), the status
// panel locked, play started and the script selected. Gives the first entry
// to show; with mode 2, the first that starts `lead` seconds or more ahead.
int startSimulationRun(Station& st, int mode, double lead);

}  // namespace quillon
