#include <gtest/gtest.h>

#include "formats/ebu_text.h"

namespace quillon {
namespace {

std::string code(u16v text) {
  std::string out;
  for (char16_t c : text) out += ANSItoEBU(c);
  return out;
}

TEST(EbuTextCoder, EachCharacterToItsRowOrNothing) {
  const struct {
    const char16_t* text;
    std::string expected;
  } cases[] = {
      // Accented letters are the diacritic, then the base letter.
      {u"Espa\u00f1a", "\x45\x73\x70\x61\xC4\x6E\x61"},
      {u"\u00e0\u00c9\u00ee\u00d5\u00fc\u00c5\u00e7", "\xC1" "a\xC2" "E\xC3" "i\xC4" "O\xC8" "u\xCA" "A\xCB" "c"},
      {u"100$'", "100\xA4'"},
      {u"\u2019\u2018\u201c\u201d\u00ab\u00bb", "\xB9\xA9\xAA\xBA\xAB\xBB"},
      {u"\u0093\u0094", "\xAA\xBA"},  // the same quotation marks as Windows-1252 code values
      {u"\u2026", "..."},
      {u"\u00ba", "\xCA"},  // the ordinal is the ring
      {u"\u266a\u00df\u00bf\u00a1\u00c6\u0153", "\xD5\xFB\xBF\xA1\xE1\xFA"},
      // Cyrillic, euro, degree, o-stroke, feminine ordinal, nbsp, tab and LF have no row.
      {u"\u0416\u20ac\u00b0\u00f8\u00aa\u00a0\t\n", ""},
      {u"\r", "\x8A"},
  };
  for (const auto& c : cases) EXPECT_EQ(code(c.text), c.expected) << toUtf8(c.text);
  EXPECT_EQ(ANSItoEBU(u16v()), "");
}

TEST(EbuTextDecoder, ReversesTheCoderAndDropsWhatItCannotRead) {
  const struct {
    std::string bytes;
    u16 expected;
    bool twoLines;
  } cases[] = {
      {"\x0B\x0B" "A\xC2" "e\xA4" "\x0A\x8A\x0B\x0B" "\xA9x\xB9\x0A\x8F\x8F", u"A\u00e9$\r\u2018x\u2019", true},
      {"<\x0B\x0B" "abc>\x0A\x8F", u"<abc>", false},
      {"\xCA" "A", u"\u00baA", false},  // the ring pair comes back as ordinal and letter
      {"\xB7", u"o", false},
      {"x\xC2Zy", u"xy", false},             // acute Z has no row: both bytes go
      {"\x80" "a\x81\x0A\x0B\x1F", u"a", false},  // italics and row codes of the teletext set
      {"ab\x8F" "cd", u"ab", false},
      {std::string(112, 'z'), u16(112, u'z'), false},  // no end mark: the field's end
  };
  for (const auto& c : cases) {
    bool two = false;
    EXPECT_EQ(decodeEbuText(c.bytes, two), c.expected) << toUtf8(c.expected);
    EXPECT_EQ(two, c.twoLines) << toUtf8(c.expected);
  }
}

}  // namespace
}  // namespace quillon
