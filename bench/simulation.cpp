// Subtitle simulation of generated scripts of 1999 and 19999 subtitles on
// the simulated clock, one main-timer tick (33 ms) per pump turn. Items are
// pump turns: the time per item must not grow with the script, since every
// turn compares the position with one entry only. The scan that precedes a
// simulation is left out of the timing.
#include <benchmark/benchmark.h>

#include "core/station.h"
#include "core/timecode.h"
#include "doubles/scripted_ui.h"
#include "doubles/simulated_player.h"
#include "script/memory_document.h"
#include "script/tag_grammar.h"
#include "simulation/simulate_blocks.h"
#include "transport/video_commands.h"

namespace {

using namespace quillon;

constexpr double kTick = 0.033;

// Two-line subtitles of 3 seconds with a 1-second gap, from 10 seconds on.
u16 generatedScript(int count, int fps) {
  u16 out;
  out.reserve(static_cast<size_t>(count) * 90);
  for (int i = 0; i < count; ++i) {
    const double in = 10.0 + 4.0 * i;
    out += subtitleTag(i % 10, u' ', u'N', in, in + 3, fps);
    out += u"Line one of subtitle " + numberText(i + 1) + u"\rand its second line\r\r";
  }
  return out + u"\r\r";
}

struct BenchStation {
  explicit BenchStation(int count) : st(ui), player([this] { return ui.clock; }) {
    st.doc = &docs;
    st.s.g_fps = 30;
    st.s.framePeriod = 1.0 / 30;
    doc = &docs.addDocument(std::make_unique<MemoryDocument>());
    doc->setText(generatedScript(count, 30));
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
  ScriptedUi ui;
  MemoryDocumentService docs;
  Station st;
  SimulatedPlayer player;
  MemoryDocument* doc;
};

void simulate(benchmark::State& state, bool follow) {
  const int n = static_cast<int>(state.range(0));
  BenchStation b(n);
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
