// The script document itself: 20000 edits, each at a random place of a
// script of 1999 or 19999 subtitles (an insertion, an erasure, a
// replacement or an italic run, with the paragraph at that place looked
// up). The same work at both sizes, so the ratio is how much dearer one edit
// is in a script ten times as long: 1 for a cost that does not grow, 10 for
// one that grows with the script. Items are edits.
#include <benchmark/benchmark.h>

#include <random>

#include "bench/support/timed_script.h"
#include "script/memory_document.h"
#include "script/tag_grammar.h"

namespace {

using namespace quillon;
using bench::timedScript;

constexpr int kEdits = 20000;

void EditsAtRandomPlaces(benchmark::State& state) {
  const u16 script = timedScript(static_cast<int>(state.range(0)));
  MemoryDocumentService docs;
  MemoryDocument& doc = docs.addDocument(std::make_unique<MemoryDocument>());
  DocumentService& d = docs;
  const u16 tag = subtitleTag(1, u' ', u'N', 1, 2, 25);
  for (auto _ : state) {
    state.PauseTiming();
    doc.setText(script);
    std::mt19937 rng(1);
    state.ResumeTiming();
    for (int i = 0; i < kEdits; ++i) {
      const long at = static_cast<long>(rng() % static_cast<unsigned>(d.length()));
      const TextRange p = d.paragraphRange(d.paragraphIndexAt(at));
      switch (i % 4) {
        case 0: d.insertText(p.start, tag, false, false); break;
        case 1: d.eraseText({p.start, std::min(p.end, p.start + 12)}); break;
        case 2: d.replaceText({at, at + 3}, u"and", false); break;
        default: d.setItalic(p, true); break;
      }
    }
    doc.undoClear();
  }
  state.SetItemsProcessed(state.iterations() * kEdits);
}

}  // namespace

BENCHMARK(EditsAtRandomPlaces)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
