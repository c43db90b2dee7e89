#include "dubbing/dub_marks.h"

#include "core/timecode.h"
#include "dubbing/dub_cue.h"

namespace quillon {

void mnu_dub_blo(Station& st) {
  Session& s = st.s;
  MenuItemState& item = st.view.menu("mnu_dub_blo");
  if (!s.cueInOnly && s.blockStart == 0) {
    st.view.panel(8).text = u"Cue-out...";
    s.blockStart = transformadaTCactual(s);
    item.caption = u"Cue out";
    return;
  }
  item.caption = u"Cue-in";
  const double now = transformadaTCactual(s);
  if (!(now > s.blockStart)) return;  // the operator went back: the mark stays
  if (st.pauseVideo) st.pauseVideo(st);
  st.view.panel(8).text.clear();
  s.blockIn = s.blockStart;
  s.blockOut = now;
  pickCharacterFor(st);
  s.blockStart = 0;
}

}  // namespace quillon
