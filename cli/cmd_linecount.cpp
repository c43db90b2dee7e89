// quillon-cli linecount: the line count of a dubbing script, written at the
// head of a copy of the script.
#include "cli/command.h"
#include "cli/script_output.h"
#include "dubbing/line_count.h"

namespace quillon::cli {

namespace {

int runLinecount(Invocation& inv) {
  std::string out, error;
  const bool actra = inv.takeFlag("--actra");
  inv.takeOption("-o", out, error);
  if (!error.empty()) return inv.fail(error);
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (!inv.scriptArgs(1) || (out.empty() && !inv.inWriter())) return inv.fail("linecount wants one SCRIPT and -o OUT");
  if (!inv.loadScript(inv.args[0])) return kExitUsage;
  if (actra) inv.st.s.actraGuidelines = true;
  if (!mnu_herr_lin(inv.st)) {
    if (inv.ui.boxesShown == 0) inv.err << "quillon-cli: " << inv.args[0] << " holds no timed entries\n";
    return kExitStopped;
  }
  return saveScriptTo(inv, out) ? inv.exitFor(true) : kExitUsage;
}

const CommandRegistrar reg({"linecount", "linecount [common options] [--actra] SCRIPT -o OUT",
                            "Count each character's lines (laid out 60 characters a line, or by the ACTRA\n"
                            "rule with --actra) and write the script to OUT with the report at its head.",
                            runLinecount});

}  // namespace
}  // namespace quillon::cli
