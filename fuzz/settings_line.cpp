// Any first line of defaults.dat into the session, the line rebuilt from
// what the session took and read once more.
#include "core/session.h"
#include "core/settings.h"
#include "fuzz_station.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quillon;
  fuzz::FuzzStation f(size);
  applySettingsLine(f.st.s, std::string(fuzz::bytesOf(data, size)));
  applySettingsLine(f.st.s, buildSettingsLine(f.st.s));
  return 0;
}
