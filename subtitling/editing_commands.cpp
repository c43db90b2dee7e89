#include "subtitling/editing_commands.h"

#include <cmath>

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"
#include "script/tag_grammar.h"
#include "subtitling/in_place_times.h"

namespace quillon {

void goToPosition(Station& st, double seconds) {
  if (st.ira) {
    st.ira(st, seconds);
    return;
  }
  Session& s = st.s;
  if (s.videoFile.empty()) return;
  s.g_dblPosActual = std::min(std::max(seconds, 0.0), s.videoDuration);
  st.view.LabTimecode.caption = SEGaTC(transformadaTCactual(s), st.fps());
  st.view.slVideo.value = std::round(s.g_dblPosActual);
  if (s.timecodeInClipboard) {
    st.ui.clearClipboard();
    st.ui.setClipboard(st.view.LabTimecode.caption);
  }
}

bool scanWithoutChecks(Station& st, ScanMode mode) {
  const bool saved = st.s.checksDisabled;
  st.s.checksDisabled = true;
  const bool ok = scanSubtitles(st, mode);
  st.s.checksDisabled = saved;
  return ok;
}

namespace {

// Step one paragraph, then find the next "SUB[" forward and leave the
// cursor in front of it.
void jumpToTag(Station& st, bool back) {
  if (!attachDocument(st)) return;
  DocumentService& d = *st.doc;
  if (back)
    d.selectPrevious(wdParagraph, 1);
  else
    d.selectNext(wdParagraph, 1);
  d.collapse();
  FindRequest f;
  f.findText = u"SUB[";
  d.execute(f);
  d.collapse();
}

}  // namespace

void mnu_sub_next(Station& st) { jumpToTag(st, false); }
void mnu_sub_prev(Station& st) { jumpToTag(st, true); }

void mnu_sub_edit(Station& st) {
  if (!attachDocument(st)) return;
  DocumentService& d = *st.doc;
  const u16 para = d.text(d.selectionParagraph(1));
  if (instr(para, u"SUB[") == 0) return;
  const double t = TCaSEG(mid(para, 9, 11), st.fps(), st.ui);
  if (!scanWithoutChecks(st, ScanMode::WholeScript)) {
    // A damaged tag cannot be survived here.
    if (st.endProgram) st.endProgram(st);
    return;
  }
  int i = 1;
  while (i < kScanCapacity && st.s.scan.cueIn[i] != t) ++i;
  if (i != kScanCapacity && st.editSubtitle) st.editSubtitle(st, i);
}

void mnu_undo(Station& st) {
  if (!attachDocument(st)) return;
  Session& s = st.s;
  if (s.tagUndoCount < 1) return;
  const u16 tag = s.tagUndo[s.tagUndoCount];
  replaceInDocument(st, tag, u"");
  // Back to two seconds before the tag's cue-in, for a run-up.
  const double t = TCaSEG(mid(tag, 9, 11), st.fps(), st.ui);
  goToPosition(st, transformadainversa(s, t) - 2.0);
  s.tagUndoCount -= 1;
}

void mnu_sub_merge(Station& st) {
  if (!attachDocument(st)) return;
  DocumentService& d = *st.doc;
  if (d.selectionType() != wdSelectionNormal) return;
  u16 firstTag, lastOut;
  bool haveFirst = false;
  const long count = d.selectionParagraphsCount();
  for (long k = 1; k <= count; ++k) {
    const u16 p = d.text(d.selectionParagraph(k));
    if (instr(p, u"SUB[") == 0) continue;
    if (!haveFirst) {
      firstTag = p;
      haveFirst = true;
    } else {
      lastOut = mid(p, 21, 11);
    }
  }
  // Empty paragraphs and every later tag go; the text lines stay in order.
  long k = 1;
  while (k <= d.selectionParagraphsCount()) {
    const TextRange r = d.selectionParagraph(k);
    const u16 p = d.text(r);
    const bool otherTag = instr(p, u"SUB[") > 0 && p != firstTag;
    if (r.length() == 1 || otherTag) {
      const long before = d.length();
      d.deleteRange(r);
      if (d.length() == before) ++k;  // the final mark cannot go
    } else {
      ++k;
    }
  }
  FindRequest f;
  f.findText = firstTag;
  f.replaceWith = left(firstTag, 20) + lastOut + mid(firstTag, 32);
  f.replace = ReplaceMode::One;
  d.execute(f);
}

void mnu_sub_deltiming(Station& st) {
  if (!attachDocument(st)) return;
  DocumentService& d = *st.doc;
  if (d.selectionType() != wdSelectionNormal) return;
  FindRequest f;
  f.findText = u"SUB";
  f.replaceWith = u"JOJO";
  f.replace = ReplaceMode::One;
  d.execute(f);
  msgBox(st.ui, u"luego de Execute");
}

void mnu_sub_changeinterleave(Station& st) {
  if (!attachDocument(st)) return;
  Session& s = st.s;
  ScanTable& tb = s.scan;
  tb.subtitleCount = 0;
  if (s.g_fVideoRun) s.g_fVideoRun = false;
  st.ui.setPointer(Pointer::Hourglass);
  s.g_fsim = true;
  scanWithoutChecks(st, ScanMode::WholeScript);
  const int fps = st.fps();
  InPlaceTimes times(st);
  for (int i = 1; i <= tb.count(); ++i) {
    const double gap = FRAMESaSEG(s.minInterleave, fps);
    if (!(s.minInterleave > 0 && i > 1 && tb.cueOut[i - 1] > 0 && !(tb.cueOut[i - 1] + gap < tb.cueIn[i]))) continue;
    // One frame more than the minimum, so that the rule's own check passes.
    const double newIn = tb.cueOut[i - 1] + FRAMESaSEG(static_cast<int16_t>(s.minInterleave + 1), fps);
    times.rewrite(i, timesPattern(SEGaTC(tb.cueIn[i], fps), SEGaTC(tb.cueOut[i], fps)),
                  tagTimes(SEGaTC(newIn, fps), SEGaTC(tb.cueOut[i], fps)));
  }
  st.ui.setPointer(Pointer::Default);
}

void mnu_opc_hideTC(Station& st) {
  if (!attachDocument(st)) return;
  if (!scanSubtitles(st, ScanMode::WholeScript)) return;
  Session& s = st.s;
  DocumentService& d = *st.doc;
  st.ui.setPointer(Pointer::Hourglass);
  s.g_fsim = true;
  const long count = d.paragraphsCount();
  long p = 1;
  while (s.g_fsim && p <= count) {
    const std::vector<TextRange> words = d.words(d.paragraph(p));
    if (!words.empty() && trim(d.text(words[0])) == u"SUB") {
      d.select(words[0]);
      u16 joined;
      for (size_t w = 0; w + 1 < words.size(); ++w) joined += d.text(words[w]);
      findFromTop(st, joined);
      msgBox(st.ui, u"Timecode es " + joined);
      p += 2;
    } else {
      p += 1;
    }
    st.ui.pumpEvents();
  }
  if (s.g_fsim) st.view.panel(3).text = u"Progress... 100%.";
  d.select(d.paragraph(1));
  st.view.panel(3).text.clear();
  st.ui.setPointer(Pointer::Default);
}

void mnu_opc_tcclip(Station& st) {
  auto& item = st.view.menu("mnu_opc_tcclip");
  item.checked = !item.checked;
  st.s.timecodeInClipboard = item.checked;
  st.ui.clearClipboard();
  if (item.checked) st.ui.setClipboard(TimingTag::shortDubbing(st.view.LabTimecode.caption).text());
}

}  // namespace quillon
