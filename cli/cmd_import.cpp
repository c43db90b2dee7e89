// quillon-cli import FORMAT: reads a file in one of the registered input
// formats into a script.
#include "cli/import_registry.h"

namespace quillon::cli {

namespace {
std::vector<ImportFormat>& registry() {
  static std::vector<ImportFormat> r;
  return r;
}
}  // namespace

ImportRegistrar::ImportRegistrar(const ImportFormat& format) { registry().push_back(format); }
const std::vector<ImportFormat>& importFormats() { return registry(); }

namespace {

int runImport(Invocation& inv) { return dispatchSubCommand(inv, "import", importFormats()); }

const CommandRegistrar reg({"import", "import FORMAT [common options] [FORMAT options] FILE -o SCRIPT",
                            "Read a file in another format into a script (import FORMAT --help for each).",
                            runImport, true});

}  // namespace
}  // namespace quillon::cli
