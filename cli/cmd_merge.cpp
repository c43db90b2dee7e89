// quillon-cli merge: loads the timing document, then writes its SUB[ tags
// into the numbered paragraphs of the text document.
#include "cli/command.h"
#include "cli/export_support.h"
#include "formats/merge.h"
#include "script/document_service.h"

namespace quillon::cli {

namespace {

int runMerge(Invocation& inv) {
  std::string out, error;
  if (inv.takeOption("-o", out, error) && out.empty()) return inv.fail("-o wants a file name");
  if (!error.empty()) return inv.fail(error);
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (out.empty() && !inv.inWriter()) return inv.fail("-o OUT is missing");
  if (!inv.scriptArgs(2)) return inv.fail("merge wants TIMING and TEXT (see merge --help)");
  Station& st = inv.st;
  prepareMergeMenus(st);
  if (!inv.loadScript(inv.args[0])) return kExitUsage;
  if (!cargarTiming(st)) return kExitStopped;
  if (!inv.loadScript(inv.args[1])) return kExitUsage;
  mergeTiming(st);
  return saveActiveDocument(inv, out);
}

const CommandRegistrar reg({"merge", "merge [common options] TIMING TEXT -o OUT",
                            "Load the timing document's numbered entries and write their SUB[ tags in front of the\n"
                            "numbered paragraphs of TEXT (0012, or 0012.A for a card); the report goes to stderr.",
                            runMerge});

}  // namespace
}  // namespace quillon::cli
