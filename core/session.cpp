#include "core/session.h"

namespace quillon {

ScanTable::ScanTable()
    : cueIn(kScanCapacity + 1, 0.0),
      cueOut(kScanCapacity + 1, 0.0),
      text(kScanCapacity + 1),
      posDigit(kScanCapacity + 1, u'\0'),
      alignChar(kScanCapacity + 1, u'\0'),
      styleChar(kScanCapacity + 1, u'\0'),
      noteText(kScanCapacity + 1),
      isSubtitle(kScanCapacity + 1, false),
      voiceOn(kScanCapacity + 1, false),
      voiceIndex(kScanCapacity + 1, 0.0),
      records(kScanCapacity + 1),
      captionRows(kScanCapacity + 1) {}

void ScanTable::clear() {
  // The whole capacity: a scan stopped on a fault leaves a count of 1 over
  // entries it had already filled.
  for (int i = 0; i <= kScanCapacity; ++i) {
    cueIn[i] = cueOut[i] = 0;
    text[i].clear();
    posDigit[i] = alignChar[i] = styleChar[i] = u'\0';
    noteText[i].clear();
    isSubtitle[i] = voiceOn[i] = false;
    voiceIndex[i] = 0;
    records[i] = SubtitleRecord{};
  }
  subtitleCount = 0;
}

void ScanTable::clearCaptionRows() {
  for (auto& rows : captionRows)
    for (auto& r : rows) r.clear();
}

}  // namespace quillon
