// quillon-cli list: the subtitle list of the script on standard output.
#include <ostream>

#include "cli/command.h"
#include "subtitling/statistics.h"

namespace quillon::cli {

namespace {

int runList(Invocation& inv) {
  if (int rc = inv.loadOneScript("list")) return rc;
  inv.out << reportText(subtitleList(inv.st));
  return inv.exitFor(true);
}

const CommandRegistrar reg({"list", "list [common options] SCRIPT",
                            "Print the subtitle list: number, cue-in, cue-out, duration and text, tab-separated,\n"
                            "with the line break inside a subtitle shown as '|'.",
                            runList});

}  // namespace
}  // namespace quillon::cli
