// The script in LibreOffice Writer, through the UNO bridge, against a
// headless office this program starts (and ends): a whole-script scan, from
// reading the document's text afresh to the filled scan table, and one
// mark's tag put in front of its paragraph in a script of 19999 subtitles.
// Times are wall-clock: most of them is the office's.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "core/station.h"
#include "doubles/scripted_ui.h"
#include "script/tag_grammar.h"
#include "script/writer/office_process.h"
#include "script/writer/writer_document_service.h"

namespace {

using namespace quillon;

std::string timedScriptLines(int count) {
  std::string out;
  for (int i = 0; i < count; ++i) {
    const double in = 10.0 + 4.0 * i;
    u16 tag = subtitleTag(i % 10, u' ', u'N', in, in + 3.0, 25);
    tag.pop_back();
    out += toUtf8(tag) + "\nLine one of subtitle " + std::to_string(i + 1) + "\nand its second line\n\n";
  }
  return out;
}

// One headless office for the program, with scripts of both sizes open.
class Office {
 public:
  static Office& get() {
    static Office office;
    return office;
  }
  ~Office() {
    stopHeadlessOffice(process_, connection_);
    std::filesystem::remove_all(dir_);
  }
  bool ready() const { return ready_; }
  const std::string& failure() const { return failure_; }
  WriterOptions options() const {
    WriterOptions o;
    o.connection = connection_;
    o.hiddenDocuments = true;
    o.followFrontDocument = false;
    return o;
  }
  std::string script(int count) {
    const std::string path = dir_ + "/script-" + std::to_string(count) + ".txt";
    if (!std::filesystem::exists(path)) {
      std::ofstream(path) << timedScriptLines(count);
      WriterDocumentService s(options());
      if (!s.openFile(path, failure_)) ready_ = false;
    }
    return path;
  }

 private:
  Office() {
    dir_ = "/tmp/quillon-bench-writer-" + std::to_string(getpid());
    std::filesystem::create_directories(dir_);
    connection_ = "pipe,name=quillon-bench-" + std::to_string(getpid());
    ready_ = startHeadlessOffice(process_, connection_, dir_ + "/profile", 300, failure_);
  }
  std::string dir_, connection_, failure_;
  OfficeProcess process_;
  bool ready_ = false;
};

void BM_WriterWholeScriptScan(benchmark::State& state) {
  Office& office = Office::get();
  const int n = static_cast<int>(state.range(0));
  const std::string path = office.script(n);
  if (!office.ready()) return state.SkipWithError(office.failure().c_str());
  ScriptedUi ui;
  for (auto _ : state) {
    // A service of its own each time: the text is read from Writer afresh.
    WriterDocumentService docs(office.options());
    std::string error;
    if (!docs.useOpenFile(path, error)) return state.SkipWithError(error.c_str());
    Station st(ui);
    st.doc = &docs;
    st.s.g_fps = 25;
    if (!scanSubtitles(st, ScanMode::WholeScript) || st.s.scan.count() != n) return state.SkipWithError("the scan lost entries");
  }
  state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_WriterWholeScriptScan)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond)->UseRealTime();

// The timing loop's write at a mark: the tag in front of the paragraph
// under the selection, then the selection two paragraphs on. Marks come
// seconds apart: each one finds Writer done with the last.
void BM_WriterTagInsertion(benchmark::State& state) {
  Office& office = Office::get();
  const std::string path = office.script(19999);
  if (!office.ready()) return state.SkipWithError(office.failure().c_str());
  ScriptedUi ui;
  WriterDocumentService docs(office.options());
  std::string error;
  if (!docs.useOpenFile(path, error)) return state.SkipWithError(error.c_str());
  Station st(ui);
  st.doc = &docs;
  docs.select(docs.paragraph(docs.paragraphsCount() / 2 + 2));
  const u16 tag = subtitleTag(0, u' ', u'N', 100.0, 102.0, 25);
  for (auto _ : state) {
    state.PauseTiming();
    docs.showSelection();
    state.ResumeTiming();
    insertSubtitleTag(st, tag);
    if (!docs.selectNext(wdParagraph, 2)) return state.SkipWithError("ran off the script");
  }
  if (docs.pendingError() != 0) state.SkipWithError("a bridge call failed");
}
BENCHMARK(BM_WriterTagInsertion)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
