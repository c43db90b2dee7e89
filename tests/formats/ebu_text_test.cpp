#include <gtest/gtest.h>

#include "formats/ebu_text.h"

namespace quillon {
namespace {

std::string code(u16v text) {
  std::string out;
  for (char16_t c : text) out += ANSItoEBU(c);
  return out;
}

TEST(EbuTextCoder, AccentedLettersAreDiacriticThenBase) {
  EXPECT_EQ(code(u"Espa\u00f1a"), "\x45\x73\x70\x61\xC4\x6E\x61");
  EXPECT_EQ(code(u"\u00e0\u00c9\u00ee\u00d5\u00fc\u00c5\u00e7"), "\xC1" "a\xC2" "E\xC3" "i\xC4" "O\xC8" "u\xCA" "A\xCB" "c");
}

TEST(EbuTextCoder, DollarApostropheAndQuotes) {
  EXPECT_EQ(code(u"100$"), "100\xA4");
  EXPECT_EQ(code(u"'"), "'");
  EXPECT_EQ(code(u"\u2019\u2018\u201c\u201d\u00ab\u00bb"), "\xB9\xA9\xAA\xBA\xAB\xBB");
  // The same quotation marks arriving as Windows-1252 code values.
  EXPECT_EQ(code(u"\u0093\u0094"), "\xAA\xBA");
}

TEST(EbuTextCoder, EllipsisIsThreeFullStopsAndOrdinalIsTheRing) {
  EXPECT_EQ(code(u"\u2026"), "...");
  EXPECT_EQ(code(u"\u00ba"), "\xCA");
  EXPECT_EQ(code(u"\u266a\u00df\u00bf\u00a1\u00c6\u0153"), "\xD5\xFB\xBF\xA1\xE1\xFA");
}

TEST(EbuTextCoder, CharactersWithoutARowAreDropped) {
  EXPECT_EQ(ANSItoEBU(u16v()), "");
  EXPECT_EQ(code(u"\u0416"), "");                         // Cyrillic
  EXPECT_EQ(code(u"\u20ac\u00b0\u00f8\u00aa\u00a0\t\n"), "");  // euro, degree, o-stroke, feminine ordinal, nbsp, tab, LF
  EXPECT_EQ(code(u"\r"), "\x8A");
}

TEST(EbuTextDecoder, ReversesTheCoderAndMarksTwoLines) {
  bool two = false;
  EXPECT_EQ(decodeEbuText("\x0B\x0B" "A\xC2" "e\xA4" "\x0A\x8A\x0B\x0B" "\xA9x\xB9\x0A\x8F\x8F", two),
            u"A\u00e9$\r\u2018x\u2019");
  EXPECT_TRUE(two);
  two = false;
  EXPECT_EQ(decodeEbuText("<\x0B\x0B" "abc>\x0A\x8F", two), u"<abc>");
  EXPECT_FALSE(two);
}

TEST(EbuTextDecoder, RingPairComesBackAsOrdinalAndLetter) {
  bool two = false;
  EXPECT_EQ(decodeEbuText("\xCA" "A", two), u"\u00baA");
  EXPECT_EQ(decodeEbuText("\xB7", two), u"o");
}

TEST(EbuTextDecoder, UnknownPairsAndControlCodesAreDropped) {
  bool two = false;
  EXPECT_EQ(decodeEbuText("x\xC2Zy", two), u"xy");             // acute Z has no row: both bytes go
  EXPECT_EQ(decodeEbuText("\x80" "a\x81\x0A\x0B\x1F", two), u"a");  // Tech 3264 italics and row codes
  EXPECT_EQ(decodeEbuText("ab\x8F" "cd", two), u"ab");
  EXPECT_EQ(decodeEbuText(std::string(112, 'z'), two), u16(112, u'z'));  // no end mark: the field's end
}

}  // namespace
}  // namespace quillon
