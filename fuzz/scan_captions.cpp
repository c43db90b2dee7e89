// Arbitrary script text through the caption scanner with the caption checks.
#include "captions/caption_checks.h"
#include "fuzz_station.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  return quillon::fuzz::scanInput(data, size, quillon::installCaptionChecks, quillon::scanCaptions, 2);
}
