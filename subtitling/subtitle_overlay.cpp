#include "subtitling/subtitle_overlay.h"

#include "script/timing_tag.h"

namespace quillon {

void placeSubtitleOverlay(Station& st, bool twoLines, int position) {
  FormaSubState& f = st.view.overlays.FormaSub;
  const OverlayState& o = st.view.overlays;
  f.Left = o.mainLeft + 60;
  f.Height = twoLines ? 700 : 350;
  f.Top = o.mainTop + 4000 - position * 350 + (twoLines ? 0 : 250);
}

int overlayAlignment(u16v letter) {
  if (letter == u"L") return kAlignLeft;
  if (letter == u"R") return kAlignRight;
  return kAlignCentre;
}

char16_t tagAlignment(u16v letter) {
  if (letter == u"L") return u'L';
  if (letter == u"R") return u'R';
  return u' ';
}

void applySubtitleStyle(OverlayLine& line1, OverlayLine& line2, char16_t style) {
  // A letter that is no style leaves the lines as they were.
  if (style != u'N' && !italicFirstLine(style) && !italicSecondLine(style)) return;
  line1.italic = italicFirstLine(style);
  line2.italic = italicSecondLine(style);
}

char16_t styleFromOverlay(const FormaSubState& f, bool twoLines) {
  if (f.Line1.italic) return (!twoLines || f.Line2.italic) ? u'I' : u'1';
  return (twoLines && f.Line2.italic) ? u'2' : u'N';
}

}  // namespace quillon
