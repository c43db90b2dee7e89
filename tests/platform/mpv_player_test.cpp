#include "transport/mpv/mpv_player.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <thread>

#include "sample_media.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

constexpr double kFrame = 1.0 / 25;

MpvOptions headless() {
  MpvOptions o;
  o.videoOutput = "null";
  o.audioOutput = "null";
  return o;
}

void sleepFor(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

// The frame number the sample pattern carries as 8 bits across its top.
int frameShown(MpvPlayer& player) {
  MpvPicture pic;
  if (!player.grabPicture(pic)) return -1;
  int n = 0;
  for (int bit = 0; bit < 8; ++bit)
    if (pic.brightness(bit * 32 + 16, 8) > 3 * 128) n |= 1 << bit;
  return n;
}

TEST(MpvPlayer, OpensAPlayableFilePausedAtTheStartAndRefusesOthers) {
  QUILLON_SAMPLE_OR_SKIP(path, "pattern.mp4");
  MpvPlayer player(headless());
  ASSERT_TRUE(player.created());
  const std::string dir = testing::tempDir("mpv_refused");
  std::ofstream(dir + "/noise.avi") << std::string(5000, '\x7f');
  for (const std::string bad : {"/missing.mp4", "/noise.avi"}) {
    EXPECT_FALSE(player.renderFile(dir + bad)) << bad;
    EXPECT_FALSE(player.isOpen());
    EXPECT_EQ(player.currentPosition(), 0);
  }
  ASSERT_TRUE(player.renderFile(path));
  EXPECT_TRUE(player.isOpen());
  EXPECT_NEAR(player.duration(), 10.0, 0.05);
  EXPECT_DOUBLE_EQ(player.currentPosition(), 0);
  EXPECT_TRUE(player.paused());
  EXPECT_EQ(frameShown(player), 0);
  player.release();
  EXPECT_FALSE(player.isOpen());
  EXPECT_EQ(player.duration(), 0);
}

TEST(MpvPlayer, SeeksAndFrameStepsLandOnTheFrameAndTheEndStandsStill) {
  QUILLON_SAMPLE_OR_SKIP(path, "pattern.mp4");
  MpvPlayer player(headless());
  ASSERT_TRUE(player.renderFile(path));
  // Frame 57 lies between key frames 50 and 100.
  player.setCurrentPosition(57 * kFrame);
  EXPECT_NEAR(player.currentPosition(), 57 * kFrame, 1e-3);
  EXPECT_EQ(frameShown(player), 57);
  player.setCurrentPosition(player.currentPosition() + kFrame);
  EXPECT_EQ(frameShown(player), 58);
  player.setCurrentPosition(player.currentPosition() - kFrame);
  player.setCurrentPosition(player.currentPosition() - kFrame);
  EXPECT_EQ(frameShown(player), 56);
  EXPECT_NEAR(player.currentPosition(), 56 * kFrame, 1e-3);
  // Backwards across a key frame, and while playing.
  player.setCurrentPosition(49 * kFrame);
  EXPECT_EQ(frameShown(player), 49);
  player.run();
  player.setCurrentPosition(200 * kFrame);
  player.pause();
  EXPECT_GE(player.currentPosition(), 200 * kFrame - 1e-3);
  EXPECT_LT(player.currentPosition(), 200 * kFrame + 0.5);

  player.setCurrentPosition(9.5);
  player.run();
  sleepFor(1.2);
  EXPECT_DOUBLE_EQ(player.currentPosition(), player.duration());
  EXPECT_TRUE(player.paused());
  // A seek brings it back into the file.
  player.setCurrentPosition(2.0);
  EXPECT_NEAR(player.currentPosition(), 2.0, 1e-3);
}

}  // namespace
}  // namespace quillon
