#include "cli/sub_registry.h"

#include <ostream>
#include <string>

namespace quillon::cli {

namespace {

std::string formatNames(const std::vector<SubCommand>& formats) {
  std::string names;
  for (const auto& f : formats) names += (names.empty() ? "" : ", ") + std::string(f.name);
  return names.empty() ? "none" : names;
}

}  // namespace

int dispatchSubCommand(Invocation& inv, const char* command, const std::vector<SubCommand>& formats) {
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

}  // namespace quillon::cli
