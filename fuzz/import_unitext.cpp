// Arbitrary open document read as the Unicode text layout.
#include "formats/line_imports.h"
#include "fuzz_station.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quillon;
  fuzz::FuzzStation f(size);
  f.open(fuzz::bytesOf(data, size));
  mnuSubImpunitxt(f.st);
  return 0;
}
