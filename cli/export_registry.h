// `quillon-cli export FORMAT`: each output format registers itself from its
// own file; the export command dispatches on its first word.
#pragma once

#include <vector>

#include "cli/sub_registry.h"

namespace quillon::cli {

using ExportFormat = SubCommand;

struct ExportRegistrar {
  explicit ExportRegistrar(const ExportFormat& format);
};

const std::vector<ExportFormat>& exportFormats();

}  // namespace quillon::cli
