#include "dubbing/dub_to_sub.h"

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"

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

  long cur = instr(1, text, u"DUB[");
  long nxt = cur > 0 ? instr(cur + 5, text, u"DUB[") : 0;
  if (cur > 0 && nxt == 0) nxt = len;
  while (cur > 0 && nxt > 0) {
    const long t = cur - 1;  // 0-based offset of the tag's D
    if (!(t + 4 < len && text[static_cast<size_t>(t + 4)] == CR)) {
      const double in = TCaSEG(mid(text, t + 9, 11), fps, st.ui);
      const double out = TCaSEG(mid(text, t + 21, 11), fps, st.ui);
      long n = 0;
      while (n < 255 && t + 33 + n < len && text[static_cast<size_t>(t + 33 + n)] != CR) ++n;
      if (n == 1 || n >= 255) {
        critical(st.ui, u"Error: Invalid format \r" + mid(text, t + 4, 33));
        st.s.scan.subtitleCount = 1;
        return converted;  // the pointer stays as it was
      }
      const u16 name = mid(text, t + 34, n);
      FindRequest f;
      f.findText = mid(text, t + 1, 33) + name;
      f.replaceWith = u"S" + mid(text, t + 2, 32);
      f.replace = ReplaceMode::One;
      f.forward = true;
      f.wrap = false;
      d.selectAll();
      d.execute(f);
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
