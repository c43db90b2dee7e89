// quillon-cli export stl: the EBU STL export with its form filled as the
// station fills it, then corrected by --field.
#include "cli/export_registry.h"
#include "cli/export_support.h"
#include "formats/stl_export.h"

namespace quillon::cli {

namespace {

int runExportStl(Invocation& inv) {
  FormatArgs a;
  if (int rc = parseFormatArgs(inv, a, true, false)) return rc;
  FormaSTL form;
  if (int rc = checkFields(inv, form, a)) return rc;
  if (!inv.loadScript(a.input)) return kExitUsage;
  answerSaveDialog(inv, a);
  if (!mnuSubEbu(inv.st, form)) return inv.exitFor(false);
  applyFields(form, a);
  return exportExit(inv, commandProximoSTL(inv.st, form));
}

const ExportRegistrar reg({"stl",
                           "export stl [common options] [--field NAME=VALUE]... SCRIPT -o OUT.stl\n"
                           "    fields of FormaSTL: TextOPT TextOET TextTPT TextTET TextTN TextTCD TextSLR TextCD\n"
                           "    TextRD TextRN TextTNB TextTNS TextTNG TextMNC TextMNR TextTCP TextTCF TextTND TextDSN\n"
                           "    TextPUB TextEN TextECD TextUDA LabTitle LabEpisode LabStory TextPage0 (\\n breaks)\n"
                           "    ComboCPN ComboDFC ComboDSC ComboCCT ComboLC ComboCO ComboTCS",
                           runExportStl});

}  // namespace
}  // namespace quillon::cli
