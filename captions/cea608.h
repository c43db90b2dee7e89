// Line 21 caption bytes (EIA/CEA-608) as the SCC and ULT writers build them.
//
// A caption byte travels as one character of a byte string (a char16_t
// holding the byte's value) or as two lower-case hexadecimal digits. A row
// of text becomes byte characters through captionCharacters; a row's place on
// screen becomes a preamble address code (PAC) through FIRSTBYTE.
#pragma once

#include <cstdint>
#include <string>

#include "core/text.h"

namespace quillon {

class UserInterface;

// Two lower-case hex digits of the character with odd parity in bit 7.
// Characters from 128 on give "20": whatever captionCharacters did not map
// shows as a blank.
std::string ODDPARITY(char16_t c);
// ODDPARITY of each character, joined.
std::string ODD(u16v bytes);
// "hhhh " for each pair; a lone last character is padded with 80.
std::string GROUPIN2BYTESANDPAD(u16v bytes);
// The same words with a blank only between them.
std::string GROUPBYTESANDPAD(u16v bytes);

// The row in caption character codes: each character that the station's
// table knows becomes its one or two codes, any other stays as it is. Two-
// byte codes are not aligned to byte pairs.
u16 captionCharacters(u16v row);

// Screen row (1 to 15 from the top) of row `index` of a caption of `rows`
// rows placed at `position` (0 is the lowest).
int pacRow(int position, int rows, int index);
// Second PAC byte: the indent of the whole block from its longest row.
// Empty for a length of 0 or above 32 unless left-aligned.
u16 pacIndent(char16_t alignment, int longest, char16_t base);
// The PAC of row `index` as two byte characters. Rows or counts outside 1 to
// 4 give two characters 221; a screen row outside 1 to 15 shows "RANGE
// ERROR IN FIRSTBYTE" and gives nothing.
u16 FIRSTBYTE(UserInterface& ui, int index, int rows, int position, char16_t alignment, int longest);

// Little-endian binary numbers.
std::string word16LE(uint32_t v);
std::string word32LE(uint32_t v);

// A byte string as file bytes: byte characters as they are, other
// characters through the Windows code page ('?' when it lacks them).
std::string captionBytes(u16v bytes);

}  // namespace quillon
