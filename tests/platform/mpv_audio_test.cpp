// Balance and mute heard through mpv's file output: 16-bit stereo samples
// of the sample pattern's tone, 440 Hz on the left and 880 Hz on the right.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <thread>

#include "sample_media.h"
#include "support/station_fixture.h"
#include "transport/mpv/mpv_player.h"

namespace quillon {
namespace {

constexpr size_t kBytesPerSecond = 48000 * 4;

// Root mean square of each side, full scale 1, between two byte offsets.
std::pair<double, double> levelsOf(const std::string& bytes, size_t from, size_t to) {
  double left = 0, right = 0;
  size_t frames = 0;
  for (size_t i = from; i + 4 <= std::min(to, bytes.size()); i += 4, ++frames) {
    int16_t l, r;
    std::memcpy(&l, bytes.data() + i, 2);
    std::memcpy(&r, bytes.data() + i + 2, 2);
    left += double(l) * l;
    right += double(r) * r;
  }
  if (!frames) return {0, 0};
  return {std::sqrt(left / frames) / 32768, std::sqrt(right / frames) / 32768};
}

// The output is written in large blocks, so what was heard when is told by
// its order: the first and the last stretch of each run are compared. The
// setting changes between them without moving the position.
TEST(MpvAudio, BalanceAndMuteChangeWhatIsHeardWithoutMovingThePosition) {
  QUILLON_SAMPLE_OR_SKIP(path, "pattern.mp4");
  const std::string dir = testing::tempDir("mpv_audio");
  using Set = void (MpvPlayer::*)(long);
  const struct {
    const char* what;
    Set set;
    long first, then;
    bool leftFirst, rightFirst, leftThen, rightThen;  // heard or silent
  } cases[] = {
      {"balance left, then right", &MpvPlayer::setBalance, -10000, 10000, true, false, false, true},
      {"balance right, then centred", &MpvPlayer::setBalance, 10000, 0, false, true, true, true},
      {"muted, then full volume", &MpvPlayer::setVolume, -10000, 0, false, false, true, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const std::string pcm = dir + "/" + std::to_string(&c - cases) + ".pcm";
    double before = 0, after = 0;
    {
      MpvOptions o;
      o.videoOutput = "null";
      o.audioOutput = "pcm";
      o.extra = {{"ao-pcm-file", pcm},         {"ao-pcm-waveheader", "no"},  {"audio-format", "s16"},
                 {"audio-channels", "stereo"}, {"audio-samplerate", "48000"}};
      MpvPlayer player(o);
      ASSERT_TRUE(player.renderFile(path));
      player.setCurrentPosition(2.0);
      (player.*c.set)(c.first);
      const auto play = [&] {
        player.run();
        std::this_thread::sleep_for(std::chrono::milliseconds(800));
        player.pause();
      };
      play();
      before = player.currentPosition();
      (player.*c.set)(c.then);
      after = player.currentPosition();
      play();
    }
    EXPECT_DOUBLE_EQ(after, before);
    const std::string out = testing::readFile(pcm);
    ASSERT_GT(out.size(), kBytesPerSecond);
    const auto [l1, r1] = levelsOf(out, 0, kBytesPerSecond * 3 / 10);
    const auto [l2, r2] = levelsOf(out, out.size() - kBytesPerSecond * 3 / 10, out.size());
    const auto heard = [](double level, bool expected) { return expected ? level > 0.2 : level < 0.01; };
    EXPECT_TRUE(heard(l1, c.leftFirst)) << l1;
    EXPECT_TRUE(heard(r1, c.rightFirst)) << r1;
    EXPECT_TRUE(heard(l2, c.leftThen)) << l2;
    EXPECT_TRUE(heard(r2, c.rightThen)) << r2;
  }
}

}  // namespace
}  // namespace quillon
