// quillon-cli dub2sub: a dubbing script turned into a subtitle script.
#include "cli/command.h"
#include "cli/script_output.h"
#include "dubbing/dub_to_sub.h"

namespace quillon::cli {

namespace {

int runDub2sub(Invocation& inv) {
  std::string out, error;
  inv.takeOption("-o", out, error);
  if (!error.empty()) return inv.fail(error);
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (!inv.scriptArgs(1) || (out.empty() && !inv.inWriter())) return inv.fail("dub2sub wants one SCRIPT and -o OUT");
  if (!inv.loadScript(inv.args[0])) return kExitUsage;
  mnu_DUB_SUB(inv.st);
  // A tag the conversion could not read leaves the script half converted:
  // OUT is not written then.
  if (inv.ui.boxesShown > 0) return kExitStopped;
  return saveScriptTo(inv, out) ? kExitOk : kExitUsage;
}

const CommandRegistrar reg({"dub2sub", "dub2sub [common options] SCRIPT -o OUT",
                            "Rewrite each long DUB[ tag as a SUB[ tag of the same times, without the\n"
                            "character name, and write the script to OUT.",
                            runDub2sub});

}  // namespace
}  // namespace quillon::cli
