// quillon-cli stats: the subtitling statistics of the script.
#include <ostream>

#include "cli/command.h"
#include "subtitling/statistics.h"

namespace quillon::cli {

namespace {

int runStats(Invocation& inv) {
  std::string error;
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (!inv.scriptArgs(1)) return inv.fail("stats wants one SCRIPT (see stats --help)");
  if (!inv.loadScript(inv.args[0])) return kExitUsage;
  auto text = subtitleStatistics(inv.st);
  if (!text) {
    inv.err << "quillon-cli: no subtitles to count in " << inv.args[0] << '\n';
    return kExitStopped;
  }
  std::string out = toUtf8(*text);
  for (char& c : out)
    if (c == '\r') c = '\n';
  inv.out << out << '\n';
  return inv.exitFor(true);
}

const CommandRegistrar reg({"stats", "stats [common options] [--tc-window DIGITS16 --video-duration S] SCRIPT",
                            "Print the subtitling statistics: subtitles by line count, characters, and the whole\n"
                            "minutes of the video's timecode window that hold a subtitle.",
                            runStats});

}  // namespace
}  // namespace quillon::cli
