// The colour a subtitle takes in a simulation with reading-speed feedback:
// reds for text that reads too fast, blues for text that stays long, white
// around the right pace and again far beyond it.
#pragma once

#include <cstdint>

namespace quillon {

// `length` counts the text's characters with its trailing CRs.
// `readingSpeed` is the target in characters per second.
uint32_t readingSpeedColor(double readingSpeed, double cueIn, double cueOut, double length);

}  // namespace quillon
