#include "simulation/sim_frame.h"

#include "core/media_player.h"
#include "core/timecode.h"
#include "transport/video_commands.h"

namespace quillon {

MainWindowLock lockMainWindow(Station& st) {
  MainWindowLock lock;
  ViewState& v = st.view;
  v.slVideo.visible = false;
  v.toolbarVisible = false;
  for (size_t m = 0; m < kLockedMenus.size(); ++m) {
    MenuItemState& item = v.menu(kLockedMenus[m]);
    lock.menuEnabled[m] = item.enabled;
    item.enabled = false;
  }
  return lock;
}

void unlockMainWindow(Station& st, const MainWindowLock& lock) {
  ViewState& v = st.view;
  v.slVideo.visible = v.toolbarVisible = !st.s.fullscreenmode;
  for (size_t m = 0; m < kLockedMenus.size(); ++m) v.menu(kLockedMenus[m]).enabled = lock.menuEnabled[m];
  v.overlays.focus = "slVideo";
  st.ui.setPointer(Pointer::Default);
}

bool videoEnded(const Session& s) {
  return s.g_dblPosActual >= s.videoDuration || (!s.g_fVideoRun && s.g_dblPosActual >= s.videoDuration - 0.01);
}

void waitForPosition(Station& st, double until, bool inclusive) {
  Session& s = st.s;
  while (s.g_fsim && !videoEnded(s)) {
    const double now = transformadaTCactual(s);
    if (inclusive ? now > until : now >= until) break;
    st.ui.pumpEvents();
  }
}

void showText1(Station& st) {
  OverlayState& ov = st.view.overlays;
  ov.Text1.Left = 0;
  ov.Text1.Visible = true;
  ov.Text1.Alignment = kAlignCentre;
  ov.focus = "Text1";
}

void hideText1(Station& st) {
  Text1State& box = st.view.overlays.Text1;
  box.Text.clear();
  box.SelStart = box.SelLength = 0;
  box.Left = -1000;
  box.Visible = false;
}

void jumpLongGap(Station& st, int i) {
  const Session& s = st.s;
  const double cueIn = s.scan.cueIn[i];
  if (s.g_dblPosActual + s.tcStart + 10.0 < cueIn && s.jumpToNextBlock) ira(st, transformadainversa(s, cueIn - 2.0));
}

void normalSpeed(Station& st) {
  if (!st.s.wysiwygCapable && st.player) st.player->setRate(1.0);
  st.view.menu("mnu_vid_vel_slo").checked = false;
  if (st.s.g_fVideoRun) st.s.g_fVideoRun = false;
}

void runOut(Station& st) {
  Session& s = st.s;
  s.simEndPosition = s.g_dblPosActual + 0.1;
  // A paused video would never get there.
  while (s.g_fVideoRun && s.g_dblPosActual < s.videoDuration && s.g_dblPosActual < s.simEndPosition)
    st.ui.pumpEvents();
}

}  // namespace quillon
