#include "captions/caption_timing_loop.h"

#include <algorithm>
#include <array>

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"
#include "script/timing_helpers.h"
#include "script/timing_run.h"
#include "script/timing_tag.h"

namespace quillon {

namespace {

constexpr long kMaxCaptionRow = 32;

// One caption block as read from the script: up to four rows.
struct Block {
  std::array<u16, 4> rows;  // without their paragraph marks
  int count = 0;
  int longest = 0;
  bool italic = false;
  long length = 0;  // characters of the rows with their paragraph marks
};

// A row too long for the caption's 32 columns ends the run with its box.
bool rowFits(Station& st, const u16& paragraph) {
  if (static_cast<long>(withoutParagraphMark(paragraph).size()) <= kMaxCaptionRow) return true;
  if (st.pauseVideo) st.pauseVideo(st);
  msgBox(st.ui, u"Error: Maximum number of characters per row (32) exceeded in line: " + u16(1, CR) + CR +
                    paragraph + CR);
  st.s.g_fsim = false;
  return false;
}

void addRow(Block& b, const u16& paragraph) {
  const u16 row = withoutParagraphMark(paragraph);
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
    l.foreColor = kTextComing;
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

void runCaptions(Station& st, bool assisted) {
  Session& s = st.s;
  FormaCCState& f = st.view.overlays.FormaCC;
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
    if (!readyForCue(st, lastCueOut, gap, lowerBound)) return;
    s.miItalStyle = b.italic ? u"I" : u"N";
    const double inDelay = s.ultimodelay;

    const Cue cue = waitForCueIn(st, lowerBound, static_cast<double>(b.length));
    setRowsColour(f, kTextOn);
    const double cueOut = waitForCueOut(st, assisted, cue, gap, b.count == 1, floorOut);

    const double outDelay = s.ultimodelay;
    emptyRows(f);
    if (s.g_fsim) {
      const char16_t digit = u"0123456789ABCDEF"[s.ultimaposenpantallacc & 15];
      const char16_t style = s.miItalStyle.empty() ? u'N' : s.miItalStyle[0];
      // The run keeps one letter in `ultimaposhcc`, C from its start.
      const char16_t align = s.ultimaposhcc.empty() ? u'C' : s.ultimaposhcc[0];
      const u16 tag =
          TimingTag::caption(digit, style, align, SEGaTC(cue.in - inDelay, fps), SEGaTC(cueOut - outDelay, fps)).line();
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
  st.s.g_fVideoRun = false;
  st.ui.setPointer(Pointer::Hourglass);
  st.s.g_fsim = true;

  const KeptCueLabels kept = lockWindowForRun(st);

  runCaptions(st, st.view.menu("mnu_tex_opc_asis").checked);

  st.view.overlays.FormaCC.Visible = false;
  giveWindowBack(st, kept);
}

void mnu_cc_temp(Station& st) { captionTimingLoop(st); }

}  // namespace quillon
