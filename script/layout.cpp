#include "script/layout.h"

namespace quillon {

long countLayoutLines(u16v text, long width) {
  if (width < 1) width = 1;
  long lines = 0;
  size_t i = 0, n = text.size();
  while (i < n) {
    size_t end = text.find(CR, i);
    if (end == u16v::npos) end = n;
    // Lay out one paragraph.
    long paraLines = 1, col = 0;
    size_t k = i;
    while (k < end) {
      while (k < end && (text[k] == u' ' || text[k] == TAB)) {
        ++col;  // blanks hang at the line end and never force a wrap
        ++k;
      }
      size_t w = k;
      while (w < end && text[w] != u' ' && text[w] != TAB) ++w;
      long wl = static_cast<long>(w - k);
      if (wl == 0) break;
      if (col > 0 && col + wl > width) {
        ++paraLines;
        col = 0;
      }
      while (wl > width) {  // a word wider than the line is broken
        wl -= width;
        ++paraLines;
      }
      col += wl;
      k = w;
    }
    lines += paraLines;
    i = end + 1;
  }
  return lines;
}

long countStatisticWords(u16v text) {
  long words = 0;
  bool in = false;
  for (char16_t c : text) {
    bool sep = c == u' ' || c == TAB || c == CR || c == u'\n' || c == 0x0B || c == 0xA0;
    if (!sep && !in) ++words;
    in = !sep;
  }
  return words;
}

}  // namespace quillon
