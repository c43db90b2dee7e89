// quillon-cli import subl, dos850, srt, sub and unitext: the line-oriented
// imports into a new tagged script, which SCRIPT receives.
#include "cli/cmd_formats.h"
#include "cli/export_support.h"
#include "formats/line_imports.h"

namespace quillon::cli {

namespace {

int runFileImport(Invocation& inv, bool (*handler)(Station&)) {
  FormatArgs a;
  if (int rc = beginFileImport(inv, a)) return rc;
  int before = inv.ui.boxesShown;
  if (!handler(inv.st)) return inv.exitFor(false);
  // The .SUB reader's format errors leave the new document empty.
  if (inv.ui.boxesShown > before) return kExitStopped;
  return saveActiveDocument(inv, a.output);
}

int runSubl(Invocation& inv) { return runFileImport(inv, mnuSubImpSUBL); }
int runDos850(Invocation& inv) { return runFileImport(inv, mnuSubImp850); }
int runSrt(Invocation& inv) { return runFileImport(inv, mnuSubImpSRT); }
int runSub(Invocation& inv) { return runFileImport(inv, mnuSubImpSUB); }

int runUnitext(Invocation& inv) { return runDocumentCommand(inv, mnuSubImpunitxt, "no numbered entry \"0001\" in "); }

const ImportRegistrar subl({"subl", "import subl [common options] IN.sub -o SCRIPT  ({start}{end}text|text frames)", runSubl});
const ImportRegistrar dos850({"dos850", "import dos850 [common options] IN.txt -o SCRIPT", runDos850});
const ImportRegistrar srt({"srt", "import srt [common options] IN.srt -o SCRIPT", runSrt});
const ImportRegistrar sub({"sub", "import sub [common options] IN.sub -o SCRIPT  (the .SUB list)", runSub});
const ImportRegistrar unitext({"unitext", "import unitext [common options] IN.txt -o SCRIPT  (the Unicode text layout)",
                               runUnitext});

}  // namespace
}  // namespace quillon::cli
