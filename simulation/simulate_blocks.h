// The simulation engines: the scan table played against the running video.
// Subtitles show on FormaSub, dubbing blocks sweep through Text1, captions
// show on FormaCC. Each engine is one pumped loop that owns the main window
// while it runs and ends when g_fsim is cleared (Esc on any of its windows),
// at the end of the table or near the end of the video.
#pragma once

#include "core/station.h"

namespace quillon {

class WysiwygRenderer;

// Where a simulation starts; the numbers are the engines' own mode numbers.
enum class SimulationStart : int {
  Top = 0,              // everything, from the start of the video
  Selection = 1,        // the scanned selection, from two seconds before its first entry
  CurrentPosition = 2,  // on from where the video stands
};

// `renderer` serves the WYSIWYG branch only.
void simulateBlocks(Station& st, SimulationStart start, WysiwygRenderer* renderer = nullptr);
void simulateCaptions(Station& st, SimulationStart start);

// The start of both simulations: the video put where `start` says, the
// status panel locked, play started and the script selected. Gives the first
// entry to show; from the current position, the first that starts `lead`
// seconds or more ahead.
int startSimulationRun(Station& st, SimulationStart start, double lead);

}  // namespace quillon
