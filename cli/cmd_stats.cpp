// quillon-cli stats: the subtitling statistics of the script.
#include <ostream>

#include "cli/command.h"
#include "subtitling/statistics.h"

namespace quillon::cli {

namespace {

int runStats(Invocation& inv) {
  if (int rc = inv.loadOneScript("stats")) return rc;
  auto text = subtitleStatistics(inv.st);
  if (!text) {
    inv.err << "quillon-cli: no subtitles to count in " << inv.args[0] << '\n';
    return kExitStopped;
  }
  inv.out << reportText(*text) << '\n';
  return inv.exitFor(true);
}

const CommandRegistrar reg({"stats", "stats [common options] [--tc-window DIGITS16 --video-duration S] SCRIPT",
                            "Print the subtitling statistics: subtitles by line count, characters, and the whole\n"
                            "minutes of the video's timecode window that hold a subtitle.",
                            runStats});

}  // namespace
}  // namespace quillon::cli
