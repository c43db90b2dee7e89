// Arbitrary script text through the caption scanner with the caption checks.
#include "captions/caption_checks.h"
#include "fuzz_station.h"
#include "script/document_service.h"
#include "script/tag_grammar.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quillon;
  fuzz::FuzzStation f(size);
  installCaptionChecks(f.st);
  f.open(fuzz::bytesOf(data, size));
  const auto mode = static_cast<ScanMode>((size / 6) % 2);
  if (mode == ScanMode::Selection) f.docs.selectAll();
  scanCaptions(f.st, mode);
  return 0;
}
