// --writer CONNECTION: the command works on a document open in LibreOffice
// Writer, reached over its UNO bridge, and its edits stay in that document.
#pragma once

#include <string>

#include "cli/command.h"

namespace quillon::cli {

// Connects and makes the document open in Writer whose file is `path` the
// command's script; with an empty path, Writer's document in front (or its
// first, headless). False after the message.
bool useWriterScript(Invocation& inv, const std::string& path);

// Writer stores a copy of the active document as `path`, in the format its
// extension names; false after the message.
bool storeWriterCopy(Invocation& inv, const std::string& path);

}  // namespace quillon::cli
