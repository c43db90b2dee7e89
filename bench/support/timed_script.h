// The plain timed script several benchmarks read: two-line subtitles of 3
// seconds from `from` seconds on, `gap` seconds apart.
#pragma once

#include "script/tag_grammar.h"

namespace quillon::bench {

inline u16 timedScript(int count, int fps = 25, double gap = 1, double from = 10) {
  u16 out;
  out.reserve(static_cast<size_t>(count) * 90);
  double in = from;
  for (int i = 0; i < count; ++i) {
    out += subtitleTag(i % 10, u' ', u'N', in, in + 3, fps);
    out += u"Line one of subtitle " + numberText(i + 1) + u"\rand its second line\r\r";
    in += 3 + gap;
  }
  return out;
}

}  // namespace quillon::bench
