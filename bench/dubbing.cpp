// Dubbing work on generated scripts of 1999 and 19999 dialogs: the line
// count report (both rules) and the DUB→SUB conversion in place. Items are
// dialogs.
#include <benchmark/benchmark.h>

#include "bench/support/bench_station.h"
#include "dubbing/dub_to_sub.h"
#include "dubbing/line_count.h"
#include "script/tag_grammar.h"

namespace {

using namespace quillon;

constexpr int kFps = 25;

// Long DUB[ tags of six characters in turn, a short and a long dialog.
u16 dubbingScript(int count) {
  static const char16_t* const names[] = {u"ANA", u"PEDRO", u"LUIS", u"MARTA", u"JOSE", u"NARRADOR"};
  u16 out;
  out.reserve(static_cast<size_t>(count) * 110);
  for (int i = 0; i < count; ++i) {
    const double in = 10.0 + 4.0 * i;
    u16 tag = subtitleTag(0, u' ', u'N', in, in + 3.0, kFps);  // "SUB[...]" + CR
    tag[0] = u'D';
    tag[1] = u'U';
    tag[2] = u'B';
    tag.pop_back();
    out += tag + u" " + names[i % 6] + CR;
    out += i % 2 ? u16(u"Hola.") : u16(u"This dialog is long enough to wrap onto a second line of the page");
    out += u16(1, CR) + CR;
  }
  return out;
}

using bench::BenchStation;

template <class Command>
void run(benchmark::State& state, Command command) {
  const int n = static_cast<int>(state.range(0));
  BenchStation b(kFps);
  MemoryDocument& doc = b.open();
  const u16 text = dubbingScript(n);
  for (auto _ : state) {
    state.PauseTiming();
    doc.setText(text);
    b.ui.boxes.clear();
    state.ResumeTiming();
    if (!command(b, n)) {
      state.SkipWithError(b.ui.boxes.empty() ? "stopped" : toUtf8(b.ui.lastBox().text).c_str());
      break;
    }
  }
  state.SetItemsProcessed(state.iterations() * n);
}

void LineCount(benchmark::State& state) {
  run(state, [](BenchStation& b, int) { return mnu_herr_lin(b.st); });
}

void LineCountActra(benchmark::State& state) {
  run(state, [](BenchStation& b, int) {
    b.st.s.actraGuidelines = true;
    return mnu_herr_lin(b.st);
  });
}

void DubToSub(benchmark::State& state) {
  run(state, [](BenchStation& b, int n) { return mnu_DUB_SUB(b.st) == n; });
}

}  // namespace

BENCHMARK(LineCount)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(LineCountActra)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(DubToSub)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
