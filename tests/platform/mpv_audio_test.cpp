// Balance and mute heard through mpv's file output: 16-bit stereo samples
// of the sample pattern's tone, 440 Hz on the left and 880 Hz on the right.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <thread>
#include <vector>

#include "sample_media.h"
#include "support/station_fixture.h"
#include "transport/mpv/mpv_player.h"

namespace quillon {
namespace {

struct Levels {
  double left = 0, right = 0;  // root mean square, full scale 1
};

MpvOptions toFile(const std::string& pcm) {
  MpvOptions o;
  o.videoOutput = "null";
  o.audioOutput = "pcm";
  o.extra = {{"ao-pcm-file", pcm},    {"ao-pcm-waveheader", "no"}, {"audio-format", "s16"},
             {"audio-channels", "stereo"}, {"audio-samplerate", "48000"}};
  return o;
}

constexpr size_t kBytesPerSecond = 48000 * 4;

// Levels of the samples between two byte offsets of the output.
Levels levelsOf(const std::string& bytes, size_t from, size_t to) {
  Levels lv;
  to = std::min(to, bytes.size());
  size_t frames = 0;
  for (size_t i = from; i + 4 <= to; i += 4, ++frames) {
    int16_t l, r;
    std::memcpy(&l, bytes.data() + i, 2);
    std::memcpy(&r, bytes.data() + i + 2, 2);
    lv.left += double(l) * l;
    lv.right += double(r) * r;
  }
  if (frames) {
    lv.left = std::sqrt(lv.left / frames) / 32768;
    lv.right = std::sqrt(lv.right / frames) / 32768;
  }
  return lv;
}

void playFor(MpvPlayer& player, double seconds) {
  player.run();
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
  player.pause();
}

// The output is written in large blocks, so what was heard when is told by
// its order: the first and the last stretch of each run are compared.
TEST(MpvAudio, BalanceSilencesTheFarSideWithoutMovingThePosition) {
  QUILLON_SAMPLE_OR_SKIP(path, "pattern.mp4");
  const std::string dir = testing::tempDir("mpv_balance");
  double before = 0, after = 0;
  {
    MpvPlayer player(toFile(dir + "/lr.pcm"));
    ASSERT_TRUE(player.renderFile(path));
    player.setCurrentPosition(2.0);
    player.setBalance(-10000);
    EXPECT_NEAR(player.currentPosition(), 2.0, 1e-3);
    playFor(player, 0.8);
    before = player.currentPosition();
    player.setBalance(10000);
    after = player.currentPosition();
    playFor(player, 0.8);
  }
  {
    MpvPlayer player(toFile(dir + "/both.pcm"));
    ASSERT_TRUE(player.renderFile(path));
    player.setBalance(10000);
    player.setBalance(0);
    playFor(player, 0.5);
  }
  EXPECT_DOUBLE_EQ(after, before);
  const std::string lr = testing::readFile(dir + "/lr.pcm");
  ASSERT_GT(lr.size(), kBytesPerSecond);
  Levels leftOnly = levelsOf(lr, 0, kBytesPerSecond * 3 / 10);
  Levels rightOnly = levelsOf(lr, lr.size() - kBytesPerSecond * 3 / 10, lr.size());
  EXPECT_GT(leftOnly.left, 0.2);
  EXPECT_LT(leftOnly.right, 0.01);
  EXPECT_LT(rightOnly.left, 0.01);
  EXPECT_GT(rightOnly.right, 0.2);
  const std::string both = testing::readFile(dir + "/both.pcm");
  Levels stereo = levelsOf(both, 0, both.size());
  EXPECT_GT(stereo.left, 0.2);
  EXPECT_GT(stereo.right, 0.2);
}

TEST(MpvAudio, MuteIsSilenceAndFullVolumeComesBack) {
  QUILLON_SAMPLE_OR_SKIP(path, "pattern.mp4");
  const std::string pcm = testing::tempDir("mpv_mute") + "/out.pcm";
  double before = 0, after = 0;
  {
    MpvPlayer player(toFile(pcm));
    ASSERT_TRUE(player.renderFile(path));
    player.setVolume(-10000);
    playFor(player, 0.8);
    before = player.currentPosition();
    player.setVolume(0);
    after = player.currentPosition();
    playFor(player, 0.8);
  }
  EXPECT_DOUBLE_EQ(after, before);
  const std::string out = testing::readFile(pcm);
  ASSERT_GT(out.size(), kBytesPerSecond);
  Levels muted = levelsOf(out, 0, kBytesPerSecond * 3 / 10);
  Levels loud = levelsOf(out, out.size() - kBytesPerSecond * 3 / 10, out.size());
  EXPECT_LT(muted.left + muted.right, 1e-4);
  EXPECT_GT(loud.left, 0.2);
  EXPECT_GT(loud.right, 0.2);
}

}  // namespace
}  // namespace quillon
