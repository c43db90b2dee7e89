// Every file the station writes goes through here: the whole content into a
// temporary file beside the target, flushed, then renamed over it, so that a
// full disk or a crash leaves the previous file as it was.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

class UserInterface;

// What became of the file a command set out to write. It travels back from
// the writer to the command and on to its caller: the station has shown its
// box, the command line prints `message()` and ends with status 2.
struct WriteResult {
  bool written = false;
  std::string path;
  // Why the write failed (the system's words); empty when the file was
  // written or the command stopped before writing (a cancel, a message).
  std::string reason;

  bool failed() const { return !reason.empty(); }
  // "cannot write PATH: reason"
  std::string message() const { return "cannot write " + path + ": " + reason; }
  explicit operator bool() const { return written; }
  // For callers that answer with a flag: `written`, with `message()` in
  // `error` on failure.
  bool asFlag(std::string* error) const {
    if (failed() && error) *error = message();
    return written;
  }
};

// On failure the target is untouched.
WriteResult writeFile(const std::string& path, std::string_view bytes);

// The operator's box for a failed write: the file and the reason.
void tellWriteFailure(UserInterface& ui, const WriteResult& result);
// writeFile, then the box when it failed: how every export writes its file.
WriteResult writeFileTelling(UserInterface& ui, const std::string& path, std::string_view bytes);

// Largest file read whole by default: far beyond any script or subtitle list,
// small enough that a stray video or disk image is refused at once.
inline constexpr size_t kMaxReadBytes = size_t{64} << 20;

// Whole file into `out`; false with a reason when it cannot be read or is
// larger than `maxBytes`.
bool readWholeFile(const std::string& path, std::string& out, std::string* error = nullptr,
                   size_t maxBytes = kMaxReadBytes);

}  // namespace quillon
