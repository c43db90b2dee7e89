// `quillon-cli import FORMAT`: each input format registers itself from its
// own file; the import command dispatches on its first word.
#pragma once

#include <vector>

#include "cli/sub_registry.h"

namespace quillon::cli {

using ImportFormat = SubCommand;

struct ImportRegistrar {
  explicit ImportRegistrar(const ImportFormat& format);
};

const std::vector<ImportFormat>& importFormats();

}  // namespace quillon::cli
