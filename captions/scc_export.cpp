#include "captions/scc_export.h"

#include "captions/caption_file_dialog.h"
#include "captions/caption_layout.h"
#include "captions/cea608.h"
#include "captions/scc_preflight.h"
#include "core/atomic_file.h"
#include "core/timecode.h"
#include "script/tag_grammar.h"

namespace quillon {

namespace {

const char kCrLf[] = "\r\n";

using Lines = std::vector<SccLine>;

void addLine(Lines& lines, const u16& tc, const std::string& words, int caption = 0) {
  lines.push_back({tc, words, caption});
}

std::string fileText(const Lines& lines) {
  std::string file = "Scenarist_SCC V1.0";
  file += kCrLf;
  file += kCrLf;
  for (const SccLine& l : lines) {
    file += toUtf8(l.timecode);
    file += '\t';
    file += l.words;
    file += kCrLf;
    file += kCrLf;
  }
  return file;
}

// The PAC, the italics code when the caption is italic, and the characters
// of each row.
std::string rowWords(Station& st, int index, const CaptionBlock& b) {
  const ScanTable& t = st.s.scan;
  std::string w;
  for (int r = 1; r <= b.rows; ++r) {
    w += ODD(FIRSTBYTE(st.ui, r, b.rows, b.position, b.align, b.longest));
    w += ' ';
    if (t.styleChar[index] == u'I') w += ODD(u"\x11\x2e") + " ";
    w += GROUPIN2BYTESANDPAD(captionCharacters(t.captionRows[index][r - 1]));
  }
  // Erase what is displayed, two null pairs, then flip the loaded caption on.
  w += ODD(u"\x14\x2c") + " 8080 8080 " + ODD(u"\x14\x2f");
  return w;
}

void showProgress(Station& st, int i) {
  st.view.panel(3).text = u"Exporting CC " + formatNumber(i * 100.0 / st.s.scan.subtitleCount, "00") + u"%";
  st.ui.pumpEvents();
}

// What both layouts share: the caption blocks in order, with the progress
// shown when asked, and the closing clear. addCaption(lines, index, block,
// first, lastOut) adds one block's lines, told whether it is the first and
// when the one before it went off.
template <class AddCaption>
Lines sccFileLines(Station& st, bool progress, AddCaption addCaption) {
  const ScanTable& t = st.s.scan;
  if (progress) st.view.panel(3).text = u"Exporting CC...";
  Lines lines;
  bool first = true;
  double lastOut = 0;
  for (int i = 1; i <= t.count(); ++i) {
    if (!t.isSubtitle[i]) continue;
    const CaptionBlock b = captionBlock(st, i);
    addCaption(lines, i, b, first, lastOut);
    first = false;
    lastOut = b.out;
    if (progress) showProgress(st, i);
  }
  addLine(lines, SEGaTC(t.cueOut[t.count()], st.fps()), "942c");
  if (progress) st.view.panel(3).text.clear();
  return lines;
}

}  // namespace

std::vector<SccLine> sccLines(Station& st, bool progress) {
  const int fps = st.fps();
  return sccFileLines(st, progress, [&](Lines& lines, int i, const CaptionBlock& b, bool first, double lastOut) {
    if (first)
      addLine(lines, SEGaTC(b.in - 5.0, fps), "942c");
    else if (lastOut + 1.0 < b.in)
      addLine(lines, SEGaTC(lastOut, fps), "942c");
    // One frame of lead for each character of the longest row.
    const double lead = FRAMESaSEG(static_cast<int16_t>(b.longest), fps);
    addLine(lines, SEGaTC(b.in - lead, fps), "9420 " + rowWords(st, i, b), i);
  });
}

std::string sccText(Station& st) { return fileText(sccLines(st, true)); }

std::string sccWithPaintOn(Station& st) {
  const int fps = st.fps();
  return fileText(sccFileLines(st, true, [&](Lines& lines, int i, const CaptionBlock& b, bool first, double lastOut) {
    if (!first && lastOut + 0.2 < b.in) addLine(lines, SEGaTC(lastOut, fps), "942c");
    addLine(lines, SEGaTC(b.in, fps), (first ? "942C  9429 " : "9420 ") + rowWords(st, i, b), i);
  }));
}

WriteResult writeSccFile(Station& st, const std::string& path) {
  st.ui.setPointer(Pointer::Hourglass);
  const std::string file = sccText(st);
  st.ui.setPointer(Pointer::Default);
  return writeFileTelling(st.ui, path, file);
}

WriteResult mnu_cc_scc(Station& st) {
  if (!scanCaptions(st, ScanMode::WholeScript)) return {};
  warnLateSccCaptions(st);
  auto path = chooseCaptionFile(st, {u"Create Scenarist DVD Closed Caption file (*.scc)",
                                     u"Scenarist DVD closed caption files (*.scc)|*.scc", u".scc",
                                     u"Create .scc file"});
  if (!path) return {};
  return writeSccFile(st, *path);
}

}  // namespace quillon
