// Interchange formats at script scale: the STL export of a whole script,
// rule checks included. The imports are in imports.cpp.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "bench/support/bench_station.h"
#include "formats/stl_export.h"
#include "script/tag_grammar.h"
#include "subtitling/rule_checks.h"

namespace {

using namespace quillon;

u16 timedScript(int count) {
  u16 out;
  for (int i = 0; i < count; ++i) {
    double in = 10.0 + 4.0 * i;
    out += subtitleTag(i % 10, i % 3 == 0 ? u'L' : u' ', i % 4 == 0 ? u'I' : u'N', in, in + 3.0, 25);
    out += u"Subtitle " + numberText(i + 1) + u" with \u00e1cc\u00e9nts\r";
    out += u"and its second line\u2026\r\r";
  }
  return out + u"SUB[\r";
}

void BM_StlExport(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  bench::BenchStation b(25);
  installSubtitleChecks(b.st);
  b.open(timedScript(n), u"Bench.txt");
  const std::string path = bench::tempPath("export.stl");
  for (auto _ : state) {
    FormaSTL form;
    b.ui.savePaths.push_back(path);
    if (!mnuSubEbu(b.st, form) || !commandProximoSTL(b.st, form)) {
      state.SkipWithError(b.ui.boxes.empty() ? "export stopped" : toUtf8(b.ui.lastBox().text).c_str());
      break;
    }
  }
  std::remove(path.c_str());
  state.SetComplexityN(n);
  state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_StlExport)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);


}  // namespace
