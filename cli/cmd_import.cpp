// quillon-cli import FORMAT: reads a file in one of the registered input
// formats into a script.
#include <ostream>

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

std::string formatNames() {
  std::string names;
  for (const auto& f : importFormats()) names += (names.empty() ? "" : ", ") + std::string(f.name);
  return names.empty() ? "none" : names;
}

int runImport(Invocation& inv) {
  if (inv.args.empty()) {
    if (!inv.help) return inv.fail("import wants a FORMAT: " + formatNames());
    inv.out << "usage:\n";
    for (const auto& f : importFormats()) inv.out << "  quillon-cli " << f.usage << "\n";
    return kExitOk;
  }
  for (const auto& f : importFormats())
    if (inv.args[0] == f.name) {
      if (inv.help) {
        inv.out << "usage: quillon-cli " << f.usage << "\n";
        return kExitOk;
      }
      inv.args.erase(inv.args.begin());
      return f.run(inv);
    }
  return inv.fail("unknown import format '" + inv.args[0] + "': " + formatNames());
}

const CommandRegistrar reg({"import", "import FORMAT [common options] [FORMAT options] FILE -o SCRIPT",
                            "Read a file in another format into a script (import FORMAT --help for each).",
                            runImport, true});

}  // namespace
}  // namespace quillon::cli
