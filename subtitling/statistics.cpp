#include "subtitling/statistics.h"

#include <algorithm>

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"
#include "script/tag_grammar.h"

namespace quillon {

namespace {

void scanSelectionOrAll(Station& st) {
  if (!scanSubtitles(st, ScanMode::Selection)) scanSubtitles(st, ScanMode::WholeScript);
}

// Minutes of the video's timecode window that hold a whole subtitle. A
// subtitle that crosses a minute's edge counts for neither minute.
// `walked` gets the number of minutes visited, a part minute at the end
// included.
double subtitledMinutes(const Session& s, double& walked) {
  const ScanTable& tb = s.scan;
  double minutes = 0;
  walked = 0;
  for (double m = s.tcStart; m < s.tcEnd; m += 60) {
    walked += 1;
    for (int j = 1; j <= tb.count(); ++j) {
      if (tb.cueIn[j] > m && tb.cueOut[j] < m + 59) {
        minutes += 1;
        break;
      }
      if (tb.cueOut[j] > m + 59) break;
    }
  }
  return minutes;
}

}  // namespace

std::optional<u16> subtitleStatistics(Station& st) {
  if (!attachDocument(st)) return std::nullopt;
  scanSelectionOrAll(st);
  const Session& s = st.s;
  if (s.scan.subtitleCount <= 0) return std::nullopt;
  double totalMinutes = 0;
  const double minutes = std::min(subtitledMinutes(s, totalMinutes), totalMinutes);
  const double span = (s.tcEnd - s.tcStart) / 60;
  // Without a timecode window there is no time to divide by.
  const double percent = span != 0 ? minutes * 100 / span : 0;
  return u"Subtitling Statistics :\rFile: " + st.doc->fullName() + u"\r\rTotal subtitles: " +
         numberText(s.totalbloq1linea + s.totalbloq2lineas) + u"\r\r1-line: " + numberText(s.totalbloq1linea) +
         u"\r2-line: " + numberText(s.totalbloq2lineas) + u"\r\rTotal characters: " + numberText(s.totalChars) +
         u"\rSubtitled minutes: " + numberText(minutes) + u" = " + formatNumber(percent, "00") + u"%";
}

u16 subtitleList(Station& st) {
  scanSelectionOrAll(st);
  const ScanTable& tb = st.s.scan;
  const int fps = st.fps();
  u16 out = u"Subtitle number\tCue-in\tCue-out\tDuration\tText\r";
  for (int i = 1; i <= tb.count(); ++i) {
    if (!tb.isSubtitle[i]) continue;
    const u16 text = replaceAll(left(tb.text[i], static_cast<long>(tb.text[i].size()) - 2), u"\r", u"|");
    out += numberText(i) + u"\t" + SEGaTC(tb.cueIn[i], fps) + u"\t" + SEGaTC(tb.cueOut[i], fps) + u"\t" +
           SEGaTC(tb.cueOut[i] - tb.cueIn[i], fps) + u"\t" + text + u"\r";
  }
  return out;
}

void mnu_sim_est(Station& st) {
  if (auto text = subtitleStatistics(st)) msgBox(st.ui, *text);
}

void mnu_sub_out(Station& st) {
  if (!attachDocument(st)) return;
  const u16 list = subtitleList(st);
  msgBox(st.ui, list);
  st.ui.setClipboard(list);
}

}  // namespace quillon
