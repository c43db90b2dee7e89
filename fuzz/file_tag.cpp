// Any bytes as the end of a video file: the 18-character tag read from the
// file and applied to the session.
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "fuzz_station.h"
#include "transport/file_tag.h"

namespace {
std::string tagFile() {
  const char* dir = std::getenv("TMPDIR");
  return std::string(dir && *dir ? dir : "/tmp") + "/quillon-fuzz-tag-" + std::to_string(::getpid()) + ".avi";
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quillon;
  static const std::string path = tagFile();
  const std::string_view bytes = fuzz::bytesOf(data, size);
  quillon::delimitedField(bytes);
  // A plain write: the atomic one syncs the disk on every input.
  if (!(std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes)) return 0;
  std::optional<u16> tag = readFileTag(path);
  if (!tag) __builtin_trap();
  if (tag->size() > 18) __builtin_trap();
  fuzz::FuzzStation f(size);
  applyFileTag(f.st.s, f.st.view, *tag);
  return 0;
}
