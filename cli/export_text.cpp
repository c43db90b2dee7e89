// quillon-cli export sami, ssa, sbv, qt and unitext: the exports without a
// settings form. qt and unitext build a new document, which OUT receives.
#include "cli/cmd_formats.h"
#include "cli/export_support.h"
#include "formats/text_exports.h"

namespace quillon::cli {

namespace {

int runFileExport(Invocation& inv, WriteResult (*handler)(Station&, TextEncoding)) {
  FormatArgs a;
  if (int rc = parseFormatArgs(inv, a, false, true)) return rc;
  if (!inv.loadScript(a.input)) return kExitUsage;
  answerSaveDialog(inv, a);
  const WriteResult r = handler(inv.st, a.encoding);
  if (!r.written && !r.failed()) return inv.exitFor(false);
  return exportExit(inv, r);
}

int runSami(Invocation& inv) { return runFileExport(inv, mnuSubSami); }
int runSsa(Invocation& inv) { return runFileExport(inv, mnuSubSsa); }
int runSbv(Invocation& inv) { return runFileExport(inv, mnuSubSbv); }
int runQt(Invocation& inv) { return runDocumentCommand(inv, mnuSubQt); }
int runUnitext(Invocation& inv) { return runDocumentCommand(inv, mnuSubUnitext); }

const ExportRegistrar sami({"sami", "export sami [common options] [--encoding utf-8] SCRIPT -o OUT.smi", runSami});
const ExportRegistrar ssa({"ssa", "export ssa [common options] [--encoding utf-8] SCRIPT -o OUT.ssa", runSsa});
const ExportRegistrar sbv({"sbv", "export sbv [common options] [--encoding utf-8] SCRIPT -o OUT.sbv", runSbv});
const ExportRegistrar qt({"qt", "export qt [common options] SCRIPT -o OUT.txt  (the new QuickTime text document)", runQt});
const ExportRegistrar unitext({"unitext", "export unitext [common options] SCRIPT -o OUT.txt  (the new Unicode text document)",
                               runUnitext});

}  // namespace
}  // namespace quillon::cli
