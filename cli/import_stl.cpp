// quillon-cli import stl: an EBU STL file into a tagged script.
#include "cli/cmd_formats.h"
#include "cli/export_support.h"
#include "formats/stl_import.h"

namespace quillon::cli {

namespace {

int runImportStl(Invocation& inv) {
  FormatArgs a;
  if (int rc = beginFileImport(inv, a)) return rc;
  if (!mnuSubImpEBU(inv.st)) return inv.exitFor(false);
  return saveActiveDocument(inv, a.output);
}

const ImportRegistrar reg({"stl", "import stl [common options] IN.stl -o SCRIPT", runImportStl});

}  // namespace
}  // namespace quillon::cli
