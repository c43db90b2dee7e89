// `quillon-cli import FORMAT`: each input format registers itself from its
// own file; the import command dispatches on its first word.
#pragma once

#include <vector>

#include "cli/command.h"

namespace quillon::cli {

struct ImportFormat {
  const char* name;   // the word after "import"
  const char* usage;  // the usage line after "quillon-cli "
  int (*run)(Invocation&);  // args hold the words after FORMAT
};

struct ImportRegistrar {
  explicit ImportRegistrar(const ImportFormat& format);
};

const std::vector<ImportFormat>& importFormats();

}  // namespace quillon::cli
