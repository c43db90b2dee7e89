// Pure helpers of the subtitle and caption timing runs: the automatic
// duration of a text, the limits that keep a new mark clear of the subtitles
// already timed, and the text an overlay shows.
#pragma once

#include "core/session.h"

namespace quillon {

// chars / readingSpeed, lowered to maxOnAir, then raised to minOnAir1.
double autoDuration(const Session& s, double chars);

// A cue-in that falls strictly inside a subtitle of the scan table is pushed
// behind that subtitle's cue-out by the interleave and one frame more.
double clampCueIn(const Session& s, double t);

// A cue-out that runs into the next subtitle is pulled back to that
// subtitle's cue-in less the interleave and one frame.
double clampCueOut(const Session& s, double t);

// The greater of the two; `b` when they are equal.
double laterOf(double a, double b);

}  // namespace quillon
