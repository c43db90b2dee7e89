// Any bytes as an EBU STL file image: header, block count and text coding.
#include "formats/stl_import.h"
#include "fuzz_station.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quillon;
  ebuStlToScript(fuzz::bytesOf(data, size), size % 2 ? 25 : 30);
  return 0;
}
