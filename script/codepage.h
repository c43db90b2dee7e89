// The DOS code page 850 and the Windows code page 1252, one byte for one
// character, for the list files of the trade that are written in them.
#pragma once

#include <string>
#include <string_view>

#include "core/text.h"

namespace quillon {

u16 cp850ToUnicode(std::string_view bytes);
// Characters the code page lacks become `fallback`; the length never changes.
std::string unicodeToCp850(u16v text, char fallback = '?');
u16 cp1252ToUnicode(std::string_view bytes);
std::string unicodeToCp1252(u16v text, char fallback = '?');

// Windows-1252 text to code page 850 and back, byte for byte.
std::string ANSItoASCII(std::string_view ansi);
std::string ASCIItoANSI(std::string_view ascii);

}  // namespace quillon
