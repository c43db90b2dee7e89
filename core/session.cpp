#include "core/session.h"

#include <algorithm>

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
      tagAt(kScanCapacity + 1, 0),
      records(kScanCapacity + 1),
      captionRows(kScanCapacity + 1) {}

void ScanTable::clear() {
  // The whole capacity: a scan stopped on a fault leaves a count of 1 over
  // entries it had already filled. Each scan starts here, so the reset is
  // done field by field without building a fresh record per entry.
  std::fill(cueIn.begin(), cueIn.end(), 0.0);
  std::fill(cueOut.begin(), cueOut.end(), 0.0);
  std::fill(posDigit.begin(), posDigit.end(), u'\0');
  std::fill(alignChar.begin(), alignChar.end(), u'\0');
  std::fill(styleChar.begin(), styleChar.end(), u'\0');
  std::fill(isSubtitle.begin(), isSubtitle.end(), false);
  std::fill(voiceOn.begin(), voiceOn.end(), false);
  std::fill(voiceIndex.begin(), voiceIndex.end(), 0.0);
  std::fill(tagAt.begin(), tagAt.end(), 0);
  for (auto& t : text) t.clear();
  for (auto& t : noteText) t.clear();
  static const SubtitleRecord kEmpty{};
  for (auto& r : records) {
    r.number = 0;
    r.cueInSeconds = r.cueOutSeconds = 0;
    r.cueInText.clear();
    r.cueOutText.clear();
    r.position = kEmpty.position;
    r.alignment = kEmpty.alignment;
    r.style = kEmpty.style;
    r.line1.clear();
    r.line2.clear();
    r.dialogue = false;
    r.imageFileName.clear();
  }
  subtitleCount = 0;
}

void ScanTable::clearCaptionRows() {
  for (auto& rows : captionRows)
    for (auto& r : rows) r.clear();
}

}  // namespace quillon
