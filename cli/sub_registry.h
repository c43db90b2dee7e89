// Commands whose first word picks a format (`export FORMAT`, `import FORMAT`):
// each format registers itself from its own file into the command's list, and
// the command dispatches on that word.
#pragma once

#include <vector>

#include "cli/command.h"

namespace quillon::cli {

struct SubCommand {
  const char* name;   // the word after the command, e.g. "scc"
  const char* usage;  // the usage line after "quillon-cli ", e.g. "export scc [...] SCRIPT -o OUT.scc"
  int (*run)(Invocation&);  // args hold the words after FORMAT
};

// Runs the format named by inv.args[0] with the remaining words; without a
// format, --help lists every usage line and anything else is a usage error.
int dispatchSubCommand(Invocation& inv, const char* command, const std::vector<SubCommand>& formats);

}  // namespace quillon::cli
