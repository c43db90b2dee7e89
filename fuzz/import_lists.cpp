// Any bytes as a {SUB} list, a DOS 850 list, an SRT file and a .SUB list,
// each read into a new document as the import menus do.
#include "formats/line_imports.h"
#include "fuzz_station.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quillon;
  const std::string_view bytes = fuzz::bytesOf(data, size);
  using Reader = int (*)(Station&, std::string_view);
  for (Reader read : {readSubList, readDos850List, readSrt, readDotSubList}) {
    fuzz::FuzzStation f(size);
    f.docs.documentsAdd();
    read(f.st, bytes);
  }
  return 0;
}
