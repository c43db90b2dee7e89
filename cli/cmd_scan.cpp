// quillon-cli scan: the script's tags as the scanners read them.
#include <ostream>

#include "cli/command.h"
#include "core/timecode.h"
#include "script/tag_grammar.h"

namespace quillon::cli {

namespace {

std::string cell(char16_t c) { return c ? toUtf8(u16(1, c)) : std::string(); }

int runScan(Invocation& inv) {
  bool captions = inv.takeFlag("--captions");
  if (int rc = inv.loadOneScript("scan")) return rc;
  Station& st = inv.st;
  bool ok = captions ? scanCaptions(st, ScanMode::WholeScript) : scanSubtitles(st, ScanMode::WholeScript);
  const ScanTable& t = st.s.scan;
  if (ok) {
    for (int i = 1; i <= t.count(); ++i) {
      std::string text = toUtf8(t.text[i]);
      for (char& c : text)
        if (c == '\r') c = '|';
      inv.out << i << '\t' << toUtf8(SEGaTC(t.cueIn[i], st.fps())) << '\t' << toUtf8(SEGaTC(t.cueOut[i], st.fps()))
              << '\t' << cell(t.posDigit[i]) << '\t' << cell(t.alignChar[i]) << '\t' << cell(t.styleChar[i]) << '\t'
              << (t.isSubtitle[i] ? 'S' : 'D') << '\t' << toUtf8(t.noteText[i]) << '\t' << text << '\n';
    }
  }
  return inv.exitFor(ok);
}

const CommandRegistrar reg({"scan", "scan [--fps N] [--captions] [--param NAME=VALUE]... SCRIPT",
                            "Read the script's timing tags and print one line per entry: index, cue-in, cue-out,\n"
                            "position, alignment, style, S or D, note, and the text with each paragraph mark as '|'.",
                            runScan});

}  // namespace
}  // namespace quillon::cli
