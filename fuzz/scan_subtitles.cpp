// Arbitrary script text through the subtitle and dubbing tag scanner with
// the rule checks in the scan, every mode, Yes or No to their questions.
#include "fuzz_station.h"
#include "subtitling/rule_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  return quillon::fuzz::scanInput(data, size, quillon::installSubtitleChecks, quillon::scanSubtitles, 3);
}
