#include "simulation/reading_speed_color.h"

#include <cmath>
#include <iterator>

namespace quillon {

namespace {

struct Band {
  double below;
  uint32_t colour;  // blue, green, red
};

// A ratio below 1 reads too fast. Beyond 1.35 the colour is white again on
// purpose: a subtitle that stays far too long is no fault worth a colour.
constexpr Band kBands[] = {
    {0.55, 0x0000FF}, {0.65, 0x0000C0}, {0.75, 0x8080FF}, {0.85, 0xFF80FF}, {0.95, 0xC0C0FF},
    {1.05, 0xFFFFFF}, {1.15, 0xFFFFC0}, {1.25, 0xFFFF80}, {1.35, 0xC0C000},
};

}  // namespace

uint32_t readingSpeedColor(double readingSpeed, double cueIn, double cueOut, double length) {
  // A subtitle with no time on air gives an infinite rate and so a ratio of
  // 0: the fastest colour, which is what it deserves.
  const double rate = length / (cueOut - cueIn);
  const double ratio = rate == 0 ? 1.0 : readingSpeed / rate;
  for (const Band& b : kBands)
    if (ratio < b.below) return b.colour;
  return 0xFFFFFF;
}

}  // namespace quillon
