// Text coding of the EBU STL text field: the Latin set of ISO 6937, with an
// accented letter as the non-spacing diacritic followed by its base letter.
// One table serves every code table named in the GSI block.
#pragma once

#include <string>
#include <string_view>

#include "core/text.h"

namespace quillon {

// One character of script text to its bytes (none, one, two or three).
// Characters without a row are dropped.
std::string ANSItoEBU(char16_t c);
std::string ANSItoEBU(u16v oneCharacter);

// The text field of a TTI block back to script text: stops at the unused
// space code or at the end of the field; a line break becomes CR and sets
// `twoLines`. Bytes without a
// row are dropped, a diacritic with a base it has no row for takes the base
// with it.
u16 decodeEbuText(std::string_view field, bool& twoLines);

}  // namespace quillon
