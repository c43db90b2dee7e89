#include "captions/cea608.h"

#include <bit>

#include "core/ui.h"
#include "script/codepage.h"

namespace quillon {

namespace {

const char kHex[] = "0123456789abcdef";

std::string hexByte(unsigned v) { return {kHex[(v >> 4) & 15], kHex[v & 15]}; }

// One or two caption codes for a character of the table; 0 in `first` when
// the character is not in it.
struct Codes {
  char16_t first = 0, second = 0;
};

Codes tableCodes(char16_t c) {
  switch (c) {
    // Basic set positions that differ from ASCII.
    case u'\u00E1': return {42};   // á
    case u'\u00E9': return {92};   // é
    case u'\u00ED': return {94};   // í
    case u'\u00F3': return {95};   // ó
    case u'\u00FA': return {96};   // ú
    case u'\u00E7': return {123};  // ç
    case u'\u00F7': return {124};  // ÷
    case u'\u00D1': return {125};  // Ñ
    case u'\u00F1': return {126};  // ñ
    // Special characters.
    case u'\u00AE': return {17, 48};  // ®
    case u'\u00B0': return {17, 49};  // °
    case u'\u00BD': return {17, 50};  // ½
    case u'\u00BF': return {17, 51};  // ¿
    case u'\u00A2': return {17, 53};  // ¢
    case u'\u00A3': return {17, 54};  // £
    case u'\u00E0': return {17, 56};  // à
    case u'\u00E8': return {17, 58};  // è
    case u'\u00E2': return {17, 59};  // â
    case u'\u00EA': return {17, 60};  // ê
    case u'\u00EE': return {17, 61};  // î
    case u'\u00F4': return {17, 62};  // ô
    case u'\u00FB': return {17, 63};  // û
    // Extended characters, Spanish, French and miscellaneous.
    case u'\u00C1': return {18, 32};  // Á
    case u'\u00C9': return {18, 33};  // É
    case u'\u00D3': return {18, 34};  // Ó
    case u'\u00DA': return {18, 35};  // Ú
    case u'\u00DC': return {18, 36};  // Ü
    case u'\u00FC': return {18, 37};  // ü
    case u'\u00A1': return {18, 39};  // ¡
    case u'*': return {18, 40};
    case u'\'': return {39};
    case u'_': return {18, 42};
    case u'\u00A9': return {18, 43};  // ©
    case u'\u00B7': return {18, 45};  // ·
    case u'\u00C0': return {18, 48};  // À
    case u'\u00C2': return {18, 49};  // Â
    case u'\u00C7': return {18, 50};  // Ç
    case u'\u00C8': return {18, 51};  // È
    case u'\u00CA': return {18, 52};  // Ê
    case u'\u00CB': return {18, 53};  // Ë
    case u'\u00EB': return {18, 54};  // ë
    case u'\u00CE': return {18, 55};  // Î
    case u'\u00CF': return {18, 56};  // Ï
    case u'\u00EF': return {18, 57};  // ï
    case u'\u00D4': return {18, 58};  // Ô
    case u'\u00D9': return {18, 59};  // Ù
    case u'\u00F9': return {18, 60};  // ù
    case u'\u00DB': return {18, 61};  // Û
    // Extended characters, Portuguese, German and Danish.
    case u'\u00C3': return {19, 32};  // Ã
    case u'\u00E3': return {19, 33};  // ã
    case u'\u00CD': return {19, 34};  // Í
    case u'\u00CC': return {19, 35};  // Ì
    case u'\u00EC': return {19, 36};  // ì
    case u'\u00D2': return {19, 37};  // Ò
    case u'\u00F2': return {19, 38};  // ò
    case u'\u00D5': return {19, 39};  // Õ
    case u'\u00F5': return {19, 40};  // õ
    case u'{': return {19, 41};
    case u'}': return {19, 42};
    case u'\\': return {19, 43};
    case u'^': return {19, 44};
    case u'|': return {19, 46};
    case u'~': return {19, 47};
    case u'\u00C4': return {19, 48};  // Ä
    case u'\u00E4': return {19, 49};  // ä
    case u'\u00D6': return {19, 50};  // Ö
    case u'\u00F6': return {19, 51};  // ö
    case u'\u00DF': return {19, 52};  // ß
    case u'\u00A5': return {19, 53};  // ¥
    case u'\u00A4': return {19, 54};  // ¤
    case u'\u00A6': return {19, 55};  // ¦
    case u'\u00C5': return {19, 56};  // Å
    case u'\u00E5': return {19, 57};  // å
    case u'\u00D8': return {19, 58};  // Ø
    case u'\u00F8': return {19, 59};  // ø
    default: return {};
  }
}

}  // namespace

std::string ODDPARITY(char16_t c) {
  unsigned v = c;
  if (v >= 128) return "20";
  if (std::popcount(v) % 2 == 0) v |= 0x80;
  return hexByte(v);
}

std::string ODD(u16v bytes) {
  std::string out;
  out.reserve(bytes.size() * 2);
  for (char16_t c : bytes) out += ODDPARITY(c);
  return out;
}

std::string GROUPIN2BYTESANDPAD(u16v bytes) {
  std::string out;
  out.reserve(bytes.size() * 5 / 2 + 5);
  for (size_t i = 0; i < bytes.size(); i += 2) {
    out += ODDPARITY(bytes[i]);
    out += i + 1 < bytes.size() ? ODDPARITY(bytes[i + 1]) : "80";
    out += ' ';
  }
  return out;
}

std::string GROUPBYTESANDPAD(u16v bytes) {
  std::string out = GROUPIN2BYTESANDPAD(bytes);
  if (!out.empty()) out.pop_back();
  return out;
}

u16 captionCharacters(u16v row) {
  u16 out;
  out.reserve(row.size() + 4);
  for (char16_t c : row) {
    Codes k = tableCodes(c);
    if (k.first == 0) {
      out += c;
    } else {
      out += k.first;
      if (k.second) out += k.second;
    }
  }
  return out;
}

int pacRow(int position, int rows, int index) {
  int t = 15 - position;
  return t + rows - 1 > 15 ? t - rows + index : t + index - 1;
}

u16 pacIndent(char16_t alignment, int longest, char16_t base) {
  if (alignment == u'L') return u16(1, base);
  if (longest < 1 || longest > 32) return {};
  int step = (longest - 1) / 4;  // 0 for 1-4 ... 7 for 29-32
  int add;
  if (alignment == u'R') {
    add = 14 - 2 * step;
  } else {
    static const int centred[8] = {8, 6, 6, 4, 4, 2, 2, 0};
    add = centred[step];
  }
  return u16(1, static_cast<char16_t>(base + add));
}

u16 FIRSTBYTE(UserInterface& ui, int index, int rows, int position, char16_t alignment, int longest) {
  if (index < 1 || index > 4 || rows < 1 || rows > 4) return u16(2, char16_t{221});
  struct Pac {
    char16_t first, base;
  };
  static const Pac table[16] = {{0, 0},      {17, u'P'}, {17, u'p'}, {18, u'P'}, {18, u'p'}, {21, u'P'},
                                {21, u'p'},  {22, u'P'}, {22, u'p'}, {23, u'P'}, {23, u'p'}, {16, u'P'},
                                {19, u'P'},  {19, u'p'}, {20, u'P'}, {20, u'p'}};
  int r = pacRow(position, rows, index);
  if (r < 1 || r > 15) {
    msgBox(ui, u"RANGE ERROR IN FIRSTBYTE");
    return {};
  }
  return u16(1, table[r].first) + pacIndent(alignment, longest, table[r].base);
}

std::string word16LE(uint32_t v) {
  return {static_cast<char>(v & 0xFF), static_cast<char>((v >> 8) & 0xFF)};
}

std::string word32LE(uint32_t v) {
  return {static_cast<char>(v & 0xFF), static_cast<char>((v >> 8) & 0xFF), static_cast<char>((v >> 16) & 0xFF),
          static_cast<char>((v >> 24) & 0xFF)};
}

std::string captionBytes(u16v bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (char16_t c : bytes) {
    if (c < 128)
      out += static_cast<char>(c);
    else
      out += unicodeToCp1252(u16v(&c, 1));
  }
  return out;
}

}  // namespace quillon
