// quillon-cli export FORMAT writes the script's entries in one of the
// registered output formats; import FORMAT reads a file in one of the
// registered input formats into a script.
#include "cli/cmd_formats.h"

#include <ostream>
#include <string>
#include <vector>

namespace quillon::cli {

namespace {

std::vector<SubCommand>& exportFormats() {
  static std::vector<SubCommand> r;
  return r;
}

std::vector<SubCommand>& importFormats() {
  static std::vector<SubCommand> r;
  return r;
}

std::string formatNames(const std::vector<SubCommand>& formats) {
  std::string names;
  for (const auto& f : formats) names += (names.empty() ? "" : ", ") + std::string(f.name);
  return names.empty() ? "none" : names;
}

// Runs the format named by inv.args[0] with the remaining words; without a
// format, --help lists every usage line and anything else is a usage error.
int dispatch(Invocation& inv, const char* command, const std::vector<SubCommand>& formats) {
  if (inv.args.empty()) {
    if (!inv.help) return inv.fail(std::string(command) + " wants a FORMAT: " + formatNames(formats));
    inv.out << "usage:\n";
    for (const auto& f : formats) inv.out << "  quillon-cli " << f.usage << "\n";
    return kExitOk;
  }
  for (const auto& f : formats)
    if (inv.args[0] == f.name) {
      if (inv.help) {
        inv.out << "usage: quillon-cli " << f.usage << "\n";
        return kExitOk;
      }
      inv.args.erase(inv.args.begin());
      return f.run(inv);
    }
  return inv.fail("unknown " + std::string(command) + " format '" + inv.args[0] + "': " + formatNames(formats));
}

const CommandRegistrar exportCommand({"export", "export FORMAT [common options] [FORMAT options] SCRIPT -o OUT",
                                      "Write the script's entries in another format (export FORMAT --help for each).",
                                      [](Invocation& inv) { return dispatch(inv, "export", exportFormats()); }, true});
const CommandRegistrar importCommand({"import", "import FORMAT [common options] [FORMAT options] FILE -o SCRIPT",
                                      "Read a file in another format into a script (import FORMAT --help for each).",
                                      [](Invocation& inv) { return dispatch(inv, "import", importFormats()); }, true});

}  // namespace

ExportRegistrar::ExportRegistrar(const SubCommand& format) { exportFormats().push_back(format); }
ImportRegistrar::ImportRegistrar(const SubCommand& format) { importFormats().push_back(format); }

}  // namespace quillon::cli
