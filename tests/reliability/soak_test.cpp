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

constexpr int kUntimed = 11;    // texts timed, then taken back, in each round
constexpr double kRound = 200;  // seconds of video per round: half simulation, half timing

TEST(Soak, SimulationAndTimingOnALargeScriptKeepTheHeapFlat) {
  const char* soak = std::getenv("QUILLON_SOAK");
  const double hours = soak && std::string(soak) == "1" ? 8 : 0;
  // Three rounds are ten simulated minutes, near enough. Each skips a few
  // seconds of video, so the video is made a tenth longer than the hours.
  testing::PlayingStation t(hours ? hours * 3600 * 1.1 + 2 * kRound : 4 * kRound, 25);
  Session& s = t.st.s;
  s.minInterleave = 0;
  s.followSimulation = s.jumpToNextBlock = false;
  u16 untimed;
  for (int i = 1; i <= kUntimed; ++i) untimed += u"Untimed text " + numberText(i) + u"\r\r";
  t.open(testing::generatedSubtitleScript(19999, 25) + untimed);
  const u16 original = t.content();
  const long untimedAt = static_cast<long>(original.size() - untimed.size());

  std::vector<std::pair<size_t, size_t>> samples;  // heap and resident bytes after each round
  const auto wallStart = std::chrono::steady_clock::now();
  const double clockStart = t.ui.clock;
  for (double at = 0; hours ? t.ui.clock - clockStart < hours * 3600 : samples.size() < 3; at += kRound) {
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
      t.markAt(at + kRound / 2 + 2 + 8.0 * i);
      t.markAt(at + kRound / 2 + 5.5 + 8.0 * i);
    }
    timingLoop(t.st);
    ASSERT_EQ(s.tagUndoCount, kUntimed) << "round " << samples.size();
    // The operator takes every tag back, and the script is as it was.
    while (s.tagUndoCount > 0) mnu_undo(t.st);
    ASSERT_EQ(t.content(), original) << "round " << samples.size();

    // What the test itself kept of the round goes; the station's memory stays.
    t.actions.clear();
    t.ui.boxes.clear();
    t.ui.pointerHistory.clear();
    samples.emplace_back(liveHeapBytes(), residentBytes());
  }
  // After a warm-up round the heap may wobble with string capacities but
  // not grow: no round may end more than 64 KB above the first measured.
  const auto [base, baseResident] = samples.at(1);
  size_t peak = base;
  for (size_t i = 1; i < samples.size(); ++i) peak = std::max(peak, samples[i].first);
  EXPECT_LE(peak, base + 64 * 1024) << "heap grew from " << base << " to " << peak << " bytes";
  std::printf("soak: %.2f simulated hours, %zu rounds, %.1f s wall; heap after warm-up %zu B, peak %zu B, last %zu B; "
              "resident %zu KB after warm-up, %zu KB at the end\n",
              (t.ui.clock - clockStart) / 3600, samples.size(),
              std::chrono::duration<double>(std::chrono::steady_clock::now() - wallStart).count(), base, peak,
              samples.back().first, baseResident / 1024, samples.back().second / 1024);
}

}  // namespace
}  // namespace quillon
