#include <gtest/gtest.h>

#include "script/timing_helpers.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

// A cue-in inside a timed subtitle goes behind its cue-out, a cue-out running
// into the next subtitle is pulled back before it, each by the interleave
// and one frame; the edges are not inside, and one subtitle limits nothing.
TEST(TimingHelpers, MarksAreKeptClearOfTheTimedSubtitles) {
  const double clear = 4.0 / 30;
  const struct {
    int count;
    double (*clamp)(const Session&, double);
    double mark, expected;
  } cases[] = {
      {2, clampCueIn, 2, 3 + clear}, {2, clampCueIn, 6, 8 + clear}, {2, clampCueIn, 4, 4},
      {2, clampCueIn, 1, 1},         {2, clampCueIn, 3, 3},         {1, clampCueIn, 2, 2},
      {1, clampCueOut, 2, 2},        {3, clampCueOut, 6, 5 - clear}, {3, clampCueOut, 4.99, 5 - clear},
      {3, clampCueOut, 4.5, 4.5},    {3, clampCueOut, 2, 2},        {3, clampCueOut, 13, 13},
  };
  for (const auto& c : cases) {
    Session s;
    s.g_fps = 30;
    s.minInterleave = 3;
    const double in[] = {0, 1, 5, 10}, out[] = {0, 3, 8, 12};
    std::copy(in, in + 4, s.scan.cueIn.begin());
    std::copy(out, out + 4, s.scan.cueOut.begin());
    s.scan.subtitleCount = c.count;
    EXPECT_DOUBLE_EQ(c.clamp(s, c.mark), c.expected) << c.count << " subtitles, mark " << c.mark;
  }
}

}  // namespace
}  // namespace quillon::testing
