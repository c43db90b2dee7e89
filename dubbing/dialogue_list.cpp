#include "dubbing/dialogue_list.h"

#include <vector>

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/tag_grammar.h"

namespace quillon {

std::optional<u16> dialogueList(Station& st) {
  if (!attachDocument(st)) return std::nullopt;
  if (!scanSubtitles(st, ScanMode::Selection) && !scanSubtitles(st, ScanMode::WholeScript)) return std::nullopt;
  const ScanTable& t = st.s.scan;
  const Roster& r = st.s.roster;
  const int fps = st.fps();
  std::vector<long> perCharacter(kRosterCapacity + 1, 0);
  long total = 0;
  u16 report = u"Dialog number\tCharacter\tCue-in\tCue-out\tDuration\tDialog\r";
  for (int i = 1; i <= t.count(); ++i) {
    if (t.isSubtitle[i]) continue;
    const int v = static_cast<int>(t.voiceIndex[i]);
    ++total;
    report += numberText(static_cast<double>(total)) + TAB + r.voces[static_cast<size_t>(v)] + TAB +
              SEGaTC(t.cueIn[i], fps) + TAB + SEGaTC(t.cueOut[i], fps) + TAB + SEGaTC(t.cueOut[i] - t.cueIn[i], fps) +
              TAB + t.text[i] + CR;
    if (v >= 0 && v <= kRosterCapacity) ++perCharacter[static_cast<size_t>(v)];
  }
  for (int k = 1; k <= r.numvoces && k < kRosterCapacity; ++k)
    report += r.voces[k] + u":\t" + formatNumber(static_cast<double>(perCharacter[k]), "0") + CR;
  report += u"Total:\t" + formatNumber(static_cast<double>(total), "0");
  return report;
}

void mnu_dub_out(Station& st) {
  auto report = dialogueList(st);
  if (!report) return;
  msgBox(st.ui, *report);
  st.ui.clearClipboard();
  st.ui.setClipboard(*report);
}

}  // namespace quillon
