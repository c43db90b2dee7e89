// quillon-cli export dvdm, cpc and sub: the list exports with a settings
// form, filled as the station fills it and corrected by --field.
#include "cli/cmd_formats.h"
#include "cli/export_support.h"
#include "formats/cpc_export.h"
#include "formats/dvdm_export.h"
#include "formats/sub_export.h"

namespace quillon::cli {

namespace {

const ExportRegistrar dvdm({"dvdm",
                            "export dvdm [common options] [--encoding utf-8] [--field NAME=VALUE]... SCRIPT -o OUT.txt\n"
                            "    fields of FormDVDMaestro: TextFontName TextFontSize ComboHorzAlign ComboVertAlign\n"
                            "    ComboBold ComboUnderLined ComboItalic TextXOffset TextYOffset TextTextContrast\n"
                            "    TextOutline1Contrast TextOutline2Contrast TextBackgroudContrast ComboForceDisplay\n"
                            "    TextFadeIn TextFadeOut ComboTapeOffset TextCommentArea",
                            formExport<mnuSubDvdm, commandProximoDVDM>});
const ExportRegistrar cpc({"cpc",
                           "export cpc [common options] [--field NAME=VALUE]... SCRIPT -o OUT.txt\n"
                           "    fields of FormCPC: ComboVersion TextMOVIE TextORIGIN TextGENRE TextTRT TextLANGUAGE\n"
                           "    TextDATE TextSUBTHOUSE TextCONTACT ComboQC TextNotes Text_vpos0 ... Text_vpos9",
                           formExport<mnuSubCpc, commandProximoCPC>});
const ExportRegistrar sub({"sub",
                           "export sub [common options] [--field NAME=VALUE]... SCRIPT -o OUT.sub\n"
                           "    fields of FormSUB: TextCODE TextCAST TextGENERATOR TextFONTS TextREAD TextTIMING\n"
                           "    TextTIMEDBACKUPNAME TextREADADVANCED TextMARKERS Text_vpos0 ... Text_vpos9",
                           formExport<mnuSubSub, commandProximoSUB>});

}  // namespace
}  // namespace quillon::cli
