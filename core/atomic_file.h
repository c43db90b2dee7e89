// Every file the station writes goes through here: the whole content into a
// temporary file beside the target, flushed, then renamed over it, so that a
// full disk or a crash leaves the previous file as it was.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

// False with a one-line reason in `error` when the file could not be written;
// the target is then untouched.
bool writeFileAtomically(const std::string& path, std::string_view bytes, std::string* error = nullptr);

// The reasons of the writes that failed since the last call, oldest first.
// The station's own boxes say nothing of a failed write; the command line
// reports these after each command.
std::vector<std::string> takeWriteFailures();

// Largest file read whole by default: far beyond any script or subtitle list,
// small enough that a stray video or disk image is refused at once.
inline constexpr size_t kMaxReadBytes = size_t{64} << 20;

// Whole file into `out`; false with a reason when it cannot be read or is
// larger than `maxBytes`.
bool readWholeFile(const std::string& path, std::string& out, std::string* error = nullptr,
                   size_t maxBytes = kMaxReadBytes);

}  // namespace quillon
