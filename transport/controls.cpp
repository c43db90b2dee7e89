#include "transport/controls.h"

#include "subtitling/retiming.h"
#include "transport/keys.h"
#include "transport/video_commands.h"

namespace quillon {

void toolbarClick(Station& st, int index) {
  if (!videoOpen(st)) return;
  switch (index) {
    case 1: mnu_com(st); break;
    case 2: jump(st, -10); break;
    case 3: back5seconds(st); break;
    case 4: backonesecond(st); break;
    case 5: backoneframe(st); break;
    case 6:
      st.ui.setPointer(Pointer::Default);
      togglePlay(st);
      break;
    case 7: advanceoneframe(st); break;
    case 8: advanceonesecond(st); break;
    case 9: advance5seconds(st); break;
    case 10: jump(st, 10); break;
    case 11: mnu_fin(st); break;
    default: return;
  }
  st.view.overlays.focus = "slVideo";
}

void sliderScroll(Station& st) {
  if (!videoOpen(st)) return;
  if (st.s.frameStepFlag) {
    st.s.frameStepFlag = false;
    return;
  }
  ira(st, st.view.slVideo.value);
}

void labTimecodeClick(Station& st) { spaceMark(st); }
void labTimecodeDoubleClick(Station& st) { mnu_tex_iTC(st); }
void labComDoubleClick(Station& st) { mnu_tag_in(st); }
void labDurDoubleClick(Station& st) { mnu_tag_out(st); }

}  // namespace quillon
