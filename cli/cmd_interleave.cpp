// quillon-cli interleave: cue-ins that follow the previous cue-out too
// closely are moved to leave the minimum interleave and one frame.
#include <ostream>

#include "cli/command.h"
#include "cli/script_output.h"
#include "subtitling/editing_commands.h"

namespace quillon::cli {

namespace {

int runInterleave(Invocation& inv) {
  std::string out, error;
  const bool hasOut = inv.takeOption("-o", out, error);
  if (!error.empty()) return inv.fail(error);
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if ((!hasOut || out.empty()) && !inv.inWriter()) return inv.fail("interleave wants -o OUT");
  if (!inv.scriptArgs(1)) return inv.fail("interleave wants one SCRIPT (see interleave --help)");
  if (!inv.loadScript(inv.args[0])) return kExitUsage;
  mnu_sub_changeinterleave(inv.st);
  if (!saveScriptTo(inv, out)) return kExitUsage;
  return inv.exitFor(true);
}

const CommandRegistrar reg({"interleave", "interleave [common options] SCRIPT -o OUT",
                            "Repair the interleave over the whole script: a cue-in that is not clear of the\n"
                            "previous cue-out by minInterleave frames moves to minInterleave + 1 frames behind it.",
                            runInterleave});

}  // namespace
}  // namespace quillon::cli
