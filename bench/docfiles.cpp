// Loading and saving a long script as .docx: 20000 paragraphs (5000 timed
// subtitles of four paragraphs each, one line in italics).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <unistd.h>

#include "script/files/office_formats.h"
#include "script/memory_document.h"

using namespace quillon;

namespace {

std::unique_ptr<MemoryDocument> longScript() {
  u16 text;
  std::vector<std::pair<long, long>> italic;
  for (int i = 0; i < 5000; ++i) {
    text += u"SUB[0 N 00:00:10:00>00:00:13:00]\r";
    text += u"Line one of subtitle " + numberText(i + 1) + u"\r";
    long start = static_cast<long>(text.size());
    text += u"and its second line\r\r";
    if (i % 3 == 0) italic.emplace_back(start, start + 19);
  }
  auto doc = std::make_unique<MemoryDocument>();
  doc->setText(text);
  for (auto [a, b] : italic) doc->setItalic({a, b}, true);
  return doc;
}

const std::string& docxBytes() {
  static std::string bytes = [] {
    std::string out, problem;
    if (!docfiles::buildDocx(*longScript(), out, problem)) std::fprintf(stderr, "%s\n", problem.c_str());
    return out;
  }();
  return bytes;
}

void LoadDocx20000Paragraphs(benchmark::State& state) {
  const std::string& bytes = docxBytes();
  for (auto _ : state) {
    std::string problem;
    auto doc = docfiles::loadDocx(bytes, problem);
    if (!doc || doc->paragraphsCount() != 20000) state.SkipWithError("load failed");
    benchmark::DoNotOptimize(doc);
  }
  state.counters["file_kB"] = static_cast<double>(bytes.size()) / 1024.0;
}
BENCHMARK(LoadDocx20000Paragraphs)->Unit(benchmark::kMillisecond);

// A tag inserted in the middle, then the whole save: build, read back, write.
void SaveDocx20000ParagraphsAfterATag(benchmark::State& state) {
  std::string problem;
  auto doc = docfiles::loadDocx(docxBytes(), problem);
  doc->insert(doc->paragraph(10001).start, u"SUB[1 N 00:10:00:00>00:10:02:00]\r", false, false);
  std::string path = "/tmp/quillon-bench-docfiles-" + std::to_string(getpid()) + ".docx";
  for (auto _ : state) {
    std::string error;
    if (!docfiles::saveOfficeFile(*doc, path, error)) state.SkipWithError(error.c_str());
  }
  std::remove(path.c_str());
}
BENCHMARK(SaveDocx20000ParagraphsAfterATag)->Unit(benchmark::kMillisecond);

}  // namespace
