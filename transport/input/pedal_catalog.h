// Which of the machine's input devices are foot pedals, told from sysfs,
// which anyone may read, so that a pedal the user may not open is still
// listed (and the station can say which group would let them open it).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/pedal_input.h"

namespace quillon {

struct KnownPedal {
  uint16_t vendor, product;
  const char* model;
};
// Pedals listed by their USB identity whatever keys they show.
const std::vector<KnownPedal>& knownPedals();
bool isKnownPedal(uint16_t vendor, uint16_t product);

// The bits of a capability as sysfs writes it ("7 0 0 0 0"): words of the
// machine's long in hexadecimal, the highest word first.
std::vector<int> capabilityBits(std::string_view text);

// A foot switch as the kernel shows one it knows nothing of: one to four
// buttons, and no pointer or stick axes. Keyboards (letter keys), mice
// (relative axes) and system buttons (power, lid) fall outside it.
bool looksLikePedal(const std::vector<int>& eventTypes, const std::vector<int>& keys);

// A device name as a menu shows it: spaces folded, and the maker's name
// said once ("VEC  VEC USB Footpedal" gives "VEC USB Footpedal").
std::string tidyDeviceName(std::string_view raw);

// The pedals under the sysfs tree `sysRoot` ("/sys"), event devices first,
// each by number, with their nodes under `devRoot` ("/dev"). A raw HID node
// is listed only for a known pedal whose switches the kernel does not
// already give as keys.
std::vector<PedalDeviceInfo> findPedals(const std::string& sysRoot, const std::string& devRoot);

}  // namespace quillon
