// quillon-cli import stl: an EBU STL file into a tagged script.
#include <filesystem>

#include "cli/export_support.h"
#include "cli/import_registry.h"
#include "formats/stl_import.h"

namespace quillon::cli {

namespace {

int runImportStl(Invocation& inv) {
  FormatArgs a;
  if (int rc = parseFormatArgs(inv, a, false, false)) return rc;
  std::error_code ec;
  if (!std::filesystem::is_regular_file(a.input, ec)) return inv.fail("cannot read " + a.input);
  openEmptyDocument(inv);
  inv.ui.openPaths.push_back(a.input);
  if (!mnuSubImpEBU(inv.st)) return inv.exitFor(false);
  return saveActiveDocument(inv, a.output);
}

const ImportRegistrar reg({"stl", "import stl [common options] IN.stl -o SCRIPT", runImportStl});

}  // namespace
}  // namespace quillon::cli
