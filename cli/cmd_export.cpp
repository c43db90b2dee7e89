// quillon-cli export FORMAT: writes the script's entries in one of the
// registered output formats.
#include "cli/export_registry.h"

namespace quillon::cli {

namespace {
std::vector<ExportFormat>& registry() {
  static std::vector<ExportFormat> r;
  return r;
}
}  // namespace

ExportRegistrar::ExportRegistrar(const ExportFormat& format) { registry().push_back(format); }
const std::vector<ExportFormat>& exportFormats() { return registry(); }

namespace {

int runExport(Invocation& inv) { return dispatchSubCommand(inv, "export", exportFormats()); }

const CommandRegistrar reg({"export", "export FORMAT [common options] [FORMAT options] SCRIPT -o OUT",
                            "Write the script's entries in another format (export FORMAT --help for each).",
                            runExport, true});

}  // namespace
}  // namespace quillon::cli
