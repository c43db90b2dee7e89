#include "script/timing_helpers.h"

#include "core/timecode.h"

namespace quillon {

double autoDuration(const Session& s, double chars) {
  double d = chars / s.readingSpeed;
  if (d > s.maxOnAir) d = s.maxOnAir;
  if (d < s.minOnAir1) d = s.minOnAir1;
  return d;
}

double clampCueIn(const Session& s, double t) {
  const ScanTable& tb = s.scan;
  const int n = tb.count();
  if (n <= 1) return t;
  double r = t;
  for (int i = 1; i <= n; ++i) {
    if (tb.cueIn[i] > t) break;
    if (tb.cueIn[i] < t && tb.cueOut[i] > t)
      r = tb.cueOut[i] + FRAMESaSEG(s.minInterleave, s.g_fps) + FRAMESaSEG(1, s.g_fps);
  }
  return r;
}

double clampCueOut(const Session& s, double t) {
  const ScanTable& tb = s.scan;
  const int n = tb.count();
  if (n <= 1) return t;
  for (int i = 1; i <= n - 1; ++i) {
    if (tb.cueOut[i] < t && tb.cueOut[i + 1] > t) {
      double limit = tb.cueIn[i + 1] - FRAMESaSEG(s.minInterleave, s.g_fps) - FRAMESaSEG(1, s.g_fps);
      return limit < t ? limit : t;
    }
    if (tb.cueOut[i] > t && tb.cueOut[i + 1] > t) break;
  }
  return t;
}

double laterOf(double a, double b) { return a > b ? a : b; }

}  // namespace quillon
