// Subtitle simulation of generated scripts of 1999 and 19999 subtitles on
// the simulated clock, one main-timer tick (33 ms) per pump turn. Items are
// pump turns: the time per item must not grow with the script, since every
// turn compares the position with one entry only. The scan that precedes a
// simulation is left out of the timing.
#include <benchmark/benchmark.h>

#include "bench/support/bench_station.h"
#include "bench/support/timed_script.h"
#include "doubles/simulated_player.h"
#include "script/tag_grammar.h"
#include "simulation/simulate_blocks.h"
#include "transport/video_commands.h"

namespace {

using namespace quillon;

constexpr double kTick = 0.033;

// The timed script on a simulated player and clock, the main timer ticking
// at each pump turn.
struct PlayingStation : bench::BenchStation {
  explicit PlayingStation(int count) : BenchStation(30), player([this] { return ui.clock; }) {
    open(bench::timedScript(count, 30) + u"\r\r");
    const double duration = 10.0 + 4.0 * count + 5;
    player.fileDuration = duration;
    player.renderFile("bench.avi");
    st.player = &player;
    Session& s = st.s;
    s.videoFile = u"bench.avi";
    s.videoDuration = duration;
    s.tcStart = 0;
    s.tcEnd = duration;
    s.colourFeedback = true;
    installTransport(st);
    ui.pumpStep = kTick;
    ui.onPump = [this] { timer1Tick(st); };
  }
  SimulatedPlayer player;
};

void simulate(benchmark::State& state, bool follow) {
  const int n = static_cast<int>(state.range(0));
  PlayingStation b(n);
  b.st.s.followSimulation = follow;
  long pumps = 0;
  for (auto _ : state) {
    state.PauseTiming();
    if (!scanSubtitles(b.st, ScanMode::WholeScript) || b.st.s.scan.count() != n) {
      state.SkipWithError("the scan did not read the script");
      return;
    }
    const long before = b.ui.pumps;
    state.ResumeTiming();
    simulateBlocks(b.st, SimulationStart::Top);
    pumps += b.ui.pumps - before;
  }
  state.SetItemsProcessed(pumps);
  state.counters["pump_turns"] = static_cast<double>(pumps) / static_cast<double>(state.iterations());
  state.counters["ns_per_turn"] =
      benchmark::Counter(static_cast<double>(pumps), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void SimulateSubtitles(benchmark::State& state) { simulate(state, false); }
// The document cursor follows the simulation: one search per subtitle,
// from where the cursor stands.
void SimulateFollowingTheDocument(benchmark::State& state) { simulate(state, true); }

BENCHMARK(SimulateSubtitles)->Arg(1999)->Arg(19999)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(SimulateFollowingTheDocument)->Arg(1999)->Arg(19999)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
