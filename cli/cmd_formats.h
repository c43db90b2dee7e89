// `quillon-cli export FORMAT` and `import FORMAT`: each format registers
// itself from its own file into its command's list, and the command
// dispatches on the word after it.
#pragma once

#include "cli/command.h"

namespace quillon::cli {

struct SubCommand {
  const char* name;   // the word after the command, e.g. "scc"
  const char* usage;  // the usage line after "quillon-cli ", e.g. "export scc [...] SCRIPT -o OUT.scc"
  int (*run)(Invocation&);  // args hold the words after FORMAT
};

struct ExportRegistrar {
  explicit ExportRegistrar(const SubCommand& format);
};
struct ImportRegistrar {
  explicit ImportRegistrar(const SubCommand& format);
};

}  // namespace quillon::cli
