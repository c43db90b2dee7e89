// Every file the station writes goes through here: the whole content into a
// temporary file beside the target, flushed, then renamed over it, so that a
// full disk or a crash leaves the previous file as it was.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

// False with a one-line reason in `error` when the file could not be written;
// the target is then untouched.
bool writeFileAtomically(const std::string& path, std::string_view bytes, std::string* error = nullptr);

// Whole file into `out`; false with a reason when it cannot be read.
bool readWholeFile(const std::string& path, std::string& out, std::string* error = nullptr);

}  // namespace quillon
