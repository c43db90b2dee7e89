#include "simulation/frame_table.h"

#include <cmath>

#include "core/timecode.h"
#include "script/codepage.h"
#include "script/timing_tag.h"

namespace quillon {

void cleanSubtitlesArray(Session& s) {
  const long frames = s.noframes > 0 ? static_cast<long>(std::ceil(s.noframes)) : 0;
  s.frameTable.assign(static_cast<size_t>(frames), {});
  for (long f = 0; f < frames; ++f) s.frameTable[static_cast<size_t>(f)] = {-1, f};
}

void fillSubtitlesArray(Session& s) {
  s.TCBase = TCaFRAMES(s.TCInitial, s.g_fps);
  const ScanTable& t = s.scan;
  const int count = t.count();
  // Records are numbered from 1 here, as the scan table is.
  int k = 1;
  auto frameOf = [&](const u16& tc) { return TCaFRAMES(tc, s.g_fps) - s.TCBase; };
  for (size_t f = 0; f < s.frameTable.size(); ++f) {
    long value = -1;
    if (k <= count) {
      const long a = frameOf(t.records[static_cast<size_t>(k)].cueInText);
      const long b = frameOf(t.records[static_cast<size_t>(k)].cueOutText);
      const long frame = static_cast<long>(f);
      // The cue-out frame shows the subtitle too; only an exact hit on it
      // moves on to the next record, so an overlap blocks all later ones.
      if (a <= frame && frame < b) {
        value = k;
      } else if (frame == b) {
        value = k;
        ++k;
      }
    }
    s.frameTable[f].subtitle = value;
  }
}

namespace {

long frameSubtitle(const Session& s, long frame) {
  if (frame < 0 || frame >= static_cast<long>(s.frameTable.size())) return -1;
  return s.frameTable[static_cast<size_t>(frame)].subtitle;
}

void handOver(Station& st, WysiwygRenderer& renderer, long index) {
  const SubtitleRecord& r = st.s.scan.records.at(static_cast<size_t>(index));
  WysiwygRenderer::Subtitle sub;
  sub.line1 = unicodeToCp1252(r.line1);
  sub.line2 = unicodeToCp1252(r.line2);
  sub.italic1 = italicFirstLine(r.style);
  sub.italic2 = italicSecondLine(r.style);
  const double width = renderer.videoWidth();
  double x;
  if (r.alignment == u'L') {
    x = renderer.leftMargin * (width / 720);
    sub.justification = 1;
  } else if (r.alignment == u'R') {
    x = width - renderer.rightMargin * (width / 720);
    sub.justification = 2;
  } else {
    x = width / 2;
    sub.justification = 0;
  }
  sub.x = std::lround(x);
  sub.y1 = renderer.lineTop(r, 1);
  sub.y2 = renderer.lineTop(r, 2);
  renderer.changeSubtitle(sub);
}

}  // namespace

void wysiwygTick(Station& st, WysiwygRenderer& renderer) {
  Session& s = st.s;
  if (!(s.wysiwygCapable && s.wysiwygOn && s.g_fsim)) return;
  s.currentFrame = std::lrint(s.g_fps * transformadaTCactual(s) - s.TCBase);
  s.currentFrameSubtitle = frameSubtitle(s, s.currentFrame);
  if (s.currentFrame > 0) {
    // Compared with the previous frame, not this one: a subtitle is handed
    // over on its second frame, once the frame before it shows it.
    const bool needed = (s.currentFrameSubtitle != -1 && s.loadedFrameSubtitle != frameSubtitle(s, s.currentFrame - 1)) ||
                        (s.fontChangePending && s.currentFrameSubtitle != -1) || s.changeSub;
    if (needed) {
      s.fontChangePending = false;
      if (s.currentFrameSubtitle != -1) handOver(st, renderer, s.currentFrameSubtitle);
      s.loadedFrameSubtitle = s.currentFrameSubtitle;
    }
  }
  renderer.showSubtitle(s.currentFrameSubtitle == -1 ? 0 : 1);
}

}  // namespace quillon
