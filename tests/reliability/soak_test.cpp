// A working day on the simulated clock: simulation and timing runs in turn
// over a 19999-subtitle script, with the heap measured after every round.
// A station that leaks, or keeps a little of each run, shows it here as
// growth after the first rounds.
//
// ctest runs ten simulated minutes; QUILLON_SOAK=1 runs eight hours
// (scripts/soak does that on a Release build and prints the figures).
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define QUILLON_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUILLON_ASAN 1
#endif
#endif
#ifdef QUILLON_ASAN
// From the sanitizer's runtime: the bytes its allocator has handed out and
// not yet taken back.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#else
#include <malloc.h>
#endif

#include "simulation/simulation_menus.h"
#include "subtitling/editing_commands.h"
#include "subtitling/playing_station.h"
#include "subtitling/timing_loop.h"

namespace quillon {
namespace {

// Bytes the program holds on its heap right now.
size_t liveHeapBytes() {
#ifdef QUILLON_ASAN
  return __sanitizer_get_current_allocated_bytes();
#else
  const struct mallinfo2 m = mallinfo2();
  return m.uordblks + m.hblkhd;
#endif
}

// Resident memory of the process in bytes.
size_t residentBytes() {
  std::ifstream statm("/proc/self/statm");
  size_t pages = 0, resident = 0;
  statm >> pages >> resident;
  return resident * 4096;
}

constexpr int kSubtitles = 19999;
constexpr int kUntimed = 11;    // texts timed, then taken back, in each round
constexpr double kRound = 200;  // seconds of video per round: half simulation, half timing
constexpr int kWarmUpRounds = 1;
constexpr int kShortRounds = 3;  // ten simulated minutes, near enough

struct Sample {
  double hours;
  size_t heap, resident;
};

TEST(Soak, SimulationAndTimingOnALargeScriptKeepTheHeapFlat) {
  const char* soak = std::getenv("QUILLON_SOAK");
  const bool full = soak && std::string(soak) == "1";
  const double hours = full ? 8 : 0;
  // The rounds run on the clock to the hours asked; each skips a few seconds
  // of video, so the video is made a tenth longer than that.
  testing::PlayingStation t(full ? hours * 3600 * 1.1 + 2 * kRound : (kShortRounds + 1) * kRound, 25);
  Session& s = t.st.s;
  s.minInterleave = 0;
  s.followSimulation = false;
  s.jumpToNextBlock = false;
  u16 untimed;
  for (int i = 1; i <= kUntimed; ++i) untimed += u"Untimed text " + numberText(i) + u"\r\r";
  t.open(testing::generatedSubtitleScript(kSubtitles, 25) + untimed);
  const u16 original = t.content();
  const long untimedAt = static_cast<long>(original.size() - untimed.size());

  std::vector<Sample> samples;
  samples.reserve(512);
  const auto wallStart = std::chrono::steady_clock::now();
  const double clockStart = t.ui.clock;
  int round = 0;
  for (double at = 0; full ? t.ui.clock - clockStart < hours * 3600 : round < kShortRounds;
       at += kRound, ++round) {
    // Simulation from the present timecode for half the round, then Esc.
    ira(t.st, at);
    t.escapeAt(at + kRound / 2);
    mnu_sim_q(t.st);
    ASSERT_FALSE(s.g_fsim);

    // A timing run over the untimed texts at the script's end: two marks each.
    t.actions.clear();
    t.next = 0;
    ira(t.st, at + kRound / 2);
    t.docs.select({untimedAt, untimedAt});
    for (int i = 0; i < kUntimed; ++i) {
      const double in = at + kRound / 2 + 2 + 8.0 * i;
      t.markAt(in);
      t.markAt(in + 3.5);
    }
    timingLoop(t.st);
    ASSERT_EQ(s.tagUndoCount, kUntimed) << "round " << round;
    // The operator takes every tag back, and the script is as it was.
    while (s.tagUndoCount > 0) mnu_undo(t.st);
    ASSERT_EQ(t.content().size(), original.size()) << "round " << round;

    // What the test itself kept of the round goes; the station's memory stays.
    t.actions.clear();
    t.ui.boxes.clear();
    t.ui.pointerHistory.clear();
    samples.push_back({(t.ui.clock - clockStart) / 3600.0, liveHeapBytes(), residentBytes()});
  }
  const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - wallStart).count();
  ASSERT_EQ(t.content(), original);
  EXPECT_TRUE(t.ui.boxes.empty());

  // After the warm-up rounds the heap may wobble with string capacities but
  // not grow: no round may end more than 64 KB above the first one measured.
  const size_t base = samples[kWarmUpRounds].heap;
  size_t peak = base;
  for (size_t i = kWarmUpRounds; i < samples.size(); ++i) peak = std::max(peak, samples[i].heap);
  EXPECT_LE(peak, base + 64 * 1024) << "heap grew from " << base << " to " << peak << " bytes";

  const Sample& last = samples.back();
  std::printf("soak: %.2f simulated hours, %zu rounds, %.1f s wall; heap after warm-up %zu B, peak %zu B, last %zu B; "
              "resident %zu KB after warm-up, %zu KB at the end\n",
              last.hours, samples.size(), wall, base, peak, last.heap, samples[kWarmUpRounds].resident / 1024,
              last.resident / 1024);
  if (full)
    for (size_t i = 0; i < samples.size(); i += 24)
      std::printf("soak:   %5.2f h  heap %zu B  resident %zu KB\n", samples[i].hours, samples[i].heap,
                  samples[i].resident / 1024);
}

}  // namespace
}  // namespace quillon
