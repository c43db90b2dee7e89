// Text helpers shared by every logic folder.
//
// Document and scan-table text is UTF-16 so that lengths and positions count
// as the word processor counts them. The string helpers keep the 1-based
// positions of the scripting language the station's rules are written in, so
// that the rules read the same in code.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

using u16 = std::u16string;
using u16v = std::u16string_view;

inline constexpr char16_t CR = u'\r';
inline constexpr char16_t TAB = u'\t';

// UTF-8 at the edges only.
std::string toUtf8(u16v s);
u16 fromUtf8(std::string_view s);
// Plain ASCII/Latin-1 literal to UTF-16, byte for code unit.
u16 fromLatin1(std::string_view s);

// 1-based substring helpers. Out-of-range requests give what there is.
u16 left(u16v s, long n);
u16 right(u16v s, long n);
u16 mid(u16v s, long start1, long len = -1);
// 1-based position of `what` in `s` at or after `start1`; 0 when absent.
long instr(long start1, u16v s, u16v what);
inline long instr(u16v s, u16v what) { return instr(1, s, what); }

// The number held by the leading numeric text of `s` (blanks skipped,
// optional sign, digits, one decimal point); 0 when there is none.
double leadingNumber(u16v s);
double leadingNumber(std::string_view s);

// Whole-number conversion of a short field; false when `s` is not an integer
// (after trimming blanks) or is empty.
bool toInteger(u16v s, long& out);

// Numeric format with a picture of '0' and '#' digits and an optional '.'
// ("00", "0.00", "##", "##.###", "0"). Rounds halves away from zero and
// always uses the period as decimal mark. A '#' that would be a leading zero
// prints nothing.
u16 formatNumber(double value, std::string_view picture);
std::string formatNumber8(double value, std::string_view picture);

// Number as plain text the way the station prints a stand-alone value: an
// integer without decimals, otherwise the shortest exact decimal text.
u16 numberText(double value);

// A paragraph's text without its closing CR.
u16 withoutParagraphMark(const u16& paragraph);

u16 trim(u16v s);
u16 replaceAll(u16v s, u16v from, u16v to);
bool startsWith(u16v s, u16v prefix);

}  // namespace quillon
