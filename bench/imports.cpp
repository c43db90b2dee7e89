// Every import into a new tagged script, on generated lists of 1999 and
// 19999 entries: EBU STL, the {SUB} list, the DOS 850 list, SRT, the .SUB
// list, the Unicode text layout and the timing merge. Items are the
// subtitles the import actually wrote: the list readers stop where the
// station's tables always stopped them (SRT at 4999, the {SUB} and DOS 850
// lists and the Unicode layout at 9999), and the `read` counter says where;
// an STL file holds one block more, the programme's page zero.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>

#include "bench/support/bench_station.h"
#include "core/timecode.h"
#include "formats/line_imports.h"
#include "formats/merge.h"
#include "formats/stl_export.h"
#include "formats/stl_import.h"
#include "formats/text_exports.h"
#include "script/memory_document.h"
#include "script/tag_grammar.h"
#include "subtitling/rule_checks.h"

namespace {

using namespace quillon;

constexpr int kFps = 25;

// The rule checks on, as an import runs them.
struct ImportStation : bench::BenchStation {
  ImportStation() : BenchStation(kFps) { installSubtitleChecks(st); }
};

// Entry i (from 0) runs from 10 + 4i s for 3 s.
double cueIn(int i) { return 10.0 + 4.0 * i; }
std::string tc(double seconds) { return toUtf8(SEGaTC(seconds, kFps)); }

// Two lines of text without digits, so that no number search of the Unicode
// layout can stop inside a subtitle.
u16 timedScript(int count) {
  u16 out;
  out.reserve(static_cast<size_t>(count) * 80);
  for (int i = 0; i < count; ++i) {
    out += subtitleTag(i % 10, u' ', u'N', cueIn(i), cueIn(i) + 3.0, kFps);
    out += u"A subtitle with \u00e1cc\u00e9nts\rand its second line\u2026\r\r";
  }
  return out + u"SUB[\r";
}

// Tags with times; the closing "SUB[" line is not one.
long countTags(const u16& text) {
  long n = 0;
  for (size_t at = text.find(u"SUB["); at != u16::npos; at = text.find(u"SUB[", at + 1))
    if (at + 4 < text.size() && text[at + 4] != CR) ++n;
  return n;
}

// The tags an import wrote, counted outside the timing: the count checks
// the import and is no part of it.
long tagsWritten(benchmark::State& state, const MemoryDocument& doc) {
  state.PauseTiming();
  const long n = countTags(doc.text());
  state.ResumeTiming();
  return n;
}

// Runs `read` on a fresh station each round (set up by `prepare`, outside
// the timing) and counts the subtitles it reports.
template <class Prepare, class Read>
void runImport(benchmark::State& state, Prepare prepare, Read read) {
  long imported = 0;
  for (auto _ : state) {
    state.PauseTiming();
    auto b = std::make_unique<ImportStation>();
    prepare(*b);
    state.ResumeTiming();
    imported = read(*b);
    if (imported <= 0) {
      state.SkipWithError(b->ui.boxes.empty() ? "nothing imported" : toUtf8(b->ui.lastBox().text).c_str());
      break;
    }
    state.PauseTiming();
    b.reset();
    state.ResumeTiming();
  }
  state.counters["read"] = static_cast<double>(imported);
  state.SetItemsProcessed(state.iterations() * imported);
}

void newDocument(ImportStation& b) { b.docs.documentsAdd(); }

void EbuStlImport(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  const std::string path = bench::tempPath("import.stl");
  {
    ImportStation b;
    b.open(timedScript(n), u"Bench.txt");
    FormaSTL form;
    b.ui.savePaths.push_back(path);
    if (!mnuSubEbu(b.st, form) || !commandProximoSTL(b.st, form)) {
      state.SkipWithError("the STL export stopped");
      return;
    }
  }
  runImport(state, [](ImportStation&) {},
            [&](ImportStation& b) {
              if (!readEbuStl(b.st, path)) return 0L;
              return tagsWritten(state, *b.docs.active());
            });
  std::remove(path.c_str());
}

void SubListImport(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  std::string bytes;
  for (int i = 0; i < n; ++i)
    bytes += "{" + std::to_string(static_cast<int>(cueIn(i) * kFps)) + "}{" +
             std::to_string(static_cast<int>((cueIn(i) + 3) * kFps)) + "}A subtitle line|and its second line\r\n";
  bytes += "{0}{0}the last line is not read\r\n";
  runImport(state, newDocument, [&](ImportStation& b) { return static_cast<long>(readSubList(b.st, bytes)); });
}

void Dos850ListImport(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  std::string bytes = "\r\n";
  for (int i = 0; i < n; ++i) {
    char number[32];
    std::snprintf(number, sizeof number, "%04d", i + 1);
    std::string head = number;
    head.resize(10, ' ');
    bytes += head + tc(cueIn(i)) + "    " + tc(cueIn(i) + 3) + "\r\nSe\xA4or \x82l\r\nsegunda l\xA1nea\r\n\r\n";
  }
  runImport(state, newDocument, [&](ImportStation& b) { return static_cast<long>(readDos850List(b.st, bytes)); });
}

std::string srtTime(double seconds) {
  const int ms = static_cast<int>(seconds * 1000 + 0.5);
  char out[32];
  std::snprintf(out, sizeof out, "%02d:%02d:%02d,%03d", ms / 3600000, ms / 60000 % 60, ms / 1000 % 60, ms % 1000);
  return out;
}

void SrtImport(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  std::string bytes;
  for (int i = 0; i < n; ++i)
    bytes += std::to_string(i + 1) + "\r\n" + srtTime(cueIn(i) + 0.5) + " --> " + srtTime(cueIn(i) + 3.25) +
             "\r\nSubtitle with \xC3\xA1" "cc\xC3\xA9nts\r\nand its second line\r\n\r\n";
  runImport(state, newDocument, [&](ImportStation& b) { return static_cast<long>(readSrt(b.st, bytes)); });
}

void DotSubImport(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  auto dotted = [](double s) {
    std::string t = tc(s);
    t[8] = '.';
    return t;
  };
  std::string bytes = "*PART 1*\r\n00:00:00.00\\00:00:00.00\r\n";
  for (int i = 0; i < n; ++i)
    bytes += (i % 3 == 0 ? "[\xB5rbol en cursiva\r\n" : "}\xB5rbol arriba\r\n") + std::string("segunda l\xA1nea\r\n") +
             dotted(cueIn(i)) + "\\" + dotted(cueIn(i) + 3) + "\r\n";
  bytes += "*End*\r\n";
  runImport(state, newDocument, [&](ImportStation& b) { return static_cast<long>(readDotSubList(b.st, bytes)); });
}


// The layout comes from the station's own Unicode text export.
void UnicodeTextImport(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  u16 layout;
  {
    ImportStation b;
    b.open(timedScript(n), u"Bench.txt");
    if (!mnuSubUnitext(b.st)) {
      state.SkipWithError("the Unicode text export stopped");
      return;
    }
    layout = b.docs.active()->text();
  }
  runImport(state, [&](ImportStation& b) { b.open(layout, u"Layout.txt"); },
            [&](ImportStation& b) {
              if (!mnuSubImpunitxt(b.st)) return 0L;
              return tagsWritten(state, *b.docs.active());
            });
}

// Loads a timing document of numbered entries, then tags the text document
// of the same numbers. The merge walks as many paragraphs as the text had
// before its tags went in, so the text ends in enough empty ones for all.
void TimingMerge(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  u16 timing, text;
  for (int i = 0; i < n; ++i) {
    const u16 number = formatNumber(i + 1, "0000");
    timing += number + TAB + SEGaTC(cueIn(i), kFps) + TAB + SEGaTC(cueIn(i) + 3, kFps) + CR;
    text += number + CR + u"A subtitle line" + CR + CR;
  }
  text += u16(static_cast<size_t>(n), CR);
  runImport(state, [&](ImportStation& b) { b.open(timing, u"Timing.txt"); },
            [&](ImportStation& b) {
              if (!cargarTiming(b.st)) return 0L;
              state.PauseTiming();
              MemoryDocument& doc = b.open(text, u"Text.txt");
              state.ResumeTiming();
              mergeTiming(b.st);
              return tagsWritten(state, doc);
            });
}

}  // namespace

BENCHMARK(EbuStlImport)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(SubListImport)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(Dos850ListImport)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(SrtImport)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(DotSubImport)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(UnicodeTextImport)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
BENCHMARK(TimingMerge)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond);
