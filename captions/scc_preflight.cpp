#include "captions/scc_preflight.h"

#include <algorithm>
#include <cmath>

#include "core/timecode.h"

namespace quillon {

namespace {

// A box longer than this would not fit the screen; the rest are counted.
constexpr size_t kListedInTheBox = 20;

long wordCount(const std::string& words) {
  long n = 0;
  bool inWord = false;
  for (char c : words) {
    const bool blank = c == ' ';
    if (!blank && !inWord) ++n;
    inWord = !blank;
  }
  return n;
}

// The frame a timecode text stands for; an unreadable one is frame 0.
long frameOf(u16v tc, int fps) {
  const double seconds = tcToSeconds(tc, fps);
  return seconds < 0 ? 0 : std::lround(seconds * fps);
}

}  // namespace

std::vector<LateCaption> lateSccCaptions(const Station& st, const std::vector<SccLine>& lines) {
  const int fps = st.fps();
  std::vector<LateCaption> late;
  long sentUntil = 0;  // the first frame free after the line before
  for (const SccLine& line : lines) {
    const long start = std::max(frameOf(line.timecode, fps), sentUntil);
    sentUntil = start + wordCount(line.words);
    if (line.caption == 0) continue;
    const u16 cueIn = SEGaTC(st.s.scan.cueIn[line.caption], fps);
    const long lateBy = sentUntil - 1 - frameOf(cueIn, fps);
    if (lateBy > 0) late.push_back({line.caption, cueIn, lateBy});
  }
  return late;
}

std::vector<LateCaption> lateSccCaptions(Station& st) { return lateSccCaptions(st, sccLines(st, false)); }

void warnLateSccCaptions(Station& st) {
  const std::vector<LateCaption> late = lateSccCaptions(st);
  if (late.empty()) return;
  u16 text = u"Warning: An SCC encoder sends one word of caption data a frame, so these captions will come on "
             u"late:";
  for (size_t k = 0; k < late.size() && k < kListedInTheBox; ++k)
    text += u"\r[" + late[k].cueIn + u"] " + numberText(static_cast<double>(late[k].frames)) +
            (late[k].frames == 1 ? u" frame late" : u" frames late");
  if (late.size() > kListedInTheBox)
    text += u"\rand " + numberText(static_cast<double>(late.size() - kListedInTheBox)) + u" more.";
  msgBox(st.ui, text, Buttons::OK, Icon::Exclamation);
}

}  // namespace quillon
