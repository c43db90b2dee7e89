// Whole-script subtitling work on generated scripts of 1999 and 19999
// subtitles: the scan with every rule check, in-place retiming (offset and
// both rate changes) and interleave repair. Items are subtitles.
#include <benchmark/benchmark.h>

#include "bench/support/bench_station.h"
#include "bench/support/timed_script.h"
#include "script/tag_grammar.h"
#include "subtitling/editing_commands.h"
#include "subtitling/retiming.h"
#include "subtitling/rule_checks.h"

namespace {

using namespace quillon;

using bench::BenchStation;

// The rule checks on, with the usual parameters.
struct CheckingStation : BenchStation {
  explicit CheckingStation(int fps) : BenchStation(fps) {
    installSubtitleChecks(st);
    Session& s = st.s;
    bench::useUsualParameters(s);
    s.readingSpeedCheck = true;
    s.fastThreshold = 25;
    s.slowThreshold = 10;
    s.inSituOffset = true;
  }
};

template <class Command>
void run(benchmark::State& state, int fps, double gap, Command command) {
  const int n = static_cast<int>(state.range(0));
  CheckingStation b(fps);
  MemoryDocument& doc = b.open();
  const u16 text = bench::timedScript(n, fps, gap);
  for (auto _ : state) {
    state.PauseTiming();
    doc.setText(text);
    b.ui.boxes.clear();
    state.ResumeTiming();
    command(b);
  }
  if (!b.ui.boxes.empty()) state.SkipWithError("a rule check asked");
  state.SetItemsProcessed(state.iterations() * n);
}

void ScanWithAllChecks(benchmark::State& state) {
  run(state, 30, 1, [](CheckingStation& b) { benchmark::DoNotOptimize(scanSubtitles(b.st, ScanMode::WholeScript)); });
}

void OffsetInPlace(benchmark::State& state) {
  run(state, 30, 1, [](CheckingStation& b) {
    b.ui.inputs = {u16(u"00:00:20:00")};
    mnu_tex_off(b.st);
  });
}

void PalToNtscInPlace(benchmark::State& state) {
  run(state, 25, 1, [](CheckingStation& b) { mnu_tex_PALtoNTSC(b.st); });
}

void NtscToPalInPlace(benchmark::State& state) {
  run(state, 30, 1, [](CheckingStation& b) { mnu_tex_NTSCtoPAL(b.st); });
}

// Every subtitle follows the previous one by exactly the minimum interleave,
// so every one is repaired.
void InterleaveRepair(benchmark::State& state) {
  run(state, 30, 2.0 / 30, [](CheckingStation& b) { mnu_sub_changeinterleave(b.st); });
}

}  // namespace

BENCHMARK(ScanWithAllChecks)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(OffsetInPlace)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(PalToNtscInPlace)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(NtscToPalInPlace)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(InterleaveRepair)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
