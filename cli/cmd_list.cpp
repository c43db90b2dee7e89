// quillon-cli list: the subtitle list of the script on standard output.
#include <ostream>

#include "cli/command.h"
#include "subtitling/statistics.h"

namespace quillon::cli {

namespace {

int runList(Invocation& inv) {
  std::string error;
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (!inv.scriptArgs(1)) return inv.fail("list wants one SCRIPT (see list --help)");
  if (!inv.loadScript(inv.args[0])) return kExitUsage;
  std::string text = toUtf8(subtitleList(inv.st));
  for (char& c : text)
    if (c == '\r') c = '\n';
  inv.out << text;
  return inv.exitFor(true);
}

const CommandRegistrar reg({"list", "list [common options] SCRIPT",
                            "Print the subtitle list: number, cue-in, cue-out, duration and text, tab-separated,\n"
                            "with the line break inside a subtitle shown as '|'.",
                            runList});

}  // namespace
}  // namespace quillon::cli
