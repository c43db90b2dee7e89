#include "script/codepage.h"

#include <array>
#include <unordered_map>

namespace quillon {

namespace {

// Bytes 0x80 to 0xFF of the DOS Western European code page.
constexpr std::array<char16_t, 128> kCp850 = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7,
    0x00EA, 0x00EB, 0x00E8, 0x00EF, 0x00EE, 0x00EC, 0x00C4, 0x00C5,
    0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9,
    0x00FF, 0x00D6, 0x00DC, 0x00F8, 0x00A3, 0x00D8, 0x00D7, 0x0192,
    0x00E1, 0x00ED, 0x00F3, 0x00FA, 0x00F1, 0x00D1, 0x00AA, 0x00BA,
    0x00BF, 0x00AE, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x00C1, 0x00C2, 0x00C0,
    0x00A9, 0x2563, 0x2551, 0x2557, 0x255D, 0x00A2, 0x00A5, 0x2510,
    0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x00E3, 0x00C3,
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x00A4,
    0x00F0, 0x00D0, 0x00CA, 0x00CB, 0x00C8, 0x0131, 0x00CD, 0x00CE,
    0x00CF, 0x2518, 0x250C, 0x2588, 0x2584, 0x00A6, 0x00CC, 0x2580,
    0x00D3, 0x00DF, 0x00D4, 0x00D2, 0x00F5, 0x00D5, 0x00B5, 0x00FE,
    0x00DE, 0x00DA, 0x00DB, 0x00D9, 0x00FD, 0x00DD, 0x00AF, 0x00B4,
    0x00AD, 0x00B1, 0x2017, 0x00BE, 0x00B6, 0x00A7, 0x00F7, 0x00B8,
    0x00B0, 0x00A8, 0x00B7, 0x00B9, 0x00B3, 0x00B2, 0x25A0, 0x00A0,
};

// Bytes 0x80 to 0xFF of the Windows Western European code page: 0xA0 on
// are the code points of the same number, and the five unassigned bytes
// below map to U+FFFD.
constexpr std::array<char16_t, 128> kCp1252 = [] {
  constexpr char16_t below0xA0[32] = {
      0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
      0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178,
  };
  std::array<char16_t, 128> t{};
  for (int i = 0; i < 128; ++i) t[i] = i < 32 ? below0xA0[i] : static_cast<char16_t>(0x80 + i);
  return t;
}();

const std::unordered_map<char16_t, unsigned char>& reverse(const std::array<char16_t, 128>& t) {
  static std::unordered_map<char16_t, unsigned char> m850, m1252;
  auto& m = &t == &kCp850 ? m850 : m1252;
  if (m.empty())
    for (int i = 0; i < 128; ++i)
      if (t[i] != 0xFFFD) m.emplace(t[i], static_cast<unsigned char>(128 + i));
  return m;
}

u16 decode(std::string_view bytes, const std::array<char16_t, 128>& t) {
  u16 out(bytes.size(), u'\0');
  for (size_t i = 0; i < bytes.size(); ++i) {
    auto b = static_cast<unsigned char>(bytes[i]);
    out[i] = b < 128 ? b : t[b - 128];
  }
  return out;
}

std::string encode(u16v text, const std::array<char16_t, 128>& t, char fallback) {
  const auto& m = reverse(t);
  std::string out(text.size(), fallback);
  for (size_t i = 0; i < text.size(); ++i) {
    char16_t c = text[i];
    if (c < 128) {
      out[i] = static_cast<char>(c);
    } else if (auto it = m.find(c); it != m.end()) {
      out[i] = static_cast<char>(it->second);
    }
  }
  return out;
}

}  // namespace

u16 cp850ToUnicode(std::string_view bytes) { return decode(bytes, kCp850); }
std::string unicodeToCp850(u16v text, char fallback) { return encode(text, kCp850, fallback); }
u16 cp1252ToUnicode(std::string_view bytes) { return decode(bytes, kCp1252); }
std::string unicodeToCp1252(u16v text, char fallback) { return encode(text, kCp1252, fallback); }

std::string ANSItoASCII(std::string_view ansi) { return unicodeToCp850(cp1252ToUnicode(ansi)); }
std::string ASCIItoANSI(std::string_view ascii) { return unicodeToCp1252(cp850ToUnicode(ascii)); }

}  // namespace quillon
