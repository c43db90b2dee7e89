// `quillon-cli export FORMAT`: each output format registers itself from its
// own file; the export command dispatches on its first word.
#pragma once

#include <vector>

#include "cli/command.h"

namespace quillon::cli {

struct ExportFormat {
  const char* name;   // the word after "export", e.g. "scc"
  const char* usage;  // the usage line after "quillon-cli ", e.g. "export scc [...] SCRIPT -o OUT.scc"
  int (*run)(Invocation&);  // args hold the words after FORMAT
};

struct ExportRegistrar {
  explicit ExportRegistrar(const ExportFormat& format);
};

const std::vector<ExportFormat>& exportFormats();

}  // namespace quillon::cli
