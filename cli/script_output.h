// Writing the script a command has changed to the file named by -o.
#pragma once

#include "cli/command.h"

namespace quillon::cli {

// Saves the active document to `path` in the format its extension names;
// false after the message. With --writer, Writer stores a copy there, and an
// empty path leaves the edits in Writer's document alone.
bool saveScriptTo(Invocation& inv, const std::string& path);

}  // namespace quillon::cli
