#include "formats/ebu_text.h"

#include <unordered_map>

#include "formats/ebu_stl_layout.h"

namespace quillon {

namespace {

// The Windows-1252 punctuation that a C1 control code may stand for when the
// text came in byte for byte.
char16_t fromC1(char16_t c) {
  switch (c) {
    case 0x85: return 0x2026;
    case 0x8C: return 0x0152;
    case 0x91: return 0x2018;
    case 0x92: return 0x2019;
    case 0x93: return 0x201C;
    case 0x94: return 0x201D;
    case 0x9C: return 0x0153;
    default: return c;
  }
}

struct Accent {
  unsigned char diacritic;
  const char16_t* letters;  // accented letters
  const char* bases;        // the matching base letters
};

// Accented letters and their diacritic byte, in ISO 6937 order.
const Accent kAccents[] = {
    {0xC1, u"\u00C0\u00E0\u00C8\u00E8\u00CC\u00EC\u00D2\u00F2\u00D9\u00F9", "AaEeIiOoUu"},  // grave
    {0xC2, u"\u00C1\u00E1\u00C9\u00E9\u00CD\u00ED\u00D3\u00F3\u00DA\u00FA", "AaEeIiOoUu"},  // acute
    {0xC3, u"\u00C2\u00E2\u00CA\u00EA\u00CE\u00EE\u00D4\u00F4\u00DB\u00FB", "AaEeIiOoUu"},  // circumflex
    {0xC4, u"\u00C3\u00E3\u00D5\u00F5\u00D1\u00F1", "AaOoNn"},                              // tilde
    {0xC8, u"\u00C4\u00E4\u00CB\u00EB\u00CF\u00EF\u00D6\u00F6\u00DC\u00FC", "AaEeIiOoUu"},  // diaeresis
    {0xCA, u"\u00C5\u00E5", "Aa"},                                                          // ring
    {0xCB, u"\u00C7\u00E7", "Cc"},                                                          // cedilla
};

// Single characters and their one byte, both ways except where noted.
struct Single {
  char16_t ch;
  unsigned char byte;
};
const Single kSingles[] = {
    {0x2018, 0xA9}, {0x2019, 0xB9}, {0x201C, 0xAA}, {0x201D, 0xBA}, {0x00AB, 0xAB}, {0x00BB, 0xBB},
    {0x00DF, 0xFB}, {0x00BF, 0xBF}, {0x00A1, 0xA1}, {0x00C6, 0xE1}, {0x00E6, 0xF1}, {0x0152, 0xEA},
    {0x0153, 0xFA}, {0x00BA, 0xCA}, {0x00A9, 0xD3}, {0x00AE, 0xD2}, {0x00A3, 0xA3}, {0x00A5, 0xA5},
    {0x00A2, 0xA2}, {0x00B9, 0xD1}, {0x00B2, 0xB2}, {0x00B3, 0xB3}, {0x00F7, 0xB8}, {0x00D7, 0xB4},
    {0x00B5, 0xB5}, {0x266A, 0xD5},
};

const std::unordered_map<char16_t, std::string>& encodeTable() {
  static const std::unordered_map<char16_t, std::string> t = [] {
    std::unordered_map<char16_t, std::string> m;
    m[CR] = std::string(1, stl::kLineBreak);
    m[0x2026] = "...";
    for (const auto& s : kSingles) m[s.ch] = std::string(1, static_cast<char>(s.byte));
    for (const auto& a : kAccents)
      for (size_t i = 0; a.letters[i]; ++i) m[a.letters[i]] = std::string{static_cast<char>(a.diacritic), a.bases[i]};
    return m;
  }();
  return t;
}

const std::unordered_map<unsigned char, char16_t>& singleDecodeTable() {
  static const std::unordered_map<unsigned char, char16_t> t = [] {
    std::unordered_map<unsigned char, char16_t> m;
    for (const auto& s : kSingles) m[s.byte] = s.ch;
    m[0xA4] = u'$';
    m[0xB7] = u'o';
    return m;
  }();
  return t;
}

// Diacritic byte * 256 + base byte to the accented letter. The ring pairs are
// in the table, but the single row of 0xCA is looked at first.
const std::unordered_map<int, char16_t>& pairDecodeTable() {
  static const std::unordered_map<int, char16_t> t = [] {
    std::unordered_map<int, char16_t> m;
    for (const auto& a : kAccents)
      for (size_t i = 0; a.letters[i]; ++i) m[a.diacritic * 256 + static_cast<unsigned char>(a.bases[i])] = a.letters[i];
    return m;
  }();
  return t;
}

bool isDiacritic(unsigned char b) {
  return b == 0xC1 || b == 0xC2 || b == 0xC3 || b == 0xC4 || b == 0xC8 || b == 0xCB;
}

}  // namespace

std::string ANSItoEBU(char16_t c) {
  if (c == u'$') return "\xA4";
  if (c >= 32 && c <= 126) return std::string(1, static_cast<char>(c));
  const auto& t = encodeTable();
  auto it = t.find(fromC1(c));
  return it == t.end() ? std::string() : it->second;
}

std::string ANSItoEBU(u16v oneCharacter) { return oneCharacter.empty() ? std::string() : ANSItoEBU(oneCharacter[0]); }

u16 decodeEbuText(std::string_view field, bool& twoLines) {
  u16 out;
  const auto& singles = singleDecodeTable();
  const auto& pairs = pairDecodeTable();
  for (size_t i = 0; i < field.size(); ++i) {
    if (field[i] == stl::kUnused) break;
    auto b = static_cast<unsigned char>(field[i]);
    if (b >= 32 && b <= 126) {
      out += static_cast<char16_t>(b);
    } else if (field[i] == stl::kLineBreak) {
      out += CR;
      twoLines = true;
    } else if (auto s = singles.find(b); s != singles.end()) {
      out += s->second;
    } else if (isDiacritic(b)) {
      if (i + 1 >= field.size()) break;
      auto p = pairs.find(b * 256 + static_cast<unsigned char>(field[++i]));
      if (p != pairs.end()) out += p->second;
    }
  }
  return out;
}

}  // namespace quillon
