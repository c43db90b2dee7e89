// quillon-cli check: the subtitle rule checks over the whole script.
#include <ostream>

#include "cli/command.h"
#include "script/tag_grammar.h"

namespace quillon::cli {

namespace {

int runCheck(Invocation& inv) {
  std::string error;
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (!inv.scriptArgs(1)) return inv.fail("check wants one SCRIPT (see check --help)");
  if (!inv.loadScript(inv.args[0])) return kExitUsage;
  Station& st = inv.st;
  st.s.checksDisabled = false;
  const bool ok = scanSubtitles(st, 0);
  const int boxes = inv.ui.boxesShown;
  inv.out << "checked " << (ok ? st.s.scan.count() : 0) << " entries: "
          << (boxes == 0 ? std::string("no rule broken") : std::to_string(boxes) + (boxes == 1 ? " box" : " boxes"))
          << '\n';
  return boxes == 0 ? kExitOk : kExitStopped;
}

const CommandRegistrar reg({"check", "check [common options] SCRIPT",
                            "Scan the script with the subtitle rule checks on; each broken rule prints its box.\n"
                            "Exit 0 when no box fired, 1 when any did (--answer no stops at the first).",
                            runCheck});

}  // namespace
}  // namespace quillon::cli
