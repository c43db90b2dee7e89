// Arbitrary script text through the subtitle and dubbing tag scanner with
// the rule checks in the scan, every mode, Yes or No to their questions.
#include "fuzz_station.h"
#include "script/document_service.h"
#include "script/tag_grammar.h"
#include "subtitling/rule_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quillon;
  fuzz::FuzzStation f(size);
  installSubtitleChecks(f.st);
  f.open(fuzz::bytesOf(data, size));
  const auto mode = static_cast<ScanMode>((size / 6) % 3);
  if (mode == ScanMode::Selection) f.docs.selectAll();
  if (mode == ScanMode::FromCurrentPosition) f.st.s.g_dblPosActual = 30.0;
  scanSubtitles(f.st, mode);
  return 0;
}
