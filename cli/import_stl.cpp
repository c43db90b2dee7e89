// quillon-cli import stl: an EBU STL file into a tagged script.
#include "cli/export_support.h"
#include "cli/import_registry.h"
#include "core/atomic_file.h"
#include "formats/stl_import.h"

namespace quillon::cli {

namespace {

int runImportStl(Invocation& inv) {
  FormatArgs a;
  if (int rc = parseFormatArgs(inv, a, false, false)) return rc;
  // The station stops silently on a file it cannot read; here the reason is
  // told (missing, not a file, far too large).
  std::string bytes, error;
  if (!readWholeFile(a.input, bytes, &error)) return inv.fail(error);
  openEmptyDocument(inv);
  inv.ui.openPaths.push_back(a.input);
  if (!mnuSubImpEBU(inv.st)) return inv.exitFor(false);
  return saveActiveDocument(inv, a.output);
}

const ImportRegistrar reg({"stl", "import stl [common options] IN.stl -o SCRIPT", runImportStl});

}  // namespace
}  // namespace quillon::cli
