#include "captions/caption_layout.h"

#include "core/timecode.h"

namespace quillon {

int hexDigitValue(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  return 0;
}

CaptionBlock captionBlock(const Station& st, int index) {
  const ScanTable& t = st.s.scan;
  CaptionBlock b;
  for (int r = 0; r < 4; ++r) {
    const u16& row = t.captionRows[index][r];
    b.longest = maximo(static_cast<int16_t>(b.longest), static_cast<int16_t>(row.size()));
    if (!row.empty()) b.rows = r + 1;
  }
  b.position = hexDigitValue(t.posDigit[index]);
  b.align = t.alignChar[index];
  b.in = t.cueIn[index];
  b.out = t.cueOut[index];
  return b;
}

}  // namespace quillon
