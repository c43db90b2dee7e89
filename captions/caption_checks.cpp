#include "captions/caption_checks.h"

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"

namespace quillon {

namespace {

// The fault's search starts from the top so that it finds the tag wherever
// the cursor stood.
void cursorToCueIn(Station& st, double cueIn) {
  st.doc->selectAll();
  findCueIn(st, SEGaTC(cueIn, st.fps()));
}

void cursorToCueOut(Station& st, double cueOut) {
  st.doc->selectAll();
  findCueOut(st, SEGaTC(cueOut, st.fps()));
}

}  // namespace

bool checkCaption(Station& st, int index) {
  const ScanTable& t = st.s.scan;
  const double in = t.cueIn[index], out = t.cueOut[index];
  const auto& rows = t.captionRows[index];
  const u16 tc = SEGaTC(in, st.fps());

  if (in > 0 && out > 0 && in < out && out - in < st.s.minCaptionOnAir) {
    critical(st.ui, u"Minimum On-air duration violation in [" + tc + u"]\r" + rows[0] +
                        u"\rPlease allow captions at least " + formatNumber(st.s.minCaptionOnAir, "0.00") +
                        u" sec. on the air.");
    cursorToCueOut(st, out);
    return false;
  }
  if (in > 0 && out > 0 && out - in > st.s.maxCaptionOnAir) {
    critical(st.ui, u"On-air duration violation in [" + tc + u"]\rCue-out for:\r" + rows[0] +
                        u"\roccurs too late.\rPlease maintain subtitles for less than " +
                        formatNumber(st.s.maxCaptionOnAir, "0.00") + u" sec. on the air.");
    cursorToCueIn(st, in);
    return false;
  }
  if (out > 0 && out < in) {
    critical(st.ui, u"Time code sequence error in [" + tc + u"]\rCue-out for:\r" + rows[0] +
                        u"\roccurs before cue-in for same subtitle.");
    cursorToCueOut(st, out);
    return false;
  }
  for (int r = 0; r < 4; ++r) {
    if (static_cast<long>(rows[r].size()) > kCaptionRowWidth) {
      critical(st.ui, u"Error: Maximum number of characters per row (32) exceeded in" + numberText(r + 1) +
                          u" of caption in [" + tc + u"]\r" + left(rows[r], kCaptionRowWidth));
      findFromTop(st, rows[r]);
      return false;
    }
  }
  return true;
}

void installCaptionChecks(Station& st) { st.checkCaption = checkCaption; }

}  // namespace quillon
