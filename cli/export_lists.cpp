// quillon-cli export dvdm, cpc and sub: the list exports with a settings
// form, filled as the station fills it and corrected by --field.
#include "cli/export_registry.h"
#include "cli/export_support.h"
#include "formats/cpc_export.h"
#include "formats/dvdm_export.h"
#include "formats/sub_export.h"

namespace quillon::cli {

namespace {

template <typename Form>
int runFormExport(Invocation& inv, bool withEncoding, bool (*handler)(Station&, Form&),
                  WriteResult (*press)(Station&, Form&)) {
  FormatArgs a;
  if (int rc = parseFormatArgs(inv, a, true, withEncoding)) return rc;
  Form form;
  if (int rc = checkFields(inv, form, a)) return rc;
  if (!inv.loadScript(a.input)) return kExitUsage;
  answerSaveDialog(inv, a);
  if (!handler(inv.st, form)) return inv.exitFor(false);
  applyFields(form, a);
  if constexpr (requires { form.encoding; }) form.encoding = a.encoding;
  return exportExit(inv, press(inv.st, form));
}

int runDvdm(Invocation& inv) {
  return runFormExport<FormDVDMaestro>(inv, true, mnuSubDvdm, commandProximoDVDM);
}
int runCpc(Invocation& inv) { return runFormExport<FormCPC>(inv, false, mnuSubCpc, commandProximoCPC); }
int runSub(Invocation& inv) { return runFormExport<FormSUB>(inv, false, mnuSubSub, commandProximoSUB); }

const ExportRegistrar dvdm({"dvdm",
                            "export dvdm [common options] [--encoding utf-8] [--field NAME=VALUE]... SCRIPT -o OUT.txt\n"
                            "    fields of FormDVDMaestro: TextFontName TextFontSize ComboHorzAlign ComboVertAlign\n"
                            "    ComboBold ComboUnderLined ComboItalic TextXOffset TextYOffset TextTextContrast\n"
                            "    TextOutline1Contrast TextOutline2Contrast TextBackgroudContrast ComboForceDisplay\n"
                            "    TextFadeIn TextFadeOut ComboTapeOffset TextCommentArea",
                            runDvdm});
const ExportRegistrar cpc({"cpc",
                           "export cpc [common options] [--field NAME=VALUE]... SCRIPT -o OUT.txt\n"
                           "    fields of FormCPC: ComboVersion TextMOVIE TextORIGIN TextGENRE TextTRT TextLANGUAGE\n"
                           "    TextDATE TextSUBTHOUSE TextCONTACT ComboQC TextNotes Text_vpos0 ... Text_vpos9",
                           runCpc});
const ExportRegistrar sub({"sub",
                           "export sub [common options] [--field NAME=VALUE]... SCRIPT -o OUT.sub\n"
                           "    fields of FormSUB: TextCODE TextCAST TextGENERATOR TextFONTS TextREAD TextTIMING\n"
                           "    TextTIMEDBACKUPNAME TextREADADVANCED TextMARKERS Text_vpos0 ... Text_vpos9",
                           runSub});

}  // namespace
}  // namespace quillon::cli
