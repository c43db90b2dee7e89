// Writing the SCC and ULT of long caption scripts: the cost must grow in
// step with the number of captions.
#include <benchmark/benchmark.h>

#include "bench/support/bench_station.h"
#include "captions/caption_checks.h"
#include "captions/scc_export.h"
#include "captions/ult_export.h"
#include "core/timecode.h"
#include "script/tag_grammar.h"

namespace quillon {
namespace {

// Two-row captions, 3 s on air with 1 s between them.
u16 captionScript(int count) {
  u16 out;
  out.reserve(static_cast<size_t>(count) * 80);
  for (int i = 0; i < count; ++i) {
    const double in = 10.0 + 4.0 * i;
    out += u"CAP[0NC " + SEGaTC(in, 30) + u">" + SEGaTC(in + 3.0, 30) + u"]\r";
    out += u"Caption number " + numberText(i + 1) + u"\rwith a second row\r\r";
  }
  return out;
}

struct CaptionStation : bench::BenchStation {
  explicit CaptionStation(int count) : BenchStation(30) {
    installCaptionChecks(st);
    open(captionScript(count));
  }
};

void BM_SccFromScript(benchmark::State& state) {
  CaptionStation cs(static_cast<int>(state.range(0)));
  size_t bytes = 0;
  for (auto _ : state) {
    if (!scanCaptions(cs.st, ScanMode::WholeScript)) state.SkipWithError("scan failed");
    std::string scc = sccText(cs.st);
    bytes = scc.size();
    benchmark::DoNotOptimize(scc);
  }
  state.counters["bytes"] = static_cast<double>(bytes);
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_SccFromScript)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

void BM_SccFromScanTable(benchmark::State& state) {
  CaptionStation cs(static_cast<int>(state.range(0)));
  scanCaptions(cs.st, ScanMode::WholeScript);
  for (auto _ : state) benchmark::DoNotOptimize(sccText(cs.st));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_SccFromScanTable)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

void BM_UltRecords(benchmark::State& state) {
  CaptionStation cs(static_cast<int>(state.range(0)));
  scanCaptions(cs.st, ScanMode::WholeScript);
  for (auto _ : state) {
    std::string records;
    benchmark::DoNotOptimize(llenarULT(cs.st, records));
    benchmark::DoNotOptimize(records);
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_UltRecords)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

}  // namespace
}  // namespace quillon
