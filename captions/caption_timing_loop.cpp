#include "captions/caption_timing_loop.h"

#include <algorithm>
#include <array>

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"

namespace quillon {

namespace {

constexpr uint32_t kGrey = 0xC0C0C0, kWhite = 0xFFFFFF, kGreen = 65280, kRed = 255;
constexpr long kMaxCaptionRow = 32;

constexpr std::array<const char*, 7> kLockedMenus = {"mnu_file", "mnu_ctlVideo", "mnu_sub", "mnu_dub",
                                                     "mnu_cc",   "mnu_herr",     "mnu_hlp"};

// One caption block as read from the script: up to four rows.
struct Block {
  std::array<u16, 4> rows;  // without their paragraph marks
  int count = 0;
  int longest = 0;
  bool italic = false;
  long length = 0;  // characters of the rows with their paragraph marks
};

u16 stripMark(const u16& p) { return !p.empty() && p.back() == CR ? p.substr(0, p.size() - 1) : p; }

// A row too long for the caption's 32 columns ends the run with its box.
bool rowFits(Station& st, const u16& paragraph) {
  if (static_cast<long>(stripMark(paragraph).size()) <= kMaxCaptionRow) return true;
  if (st.pauseVideo) st.pauseVideo(st);
  msgBox(st.ui, u"Error: Maximum number of characters per row (32) exceeded in line: " + u16(1, CR) + CR +
                    paragraph + CR);
  st.s.g_fsim = false;
  return false;
}

void addRow(Block& b, const u16& paragraph) {
  const u16 row = stripMark(paragraph);
  b.rows[static_cast<size_t>(b.count++)] = row;
  b.longest = std::max(b.longest, static_cast<int>(row.size()));
  b.length += static_cast<long>(paragraph.size());
}

// Reads the block under the selection, passing empty paragraphs first, and
// leaves the selection on its first row. False ends the run.
bool readBlock(Station& st, Block& b) {
  DocumentService& d = *st.doc;
  b = Block{};
  TextRange p = d.selectionParagraph(1);
  u16 first = d.text(p);
  while (d.pendingError() == 0 && first.size() == 1) {
    d.clearError();
    d.selectNext(wdParagraph, 1);
    p = d.selectionParagraph(1);
    first = d.text(p);
  }
  if (d.pendingError() != 0 || instr(first, u"CAP[") > 0 || instr(first, u"UB[") > 0) {
    st.s.g_fsim = false;
    return false;
  }
  if (!rowFits(st, first)) return false;
  addRow(b, first);
  if (p.length() > 1) p.end -= 1;
  b.italic = d.italic(p);
  long steps = 0;
  while (b.count < 4) {
    if (!d.selectNext(wdParagraph, 1)) {
      d.clearError();  // the script's last paragraph
      break;
    }
    ++steps;
    const u16 row = d.selection();
    if (row.size() <= 1) break;
    if (!rowFits(st, row)) return false;
    addRow(b, row);
  }
  if (steps > 0) d.selectPrevious(wdParagraph, steps);
  return true;
}

// The caption overlay sized to the text and placed by alignment and
// position; never higher than 750 twips below the main window's top.
void showBlock(Station& st, const Block& b) {
  FormaCCState& f = st.view.overlays.FormaCC;
  const OverlayState& o = st.view.overlays;
  const u16& align = st.s.ultimaposhcc;
  f.Width = b.longest * 150;
  if (align == u"L")
    f.Left = o.mainLeft + 60;
  else if (align == u"C")
    f.Left = o.mainLeft + 60 + (5500 - f.Width) / 2;
  else
    f.Left = o.mainLeft - 60 + (5500 - f.Width);
  int last = 1;
  for (int i = 1; i <= 4; ++i) {
    OverlayLine& l = f.labline(i);
    l.caption = b.rows[static_cast<size_t>(i - 1)];
    l.foreColor = kGrey;
    l.italic = b.italic;
    if (!l.caption.empty()) last = i;
  }
  f.Height = last * 250;
  f.Top = o.mainTop + std::max(4500 - st.s.ultimaposenpantallacc * 250 - f.Height, 750);
  f.Visible = true;
}

void setRowsColour(FormaCCState& f, uint32_t colour) {
  for (int i = 1; i <= 4; ++i) f.labline(i).foreColor = colour;
}

void emptyRows(FormaCCState& f) {
  for (int i = 1; i <= 4; ++i) f.labline(i).caption.clear();
}

double autoCaptionDuration(const Session& s, double chars) {
  double d = chars / s.readingSpeed;
  if (d > s.maxOnAir) d = s.maxOnAir;
  if (d < s.minOnAir1) d = s.minOnAir1;
  return d;
}

// The waits end with the video. Timer1 stops reading the position once it
// is within a hundredth of a second of the end, so that is the end here too:
// a wait for the exact length could outlast a video that has stopped.
bool beforeVideoEnd(const Session& s) { return s.videoDuration - 0.01 > s.g_dblPosActual; }

template <class Pred>
void waitWhile(Station& st, Pred keepWaiting) {
  while (keepWaiting()) st.ui.pumpEvents();
}

void runCaptions(Station& st, bool assisted) {
  Session& s = st.s;
  ViewState& v = st.view;
  FormaCCState& f = v.overlays.FormaCC;
  DocumentService& d = *st.doc;
  const int fps = st.fps();
  const double gap = FRAMESaSEG(s.minInterleave, fps) + FRAMESaSEG(1, fps);
  double lowerBound = 0, lastCueOut = 0, floorOut = 0;
  Block b;

  do {
    emptyRows(f);
    if (!readBlock(st, b)) return;
    if (s.g_fsim) {
      s.ultimodelay = s.delay;
      showBlock(st, b);
    }
    if (!s.g_fsim) return;
    v.LabCom.caption.clear();
    v.LabDur.caption.clear();
    if (lastCueOut > 0) lowerBound = lastCueOut + gap;
    if (s.outnextin) {
      s.outnextin = false;
      s.TCSpacebar = lowerBound;
    } else {
      s.TCSpacebar = 0;
    }
    if (!(s.videoDuration - 0.1 > s.g_dblPosActual)) return;
    s.miItalStyle = b.italic ? u"I" : u"N";
    const double inDelay = s.ultimodelay;

    waitWhile(st, [&] { return s.TCSpacebar == 0 && beforeVideoEnd(s) && s.g_fsim; });
    const double cueIn = std::max(s.TCSpacebar, lowerBound);
    v.LabCom.caption = SEGaTC(cueIn, fps);
    setRowsColour(f, kWhite);
    double cueOut = cueIn + autoCaptionDuration(s, static_cast<double>(b.length));
    v.LabDur.caption = SEGaTC(cueOut, fps);
    v.LabDur.foreColor = kWhite;

    if (assisted) {
      waitWhile(st, [&] {
        return cueOut + gap > transformadaTCactual(s) && beforeVideoEnd(s) && s.g_fsim;
      });
    } else {
      s.TCSpacebar = 0;
      waitWhile(st, [&] {
        if (!(s.TCSpacebar == 0 && beforeVideoEnd(s) && s.g_fsim)) return false;
        if (cueOut - s.delay < transformadaTCactual(s)) v.LabDur.foreColor = kGreen;
        return true;
      });
      if (b.count == 1) floorOut = cueIn + s.minOnAir1;
      if (!(s.TCSpacebar > floorOut)) {
        cueOut = floorOut;
        waitWhile(st, [&] {
          return transformadaTCactual(s) < cueOut && beforeVideoEnd(s) && s.g_fsim;
        });
      } else {
        cueOut = s.TCSpacebar;
      }
      v.LabDur.foreColor = kRed;
      v.LabDur.caption = SEGaTC(cueOut, fps);
    }

    const double outDelay = s.ultimodelay;
    emptyRows(f);
    if (s.g_fsim) {
      const char16_t digit = u"0123456789ABCDEF"[s.ultimaposenpantallacc & 15];
      const u16 style = s.miItalStyle.empty() ? u16(u"N") : s.miItalStyle.substr(0, 1);
      const u16 tag = u"CAP[" + u16(1, digit) + style + s.ultimaposhcc + u" " + SEGaTC(cueIn - inDelay, fps) +
                      u">" + SEGaTC(cueOut - outDelay, fps) + u"]" + CR;
      d.insertBefore(d.selectionParagraph(1), tag);
      lastCueOut = cueOut;
      d.selectNext(wdParagraph, b.count);  // onto the empty paragraph behind the rows
    }
  } while (s.g_fsim);
}

}  // namespace

void captionTimingLoop(Station& st) {
  if (!attachDocument(st)) return;
  // A run starts with no document error pending: one left behind by an
  // earlier command (a script closed under it) would end this run at once.
  st.doc->clearError();
  Session& s = st.s;
  ViewState& v = st.view;
  s.g_fVideoRun = false;
  st.ui.setPointer(Pointer::Hourglass);
  s.g_fsim = true;

  const LabelState keptCom = v.LabCom, keptDur = v.LabDur;
  v.LabCom.caption.clear();
  v.LabDur.caption.clear();
  v.toolbarEnabled = false;
  v.slVideo.enabled = false;
  for (const char* m : kLockedMenus) v.menu(m).enabled = false;

  s.g_fspot = true;
  s.ultimaposhcc = u"C";
  s.TCSpacebar = 0;
  s.outnextin = false;
  if (st.resumeVideo) st.resumeVideo(st);

  runCaptions(st, v.menu("mnu_tex_opc_asis").checked);

  v.LabCom = keptCom;
  v.LabDur = keptDur;
  v.overlays.FormaCC.Visible = false;
  s.g_fsim = false;
  if (instr(v.panel(8).text, u"Error") > 0) v.panel(8).text.clear();
  if (st.pauseVideo) st.pauseVideo(st);
  v.toolbarEnabled = true;
  v.slVideo.enabled = true;
  for (const char* m : kLockedMenus) v.menu(m).enabled = true;
  v.overlays.focus = "slVideo";
  s.g_fspot = false;
  st.ui.setPointer(Pointer::Default);
}

void mnu_cc_temp(Station& st) { captionTimingLoop(st); }

}  // namespace quillon
