// Scanning a whole timed script: the work every export, statistic and
// simulation starts with. The pairs show how the cost grows with the script.
#include <benchmark/benchmark.h>

#include "bench/support/bench_station.h"
#include "bench/support/timed_script.h"
#include "script/tag_grammar.h"

namespace {

using namespace quillon;
using bench::timedScript;

void BM_ScanSubtitles(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  bench::BenchStation b(25);
  b.open(timedScript(n));
  Station& st = b.st;
  for (auto _ : state) {
    bool ok = scanSubtitles(st, ScanMode::WholeScript);
    benchmark::DoNotOptimize(ok);
  }
  if (st.s.scan.count() != n) state.SkipWithError("scan lost entries");
  state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_ScanSubtitles)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);

}  // namespace
