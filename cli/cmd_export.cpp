// quillon-cli export FORMAT: writes the script's entries in one of the
// registered output formats.
#include <ostream>

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

std::string formatNames() {
  std::string names;
  for (const auto& f : exportFormats()) names += (names.empty() ? "" : ", ") + std::string(f.name);
  return names.empty() ? "none" : names;
}

int runExport(Invocation& inv) {
  if (inv.args.empty()) {
    if (!inv.help) return inv.fail("export wants a FORMAT: " + formatNames());
    inv.out << "usage:\n";
    for (const auto& f : exportFormats()) inv.out << "  quillon-cli " << f.usage << "\n";
    return kExitOk;
  }
  for (const auto& f : exportFormats())
    if (inv.args[0] == f.name) {
      if (inv.help) {
        inv.out << "usage: quillon-cli " << f.usage << "\n";
        return kExitOk;
      }
      inv.args.erase(inv.args.begin());
      return f.run(inv);
    }
  return inv.fail("unknown export format '" + inv.args[0] + "': " + formatNames());
}

const CommandRegistrar reg({"export", "export FORMAT [common options] [FORMAT options] SCRIPT -o OUT",
                            "Write the script's entries in another format (export FORMAT --help for each).",
                            runExport, true});

}  // namespace
}  // namespace quillon::cli
