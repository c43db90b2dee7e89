// A timing document and a text document, split at the first NUL byte: the
// load of the timing tables, then the merge into the text.
#include "formats/merge.h"
#include "fuzz_station.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quillon;
  const std::string_view bytes = fuzz::bytesOf(data, size);
  const size_t cut = bytes.find('\0');
  fuzz::FuzzStation f(size);
  prepareMergeMenus(f.st);
  f.open(bytes.substr(0, cut));
  cargarTiming(f.st);
  f.open(cut == std::string_view::npos ? std::string_view() : bytes.substr(cut + 1));
  mergeTiming(f.st);
  return 0;
}
