#include "subtitling/timing_loop.h"

#include <array>

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"
#include "script/tag_grammar.h"
#include "subtitling/edit_subtitle.h"
#include "subtitling/editing_commands.h"
#include "script/timing_helpers.h"
#include "script/timing_run.h"
#include "subtitling/subtitle_overlay.h"

namespace quillon {

namespace {

struct ModeItem {
  const char* item;
  const char16_t* letter;
  const char16_t* toolTip;
};
constexpr std::array<ModeItem, 3> kModes = {{
    {"mnu_tex_opc_int", u"I", u"Timing mode = Interactive."},
    {"mnu_tex_opc_asis", u"A", u"Timing mode = Assisted."},
    {"mnu_tex_opc_less", u"X", u"Timing mode = Text-less."},
}};

// One subtitle as read from the script.
struct Reading {
  u16 line1, line2;  // paragraph texts, CR kept
  bool twoLines = false;
  bool italic1 = false, italic2 = false;
};

void tooLong(Station& st, const u16& where, const u16& line) {
  msgBox(st.ui, u"Error: Maximum number of characters per row (" + numberText(st.s.maxCharsRow) + u") exceeded in " +
                    where + CR + CR + line + CR);
}

// Italics of a paragraph's text; its paragraph mark does not count.
bool paragraphItalic(DocumentService& d, TextRange r) {
  if (r.length() > 1) r.end -= 1;
  return d.italic(r);
}

// Reads the subtitle under the selection, passing empty paragraphs first,
// and leaves the selection on its first line. False ends the run.
bool readSubtitle(Station& st, Reading& r) {
  DocumentService& d = *st.doc;
  const long maxRow = st.s.maxCharsRow + 1;  // the 1 is the paragraph's CR
  TextRange p = d.selectionParagraph(1);
  r.line1 = d.text(p);
  while (d.pendingError() == 0 && r.line1.size() == 1) {
    d.clearError();
    d.selectNext(wdParagraph, 1);
    p = d.selectionParagraph(1);
    r.line1 = d.text(p);
  }
  if (d.pendingError() != 0) return false;  // the end of the script
  if (instr(r.line1, u"UB[") > 0 || instr(r.line1, u"CAP[") > 0) return false;  // already timed
  if (static_cast<long>(r.line1.size()) > maxRow) {
    tooLong(st, u"", r.line1);
    return false;
  }
  r.italic1 = paragraphItalic(d, p);
  r.line2.clear();
  r.twoLines = false;
  r.italic2 = false;
  if (!d.selectNext(wdParagraph, 1)) {
    // The script's last paragraph: one line, the selection stays on it.
    d.clearError();
    return true;
  }
  const u16 second = d.selection();
  if (second.size() > 1) {
    r.twoLines = true;
    r.line2 = second;
    r.italic2 = paragraphItalic(d, d.selectionRange());
    if (static_cast<long>(second.size()) > maxRow) {
      tooLong(st, u"second line in ", second);
      return false;
    }
  }
  d.selectPrevious(wdParagraph, 1);
  return true;
}

// The run's body, from the first subtitle to the way out.
void runSubtitles(Station& st, TimingMode mode) {
  Session& s = st.s;
  ViewState& v = st.view;
  FormaSubState& f = v.overlays.FormaSub;
  DocumentService& d = *st.doc;
  const int fps = st.fps();
  const double gap = FRAMESaSEG(s.minInterleave, fps) + FRAMESaSEG(1, fps);
  double lowerBound = 0, lastCueOut = 0, floorOut = 0;
  u16 both;  // the text whose length gives the automatic duration
  Reading r;

  do {
    // a, b: the coming text.
    f.Line1.caption.clear();
    f.Line2.caption.clear();
    if (mode != TimingMode::Textless) {
      if (!readSubtitle(st, r)) return;
      both = r.twoLines ? r.line1 + r.line2 : r.line1;
    } else {
      r = Reading{};
      r.line1 = u"NO TEXT";
      if (s.minimiseSubtitleWindow) {
        f.BackColor = 65535;
        f.Height = 300;
      } else {
        f.Height = 5355;
      }
    }
    // c: shown in grey until the cue-in.
    if (s.g_fsim) {
      s.ultimodelay = s.delay;
      const int align = overlayAlignment(s.ultimaposhcc);
      f.Line1 = OverlayLine{withoutParagraphMark(r.line1), kTextComing, r.italic1, align};
      if (r.twoLines) f.Line2 = OverlayLine{withoutParagraphMark(r.line2), kTextComing, r.italic2, align};
      f.Line2.alignment = align;
      placeSubtitleOverlay(st, r.twoLines, s.ultimaposenpantalla);
      f.Visible = true;
    }
    // d to g.
    if (!readyForCue(st, lastCueOut, gap, lowerBound)) return;
    // h, i: the style as the overlay shows it; keys may change it later.
    s.miItalStyle = u16(1, styleFromOverlay(f, r.twoLines));
    const double inDelay = s.ultimodelay;

    // j to l: the cue-in, and the cue-out its text's length suggests.
    const Cue cue = waitForCueIn(st, lowerBound, static_cast<double>(both.size()));
    f.Line1.foreColor = f.Line2.foreColor = kTextOn;

    // m, n: the cue-out.
    const double cueOut = waitForCueOut(st, mode == TimingMode::Assisted, cue, gap, !r.twoLines, floorOut);
    const char16_t align = tagAlignment(s.ultimaposhcc);

    // o to q: the tag.
    const double outDelay = s.ultimodelay;
    f.Line1.caption.clear();
    f.Line2.caption.clear();
    f.Height = 700;
    if (mode != TimingMode::Textless && s.g_fsim) {
      s.tagUndoCount += 1;
      if (s.tagUndoCount >= static_cast<int>(s.tagUndo.size())) s.tagUndo.resize(s.tagUndoCount + 1);
      const double t1 = clampCueIn(s, cue.in - inDelay);
      const double t2 = clampCueOut(s, cueOut - outDelay);
      const u16 style = s.miItalStyle.empty() ? u16(u"N") : s.miItalStyle;
      const u16 tag = subtitleTag(s.ultimaposenpantalla, align, style[0], t1, t2, fps);
      s.tagUndo[s.tagUndoCount] = tag;
      insertSubtitleTag(st, tag);
      lastCueOut = cueOut;
      if (r.twoLines) d.selectNext(wdParagraph, 1);
      d.selectNext(wdParagraph, 2);
    } else if (mode == TimingMode::Textless && s.g_fsim) {
      if (s.sequentialNumbering) {
        const u16 line = right(u"0000" + numberText(s.nextSeqNumber), 4) + u"\t" + SEGaTC(cue.in - inDelay, fps) +
                         u"\t" + SEGaTC(cueOut - outDelay, fps) + CR;
        d.selectionInsertAfter(line);
        d.moveRight(wdCharacter, 29);
        s.nextSeqNumber += 1;
      } else {
        d.selectionInsertAfter(
            textlessSubtitleTag(s.ultimaposenpantalla, align, cue.in - inDelay, cueOut - outDelay, fps));
        d.moveRight(wdCharacter, 34);
      }
    }
  } while (s.g_fsim);
}

}  // namespace

TimingMode timingMode(const Station& st) {
  if (st.view.menu("mnu_tex_opc_less").checked) return TimingMode::Textless;
  if (st.view.menu("mnu_tex_opc_asis").checked) return TimingMode::Assisted;
  return TimingMode::Interactive;
}

void setTimingMode(Station& st, TimingMode mode) {
  const size_t chosen = static_cast<size_t>(mode);
  for (size_t i = 0; i < kModes.size(); ++i) st.view.menu(kModes[i].item).checked = i == chosen;
  st.view.setPanel(2, kModes[chosen].letter, kModes[chosen].toolTip);
}

void mnu_tex_opc_int(Station& st) { setTimingMode(st, TimingMode::Interactive); }
void mnu_tex_opc_asis(Station& st) { setTimingMode(st, TimingMode::Assisted); }
void mnu_tex_opc_less(Station& st) { setTimingMode(st, TimingMode::Textless); }

void timingLoop(Station& st) {
  if (!attachDocument(st)) return;
  // A run starts with no document error pending: one left behind by an
  // earlier command (a script closed under it) would end this run at once.
  st.doc->clearError();
  Session& s = st.s;
  ViewState& v = st.view;
  s.g_fVideoRun = false;
  st.ui.setPointer(Pointer::Hourglass);

  s.g_fsim = true;
  scanWithoutChecks(st, ScanMode::WholeScript);  // the table must know every subtitle already timed

  s.ultimaposenpantalla = 0;
  s.miItalStyle = u"N";
  s.tagUndoCount = 0;
  const KeptCueLabels kept = lockWindowForRun(st);
  v.overlays.FormaSub.Visible = true;

  runSubtitles(st, timingMode(st));

  // Every way out comes through here.
  v.overlays.FormaSub.Visible = false;
  giveWindowBack(st, kept);
}

void mnu_temp(Station& st) { timingLoop(st); }
void runTiming(Station& st) { timingLoop(st); }

void installTimingCommands(Station& st) { st.editSubtitle = editSubtitle; }

}  // namespace quillon
