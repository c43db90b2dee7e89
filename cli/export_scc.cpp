// quillon-cli export scc: the script's captions as a Scenarist SCC file.
#include "captions/scc_export.h"
#include "cli/cmd_formats.h"

namespace quillon::cli {

namespace {

int runExportScc(Invocation& inv) {
  std::string out, error;
  inv.takeOption("-o", out, error);
  if (!error.empty()) return inv.fail(error);
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (!inv.scriptArgs(1) || out.empty()) return inv.fail("export scc wants one SCRIPT and -o OUT.scc");
  if (!inv.loadScript(inv.args[0])) return kExitUsage;
  inv.ui.savePaths.push_back(out);
  const WriteResult r = mnu_cc_scc(inv.st);
  if (r.failed()) return inv.fail(r.message());
  return inv.exitFor(r.written);
}

const ExportRegistrar reg({"scc", "export scc [common options] SCRIPT -o OUT.scc", runExportScc});

}  // namespace
}  // namespace quillon::cli
