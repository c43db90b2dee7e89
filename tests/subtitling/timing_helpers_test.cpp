#include <gtest/gtest.h>

#include "script/timing_helpers.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

struct TimingHelpers : ::testing::Test {
  Session s;
  void SetUp() override {
    s.g_fps = 30;
    s.readingSpeed = 10;
    s.minOnAir1 = 1;
    s.maxOnAir = 6;
    s.minInterleave = 3;
  }
  void table(std::initializer_list<std::pair<double, double>> entries) {
    int i = 1;
    for (auto [in, out] : entries) {
      s.scan.cueIn[i] = in;
      s.scan.cueOut[i] = out;
      ++i;
    }
    s.scan.subtitleCount = i - 1;
  }
};

TEST_F(TimingHelpers, AutoDurationFollowsTheTextWithinTheOnAirLimits) {
  EXPECT_DOUBLE_EQ(autoDuration(s, 30), 3);
  EXPECT_DOUBLE_EQ(autoDuration(s, 100), 6);
  EXPECT_DOUBLE_EQ(autoDuration(s, 4), 1);
  s.minOnAir1 = 7;  // the floor wins over the ceiling
  EXPECT_DOUBLE_EQ(autoDuration(s, 100), 7);
}

TEST_F(TimingHelpers, CueInInsideASubtitleIsPushedPastItsCueOut) {
  table({{1, 3}, {5, 8}});
  const double clear = 4.0 / 30;  // interleave and one frame
  EXPECT_DOUBLE_EQ(clampCueIn(s, 2), 3 + clear);
  EXPECT_DOUBLE_EQ(clampCueIn(s, 6), 8 + clear);
  EXPECT_DOUBLE_EQ(clampCueIn(s, 4), 4);
  EXPECT_DOUBLE_EQ(clampCueIn(s, 1), 1);  // on the edge is not inside
  EXPECT_DOUBLE_EQ(clampCueIn(s, 3), 3);
}

TEST_F(TimingHelpers, ASingleTimedSubtitleLimitsNothing) {
  table({{1, 3}});
  EXPECT_DOUBLE_EQ(clampCueIn(s, 2), 2);
  EXPECT_DOUBLE_EQ(clampCueOut(s, 2), 2);
}

TEST_F(TimingHelpers, CueOutRunningIntoTheNextSubtitleIsPulledBack) {
  table({{1, 3}, {5, 8}, {10, 12}});
  const double limit = 5 - 4.0 / 30;
  EXPECT_DOUBLE_EQ(clampCueOut(s, 6), limit);
  EXPECT_DOUBLE_EQ(clampCueOut(s, 4.99), limit);
  EXPECT_DOUBLE_EQ(clampCueOut(s, 4.5), 4.5);
  EXPECT_DOUBLE_EQ(clampCueOut(s, 2), 2);    // before every cue-out
  EXPECT_DOUBLE_EQ(clampCueOut(s, 13), 13);  // behind every cue-out
}

}  // namespace
}  // namespace quillon::testing
