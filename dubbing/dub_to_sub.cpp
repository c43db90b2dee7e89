#include "dubbing/dub_to_sub.h"

#include <algorithm>

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"
#include "script/timing_tag.h"

namespace quillon {

int mnu_DUB_SUB(Station& st) {
  if (!attachDocument(st)) return 0;
  DocumentService& d = *st.doc;
  const u16 text = d.content();
  if (text.empty()) return 0;
  st.s.roster.clear();
  st.s.pickingList = {};
  st.s.rosterFormList = {};
  st.ui.setPointer(Pointer::Hourglass);
  const long len = static_cast<long>(text.size());
  const int fps = st.fps();
  int converted = 0;
  long shift = 0;  // characters the replacements so far took out of the script
  long clean = 0;  // the script holds no unconverted tag before this offset

  long cur = instr(1, text, u"DUB[");
  long nxt = cur > 0 ? instr(cur + 5, text, u"DUB[") : 0;
  if (cur > 0 && nxt == 0) nxt = len;
  while (cur > 0 && nxt > 0) {
    const long t = cur - 1;  // 0-based offset of the tag's D
    if (tagChar(text, t, tag_place::kPosition) != CR) {
      const TimingTag tag = readTag(text, t, TimingTag::Kind::Dubbing);
      const double in = TCaSEG(tag.cueIn, fps, st.ui);
      const double out = TCaSEG(tag.cueOut, fps, st.ui);
      const long n = characterNameLength(text, t + tag_place::kTrailer);
      if (faultyNameLength(n)) {
        critical(st.ui, u"Error: Invalid format \r" + mid(text, t + 4, 33));
        st.s.scan.subtitleCount = 1;
        return converted;  // the pointer stays as it was
      }
      const u16 name = tagField(text, t, tag_place::kTrailer, n);
      FindRequest f;
      f.findText = mid(text, t + 1, 33) + name;
      f.replaceWith = u"S" + mid(text, t + 2, 32);
      f.replace = ReplaceMode::One;
      f.forward = true;
      f.wrap = false;
      // The first match from the top, found without reading the script from
      // the top for every tag: when nothing before this tag's place could
      // match (no unconverted "DUB[" there), the search starts at the place.
      const long expected = std::max(0L, t - shift);
      const long before = d.length();
      bool fromPlace = f.findText.find(u'^') == u16::npos && expected < before;
      if (fromPlace && clean < expected) {
        const u16 gap = d.text({clean, std::min(before, expected + 4)});
        for (size_t at = gap.find(u"DUB["); fromPlace && at != u16::npos; at = gap.find(u"DUB[", at + 1))
          if (clean + static_cast<long>(at) < expected && (at + 4 >= gap.size() || gap[at + 4] != CR))
            fromPlace = false;
      }
      if (fromPlace)
        d.setSelectionRange({expected, before});
      else
        d.selectAll();
      if (d.execute(f)) {
        shift += before - d.length();
        // Before this tag's place nothing changed, and the replacement at the
        // place begins with "S"; a match further on leaves the rest unread.
        const long at = d.selectionRange().start;
        clean = !fromPlace ? 0 : at == expected ? at + 1 : expected;
      } else if (fromPlace) {
        clean = expected;
        d.selectAll();  // a search that finds nothing leaves the whole script selected
      }
      if (in >= 0 && out >= 0) ++converted;
    }
    cur = nxt;
    nxt = cur < len ? instr(cur + 3, text, u"DUB[") : 0;
    if (cur < len && nxt == 0) nxt = len;
  }
  st.ui.setPointer(Pointer::Default);
  return converted;
}

}  // namespace quillon
