#include "transport/keys.h"

#include "core/timecode.h"
#include "dubbing/dub_cue.h"
#include "subtitling/retiming.h"
#include "transport/video_commands.h"
#include "transport/video_menu.h"

namespace quillon {

namespace {

enum Key : int {
  kBackspace = 8,
  kEnter = 13,
  kEsc = 27,
  kSpace = 32,
  kPageUp = 33,
  kPageDown = 34,
  kEnd = 35,
  kHome = 36,
  kLeft = 37,
  kUp = 38,
  kRight = 39,
  kDown = 40,
  kDigit1 = 49,
  kDigit9 = 57,
  kKeyF = 70,
  kKeyG = 71,
  kKeyJ = 74,
  kKeyS = 83,
  kPad1 = 97,
  kPad9 = 105,
  kPadPlus = 107,
  kPadMinus = 109,
  kF1 = 112,
  kF12 = 123,
};

bool ctrlHeld(int shift) { return (shift & kCtrlMask) != 0; }

// The keys both the main window and the slider handle alike. The slider
// leaves out the arrows, pages, G and S: it moves itself on those, and its
// scroll seeks.
bool commonKey(Station& st, int key, int shift) {
  const bool ctrl = ctrlHeld(shift);
  if (key >= kDigit1 && key <= kDigit9) {
    jump(st, st.s.keyDigitsForward ? key - kDigit1 + 1 : -(key - kDigit1 + 1));
    return true;
  }
  if (key >= kPad1 && key <= kPad9) {
    jump(st, st.s.keyDigitsForward ? key - kPad1 + 1 : -(key - kPad1 + 1));
    return true;
  }
  if (key >= kF1 && key <= kF12) {
    if (ctrl)
      goToOrSetMarker(st, key - kF1 + 1);
    else
      setMarker(st, key - kF1 + 1);
    return true;
  }
  switch (key) {
    case kEnter:
      st.ui.setPointer(Pointer::Default);
      togglePlay(st);
      return true;
    case kEsc: escapeKey(st); return true;
    case kSpace:
      if (ctrl)
        mnu_iraultblo(st);
      else
        spaceMark(st);
      return true;
    case kHome: mnu_com(st); return true;
    case kEnd: mnu_fin(st); return true;
    case kUp: backoneframe(st); return true;
    case kDown: advanceoneframe(st); return true;
    case kPadMinus: setKeyDigitsForward(st, false); return true;
    case kPadPlus: setKeyDigitsForward(st, true); return true;
    default: return false;
  }
}

}  // namespace

void keyDown(Station& st, int keyCode, int shift) {
  const std::string& focus = st.view.overlays.focus;
  if (focus == "slVideo")
    sliderKeyDown(st, keyCode, shift);
  else if (focus == "Text1")
    text1KeyDown(st, keyCode, shift);
  else if (focus.empty())
    formKeyDown(st, keyCode, shift);
}

void formKeyDown(Station& st, int key, int shift) {
  if (!videoOpen(st)) return;
  if (commonKey(st, key, shift)) return;
  const bool ctrl = ctrlHeld(shift);
  switch (key) {
    case kLeft: backonesecond(st); break;
    case kRight: advanceonesecond(st); break;
    case kPageUp: back5seconds(st); break;
    case kPageDown: advance5seconds(st); break;
    case kKeyG: mnu_tex_iTC(st); break;
    case kKeyS:
      if (ctrl) mnu_vid_slo_set(st);
      break;
    case kBackspace:
      if (ctrl && st.clickMenu) st.clickMenu(st, "mnu_sub_ebu");
      break;
    default: break;
  }
}

void sliderKeyDown(Station& st, int key, int shift) {
  if (!videoOpen(st)) return;
  if (commonKey(st, key, shift)) return;
  if (key == kBackspace && ctrlHeld(shift) && st.clickMenu) st.clickMenu(st, "mnu_cc_scc");
}

void text1KeyDown(Station& st, int key, int shift) {
  const bool ctrl = ctrlHeld(shift);
  if (key == kEsc) {
    st.s.g_fsim = false;
    st.s.g_fedit = false;
    if (st.s.fullscreenmode) leaveFullScreen(st);
  } else if (ctrl && key == kKeyF) {
    if (st.s.fullscreenmode)
      leaveFullScreen(st);
    else
      enterFullScreen(st);
  } else if (ctrl && key == kKeyJ) {
    if (st.clickMenu) st.clickMenu(st, "mnu_sim_con");
  }
}

void escapeKey(Station& st) {
  Session& s = st.s;
  if (s.g_fsim) {
    s.g_fsim = false;
  } else if (s.g_fedit) {
    s.g_fedit = false;
  } else if (s.fullscreenmode) {
    leaveFullScreen(st);
  } else {
    st.view.panel(8).text.clear();
    s.blockStart = 0;
    if (s.g_fVideoRun) pausevideo(st);
  }
}

void spaceMark(Station& st) {
  Session& s = st.s;
  if (!s.cueInOnly && s.blockStart == 0) {
    st.view.panel(8).text = u"Cue-out...";
    s.blockStart = transformadaTCactual(s);
    return;
  }
  const double now = transformadaTCactual(s);
  if (now <= s.blockStart) return;
  pausevideo(st);
  st.view.panel(8).text.clear();
  s.lastCueIn = s.blockIn = s.blockStart;
  s.lastCueOut = s.blockOut = now;
  pickCharacterFor(st);
  s.blockStart = 0;
  st.view.menu("mnu_iraultblo").enabled = true;
  st.ui.setPointer(Pointer::Default);
}

void mnu_iraultblo(Station& st) {
  if (st.s.lastCueIn > 0) ira(st, transformadainversa(st.s, st.s.lastCueIn) - 1);
}

void setMarker(Station& st, int n) {
  st.s.markers.at(static_cast<size_t>(n)) = st.s.g_dblPosActual;
  if (n > 10) return;
  MenuItemState& m = st.view.menu("mnu_iramarca" + std::to_string(n));
  m.caption = (n == 10 ? u16(u"Marker 1&0 = ") : u"Marker &" + numberText(n) + u" = ") + st.view.LabTimecode.caption;
  m.enabled = true;
}

void goToOrSetMarker(Station& st, int n) {
  const double at = st.s.markers.at(static_cast<size_t>(n));
  if (at != 0)
    ira(st, at);
  else
    setMarker(st, n);
}

void mnu_iramarca(Station& st, int n) {
  if (st.view.menu("mnu_iramarca" + std::to_string(n)).enabled) ira(st, st.s.markers.at(static_cast<size_t>(n)));
}

void setKeyDigitsForward(Station& st, bool forward) {
  st.s.keyDigitsForward = forward;
  st.view.menu("mnu_dir").caption = forward ? u"Keyboard di&gits ->" : u"Keyboard di&gits <-";
}

void mnu_dir(Station& st) { setKeyDigitsForward(st, !st.s.keyDigitsForward); }

}  // namespace quillon
