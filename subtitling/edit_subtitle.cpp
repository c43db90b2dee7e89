#include "subtitling/edit_subtitle.h"

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/tag_grammar.h"
#include "subtitling/editing_commands.h"
#include "subtitling/subtitle_overlay.h"

namespace quillon {

void editSubtitle(Station& st, int index) {
  Session& s = st.s;
  ViewState& v = st.view;
  ScanTable& tb = s.scan;
  FormaSubState& f = v.overlays.FormaSub;
  const int fps = st.fps();
  const size_t i = static_cast<size_t>(index);

  // The text without its two closing CRs; a CR from its second character on
  // splits the lines.
  const u16& text = tb.text[i];
  const u16 body = text.size() >= 2 ? text.substr(0, text.size() - 2) : u16();
  const long cr = instr(body, u16(1, CR));
  u16 line1 = body, line2;
  if (cr >= 2) {
    line1 = left(body, cr - 1);
    line2 = mid(body, cr + 1);
  }
  const bool twoLines = !line2.empty();

  v.toolbarEnabled = false;
  v.slVideo.enabled = false;
  v.panel(8).text = u"Edit mode.";
  f.Line1 = OverlayLine{};
  f.Line2 = OverlayLine{};
  f.Line1.caption = line1;
  f.Line2.caption = line2;
  applySubtitleStyle(f.Line1, f.Line2, tb.styleChar[i]);
  const u16 alignLetter(1, tb.alignChar[i]);
  f.Line1.alignment = f.Line2.alignment = overlayAlignment(alignLetter);
  // The alignment keys start from the subtitle's own place, not from where
  // the last run or edit left them: a re-timed subtitle keeps its alignment.
  s.ultimaposhcc = alignLetter == u"L" || alignLetter == u"R" ? alignLetter : u16(u"C");
  const char16_t digit = tb.posDigit[i];
  const int position = (digit >= u'0' && digit <= u'9') ? digit - u'0' : 0;
  placeSubtitleOverlay(st, twoLines, position);

  // The frame steps may not run into the neighbours.
  const double gap = FRAMESaSEG(s.minInterleave, fps) + FRAMESaSEG(1, fps);
  s.lowerlimit = index == 1 ? 0 : tb.cueOut[i - 1] + gap;
  s.upperlimit = index == kScanCapacity ? 0 : tb.cueIn[i + 1] - gap;

  const double oldIn = tb.cueIn[i], oldOut = tb.cueOut[i];
  v.LabCom.caption = SEGaTC(oldIn, fps);
  v.LabDur.caption = SEGaTC(oldOut, fps);
  goToPosition(st, transformadainversa(s, oldOut));
  s.editingcueout = true;
  v.Timer4.setEnabled(true, st.ui.timeOfDay());
  f.Line1.foreColor = f.Line2.foreColor = 0xC0C0C0;
  s.saveedittiming = false;
  s.ultimaposenpantalla = static_cast<int16_t>(position);

  if (f.Line1.italic)
    s.miItalStyle = (f.Line2.italic || !twoLines) ? u"I" : u"1";
  else
    s.miItalStyle = f.Line2.italic ? u"2" : u"N";

  f.Visible = true;
  s.g_fedit = true;
  while (s.g_fedit) st.ui.pumpEvents();

  const char16_t align = tagAlignment(s.ultimaposhcc);
  v.Timer4.setEnabled(false, st.ui.timeOfDay());
  v.LabCom.visible = v.LabDur.visible = true;  // the blink may have left one hidden
  v.toolbarEnabled = true;
  v.slVideo.enabled = true;
  f.Visible = false;
  v.panel(8).text.clear();

  if (!s.saveedittiming) return;
  const u16 pattern = wholeTagPattern(SEGaTC(oldIn, fps), SEGaTC(oldOut, fps));
  tb.cueIn[i] = TCaSEG(v.LabCom.caption, fps, st.ui);
  tb.cueOut[i] = TCaSEG(v.LabDur.caption, fps, st.ui);
  const char16_t style = s.miItalStyle.empty() ? u'N' : s.miItalStyle[0];
  // The pattern ends at the tag's bracket, so the new tag goes in without
  // its paragraph mark and a note behind it stays.
  u16 tag = subtitleTag(s.ultimaposenpantalla, align, style, tb.cueIn[i], tb.cueOut[i], fps);
  tag.pop_back();
  replaceInDocument(st, pattern, tag);
  s.saveedittiming = false;
}

}  // namespace quillon
