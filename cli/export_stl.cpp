// quillon-cli export stl: the EBU STL export with its form filled as the
// station fills it, then corrected by --field.
#include "cli/cmd_formats.h"
#include "cli/export_support.h"
#include "formats/stl_export.h"

namespace quillon::cli {

namespace {

const ExportRegistrar reg({"stl",
                           "export stl [common options] [--field NAME=VALUE]... SCRIPT -o OUT.stl\n"
                           "    fields of FormaSTL: TextOPT TextOET TextTPT TextTET TextTN TextTCD TextSLR TextCD\n"
                           "    TextRD TextRN TextTNB TextTNS TextTNG TextMNC TextMNR TextTCP TextTCF TextTND TextDSN\n"
                           "    TextPUB TextEN TextECD TextUDA LabTitle LabEpisode LabStory TextPage0 (\\n breaks)\n"
                           "    ComboCPN ComboDFC ComboDSC ComboCCT ComboLC ComboCO ComboTCS",
                           formExport<mnuSubEbu, commandProximoSTL>});

}  // namespace
}  // namespace quillon::cli
