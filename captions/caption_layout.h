// What both caption writers read of one scanned caption.
#pragma once

#include "core/station.h"

namespace quillon {

struct CaptionBlock {
  int longest = 0;    // characters of the longest row
  int rows = 0;       // number of the last row that holds text, 0 to 4
  int position = 0;   // the first attribute read as a hexadecimal digit
  char16_t align = u' ';
  double in = 0, out = 0;
};

CaptionBlock captionBlock(const Station& st, int index);

// The attribute character as a hexadecimal digit; anything else is 0.
int hexDigitValue(char16_t c);

}  // namespace quillon
