// Any bytes as a .docx and as an .odt file; what loads must save again.
#include "fuzz_station.h"
#include "script/files/office_formats.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quillon;
  const std::string_view bytes = fuzz::bytesOf(data, size);
  std::string problem, out;
  if (auto doc = docfiles::loadDocx(bytes, problem)) docfiles::buildDocx(*doc, out, problem);
  if (auto doc = docfiles::loadOdt(bytes, problem)) docfiles::buildOdt(*doc, out, problem);
  return 0;
}
