// Shared set-up of the subtitling tests: a station with the rule checks
// installed and a small writer of timed blocks.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "core/text.h"
#include "subtitling/rule_checks.h"
#include "support/station_fixture.h"

namespace quillon::testing {

struct SubtitlingStation : TestStation {
  explicit SubtitlingStation(int fps = 30) : TestStation(fps) {
    installSubtitleChecks(st);
    st.s.readingSpeedCheck = false;
    st.s.minInterleave = 0;
    st.s.minOnAir1 = 1;
    st.s.maxOnAir = 6;
    st.s.maxCharsRow = 32;
  }
};

// One timed block: the tag, the text lines, the empty paragraph.
inline u16 block(const char* in, const char* out, const char* lines) {
  return u"SUB[0 N " + fromLatin1(in) + u">" + fromLatin1(out) + u"]\r" + fromLatin1(lines) + u"\r\r";
}

// What a command left, for a golden transcript: the boxes it showed, the
// selection and the script.
inline u16 leftBy(const char* command, TestStation& t) {
  u16 out = u"## " + fromLatin1(command) + u"\r";
  for (const u16& box : t.ui.boxTexts()) out += u"[box] " + box + u"\r";
  const TextRange r = t.docs.selectionRange();
  return out + u"[selection " + numberText(r.start) + u"-" + numberText(r.end) + u"]\r" + t.content() + u"\r";
}

// The golden files show each paragraph mark as a new line.
inline std::string lines(u16 text) {
  if (text.find(u'\n') != u16::npos) ADD_FAILURE() << "a line feed would read as a paragraph mark";
  for (auto& c : text)
    if (c == CR) c = u'\n';
  return toUtf8(text);
}
// A golden file by its path under tests/.
inline std::string golden(const std::string& path) { return readFile(QUILLON_SOURCE_DIR "/tests/" + path); }

}  // namespace quillon::testing
