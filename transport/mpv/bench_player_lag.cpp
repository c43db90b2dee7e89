// How far the position the station holds (g_dblPosActual) lags the
// player's own clock while a video plays. The station's copy is fed by the
// player's position reports, or else polled every 33 ms as the main timer
// does; the player's clock is read fresh at random moments. The counters
// give the lag in frames: the target is at most one.
#include <benchmark/benchmark.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <random>
#include <thread>

#include "transport/mpv/mpv_player.h"

namespace {

using quillon::MpvOptions;
using quillon::MpvPlayer;

constexpr double kFps = 25;

std::string samplePath() {
#ifdef QUILLON_SAMPLE_MEDIA_DIR
  std::string p = std::string(QUILLON_SAMPLE_MEDIA_DIR) + "/pattern.mp4";
  if (std::filesystem::exists(p)) return p;
#endif
  return "";
}

MpvOptions headless() {
  MpvOptions o;
  o.videoOutput = "null";
  o.audioOutput = "null";
  return o;
}

// One sample: the fresh clock less the station's copy, in frames.
template <typename StationPosition>
void measureLag(benchmark::State& state, MpvPlayer& player, StationPosition stationPosition) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> pauseMs(1, 40);
  double worst = 0, total = 0;
  long samples = 0;
  for (auto _ : state) {
    state.PauseTiming();
    std::this_thread::sleep_for(std::chrono::milliseconds(pauseMs(random)));
    if (player.currentPosition() > 9.0) player.setCurrentPosition(0.5);
    state.ResumeTiming();
    const double station = stationPosition();
    const double clock = player.currentPosition();
    const double lag = (clock - station) * kFps;
    if (lag > -0.5) {  // a seek back in between is no lag
      worst = std::max(worst, lag);
      total += lag;
      ++samples;
    }
  }
  state.counters["worst_lag_frames"] = worst;
  state.counters["mean_lag_frames"] = samples ? total / samples : 0;
}

void BM_LagWithPositionReports(benchmark::State& state) {
  const std::string path = samplePath();
  if (path.empty()) return state.SkipWithError("sample media not generated");
  MpvPlayer player(headless());
  std::atomic<double> g_dblPosActual{0};
  player.setPositionListener([&](double pos) { g_dblPosActual = pos; });
  if (!player.renderFile(path)) return state.SkipWithError("cannot open the sample");
  player.run();
  measureLag(state, player, [&] { return g_dblPosActual.load(); });
  player.pause();
}
BENCHMARK(BM_LagWithPositionReports)->Iterations(300)->UseRealTime();

void BM_LagWithTimerPolling(benchmark::State& state) {
  const std::string path = samplePath();
  if (path.empty()) return state.SkipWithError("sample media not generated");
  MpvPlayer player(headless());
  if (!player.renderFile(path)) return state.SkipWithError("cannot open the sample");
  std::atomic<double> g_dblPosActual{0};
  std::atomic<bool> ticking{true};
  std::thread timer1([&] {
    while (ticking) {
      g_dblPosActual = player.currentPosition();
      std::this_thread::sleep_for(std::chrono::milliseconds(33));
    }
  });
  player.run();
  measureLag(state, player, [&] { return g_dblPosActual.load(); });
  ticking = false;
  timer1.join();
  player.pause();
}
BENCHMARK(BM_LagWithTimerPolling)->Iterations(300)->UseRealTime();

}  // namespace
