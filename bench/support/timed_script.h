// The plain timed script several benchmarks read: two-line subtitles of 3
// seconds every 4 seconds, at 25 frames per second.
#pragma once

#include "script/tag_grammar.h"

namespace quillon::bench {

inline u16 timedScript(int count) {
  u16 out;
  for (int i = 0; i < count; ++i) {
    double in = 10.0 + 4.0 * i;
    out += subtitleTag(i % 10, u' ', u'N', in, in + 3.0, 25);
    out += u"Line one of subtitle " + numberText(i + 1) + u"\rand its second line\r\r";
  }
  return out;
}

}  // namespace quillon::bench
