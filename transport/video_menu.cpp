#include "transport/video_menu.h"

#include <cmath>

#include "core/media_player.h"
#include "core/timecode.h"
#include "transport/video_commands.h"

namespace quillon {

namespace {

// The video's place in the main window, in pixels.
constexpr int kVideoLeft = 5, kVideoTop = 0, kVideoWidth = 360, kVideoHeight = 270;
// The main window in twips, normal and full screen.
constexpr int kNormalWidth = 5505, kNormalHeight = 6330;
constexpr int kFullWidth = 15100, kFullHeight = 11520;
constexpr int kTwipsPerPixel = 15;

constexpr const char* kHiddenInFullScreen[] = {"mnu_file", "mnu_ctlVideo", "mnu_dub", "mnu_sub",
                                               "mnu_herr", "mnu_hlp",      "mnu_cc"};

void showChrome(Station& st, bool visible) {
  ViewState& v = st.view;
  for (const char* m : kHiddenInFullScreen) v.menu(m).visible = visible;
  v.toolbarVisible = visible;
  v.LabTimecode.visible = visible;
  v.LabDur.visible = visible;
  v.LabCom.visible = visible;
  v.slVideo.visible = visible;
}

}  // namespace

void mnu_vid_slo_rate(Station& st) {
  // Rounded so that a rate of 0.9 is offered as "90", not as the binary
  // product's 90.00000000000001, which would read back out of range.
  const double percent = std::round(st.s.slowRate * 100 * 1e9) / 1e9;
  auto answer = st.ui.inputBox(u"Enter slow motion speed (10-90)", g_appTitle, numberText(percent));
  if (!answer || answer->empty()) return;
  double rate = leadingNumber(*answer) / 100;
  if (rate < 0.1 || rate > 0.9) rate = 0.25;
  st.s.slowRate = rate;
}

void mnu_vid_slo_set(Station& st) {
  if (!videoOpen(st)) return;
  MenuItemState& m = st.view.menu("mnu_vid_vel_slo");
  m.checked = !m.checked;
  st.player->setRate(m.checked ? st.s.slowRate : 1);
}

void leaveSlowMotion(Station& st) {
  if (st.player) st.player->setRate(1);
  st.view.menu("mnu_vid_vel_slo").checked = false;
}

u16 mainCaption(const Station& st) {
  return g_appTitle + u": " + st.s.videoFile + u" - " + formatNumber(st.s.g_fps, "00") + u"FPS";
}

void setVideoStandard(Station& st, int fps) {
  st.s.g_fps = static_cast<int16_t>(fps);
  st.view.menu("mnu_NTSC").checked = fps == 30;
  st.view.menu("mnu_PAL").checked = fps == 25;
  st.view.menu("mnu_CINE").checked = fps == 24;
  st.view.caption = mainCaption(st);
}

void mnu_vid_inf(Station& st) {
  if (!videoOpen(st)) return;
  const u16 text = u16(u"Info on:") + CR + u"File: " + st.s.videoFile + CR + u"Duration: " +
                   SEGaTC(st.s.videoDuration, st.fps()) + CR + u"Initial time code: " + st.view.LabCom.caption + CR +
                   u"Final time code: " + st.view.LabDur.caption;
  msgBox(st.ui, text);
}

void mnu_grabframe(Station& st) { st.ui.clearClipboard(); }

void enterFullScreen(Station& st) {
  showChrome(st, false);
  OverlayState& o = st.view.overlays;
  st.s.topventana = o.mainTop;
  st.s.leftventana = o.mainLeft;
  o.mainLeft = 0;
  o.mainTop = 0;
  st.view.mainWidth = kFullWidth;
  st.view.mainHeight = kFullHeight;
  if (st.player)
    st.player->setWindow(0, 0, static_cast<int>(std::nearbyint(double(kFullWidth) / kTwipsPerPixel)),
                         static_cast<int>(std::nearbyint(double(kFullHeight) / kTwipsPerPixel)), true);
  st.s.fullscreenmode = 1;
}

void leaveFullScreen(Station& st) {
  showChrome(st, true);
  OverlayState& o = st.view.overlays;
  st.view.mainWidth = kNormalWidth;
  st.view.mainHeight = kNormalHeight;
  o.mainLeft = static_cast<int>(st.s.leftventana);
  o.mainTop = static_cast<int>(st.s.topventana);
  if (st.player) st.player->setWindow(kVideoLeft, kVideoTop, kVideoWidth, kVideoHeight, true);
  st.view.caption = mainCaption(st);
  st.s.fullscreenmode = 0;
}

}  // namespace quillon
