#include "transport/input/pedal_catalog.h"

#include <linux/input.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace quillon {

namespace fs = std::filesystem;

namespace {

std::string readText(const fs::path& path) {
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  std::string s = text.str();
  while (!s.empty() && (s.back() == '\n' || s.back() == ' ')) s.pop_back();
  return s;
}

uint16_t hexNumber(std::string_view text) {
  unsigned long v = 0;
  for (char c : text) {
    const char lower = static_cast<char>(c | 0x20);
    int d = c >= '0' && c <= '9' ? c - '0' : lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
    if (d < 0) break;
    v = v * 16 + static_cast<unsigned long>(d);
  }
  return static_cast<uint16_t>(v);
}

// The nodes of a sysfs class folder named `prefix` and a number, by number.
std::vector<std::pair<int, std::string>> numbered(const fs::path& folder, std::string_view prefix) {
  std::vector<std::pair<int, std::string>> out;
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(folder, ec)) {
    const std::string name = entry.path().filename().string();
    if (name.size() <= prefix.size() || name.compare(0, prefix.size(), prefix) != 0) continue;
    const std::string digits = name.substr(prefix.size());
    if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) continue;
    out.emplace_back(std::stoi(digits), name);
  }
  std::sort(out.begin(), out.end());
  return out;
}

// "HID_ID=0003:000005F3:000000FF" and "HID_NAME=..." of a HID device's uevent.
bool hidIdentity(const std::string& uevent, PedalDeviceInfo& d) {
  std::istringstream lines(uevent);
  std::string line;
  bool found = false;
  while (std::getline(lines, line)) {
    if (line.rfind("HID_ID=", 0) == 0) {
      const auto first = line.find(':'), second = line.find(':', first + 1);
      if (first == std::string::npos || second == std::string::npos) continue;
      d.vendor = hexNumber(line.substr(first + 1, second - first - 1));
      d.product = hexNumber(line.substr(second + 1));
      found = true;
    } else if (line.rfind("HID_NAME=", 0) == 0) {
      d.name = tidyDeviceName(line.substr(9));
    }
  }
  return found;
}

}  // namespace

const std::vector<KnownPedal>& knownPedals() {
  static const std::vector<KnownPedal> pedals = {
      // The kernel maps its three switches to BTN_0, BTN_1 and BTN_2.
      {0x05f3, 0x00ff, "VEC Infinity IN-USB-1 and IN-USB-2 (P.I. Engineering)"},
      // Four switches, one bit each in the first byte of a three-byte report.
      {0x0911, 0x091a, "Philips ACC2330 foot control"},
  };
  return pedals;
}

bool isKnownPedal(uint16_t vendor, uint16_t product) {
  const auto& k = knownPedals();
  return std::any_of(k.begin(), k.end(),
                     [&](const KnownPedal& p) { return p.vendor == vendor && p.product == product; });
}

std::vector<int> capabilityBits(std::string_view text) {
  std::vector<std::string> words;
  std::istringstream in{std::string(text)};
  for (std::string w; in >> w;) words.push_back(w);
  constexpr int kWordBits = static_cast<int>(sizeof(long) * CHAR_BIT);
  std::vector<int> bits;
  for (size_t i = 0; i < words.size(); ++i) {
    const int base = static_cast<int>(words.size() - 1 - i) * kWordBits;
    const unsigned long long word = std::stoull(words[i], nullptr, 16);
    for (int b = 0; b < kWordBits; ++b)
      if (word >> b & 1ULL) bits.push_back(base + b);
  }
  std::sort(bits.begin(), bits.end());
  return bits;
}

bool looksLikePedal(const std::vector<int>& eventTypes, const std::vector<int>& keys) {
  auto has = [&](int type) { return std::find(eventTypes.begin(), eventTypes.end(), type) != eventTypes.end(); };
  if (!has(EV_KEY) || has(EV_REL) || has(EV_ABS)) return false;
  if (keys.empty() || keys.size() > 4) return false;
  // Buttons only: the misc, mouse, joystick and gamepad ranges.
  return std::all_of(keys.begin(), keys.end(), [](int k) { return k >= BTN_MISC && k < BTN_DIGI; });
}

std::string tidyDeviceName(std::string_view raw) {
  std::vector<std::string> words;
  std::istringstream in{std::string(raw)};
  for (std::string w; in >> w;) words.push_back(w);
  if (words.size() > 2 && words[0] == words[1]) words.erase(words.begin());
  std::string out;
  for (const auto& w : words) out += (out.empty() ? "" : " ") + w;
  return out;
}

std::vector<PedalDeviceInfo> findPedals(const std::string& sysRoot, const std::string& devRoot) {
  std::vector<PedalDeviceInfo> found;
  const fs::path inputClass = fs::path(sysRoot) / "class" / "input";
  for (const auto& [number, node] : numbered(inputClass, "event")) {
    const fs::path dev = inputClass / node / "device";
    PedalDeviceInfo d;
    d.path = devRoot + "/input/" + node;
    d.name = tidyDeviceName(readText(dev / "name"));
    if (d.name.empty()) d.name = node;
    d.vendor = hexNumber(readText(dev / "id" / "vendor"));
    d.product = hexNumber(readText(dev / "id" / "product"));
    std::vector<int> types, keys;
    try {
      types = capabilityBits(readText(dev / "capabilities" / "ev"));
      keys = capabilityBits(readText(dev / "capabilities" / "key"));
    } catch (const std::exception&) {
      continue;  // not the kernel's hexadecimal: not a device to trust
    }
    if (isKnownPedal(d.vendor, d.product) || looksLikePedal(types, keys)) found.push_back(d);
  }
  const fs::path hidrawClass = fs::path(sysRoot) / "class" / "hidraw";
  for (const auto& [number, node] : numbered(hidrawClass, "hidraw")) {
    const fs::path dev = hidrawClass / node / "device";
    PedalDeviceInfo d;
    d.path = devRoot + "/" + node;
    d.hidraw = true;
    if (!hidIdentity(readText(dev / "uevent"), d) || !isKnownPedal(d.vendor, d.product)) continue;
    if (d.name.empty()) d.name = node;
    std::error_code ec;
    if (fs::exists(dev / "input", ec)) continue;  // listed as its event device
    found.push_back(d);
  }
  return found;
}

}  // namespace quillon
