#include "transport/video_commands.h"

#include <cmath>

#include "core/media_player.h"
#include "core/timecode.h"

namespace quillon {

namespace {

void showPosition(Station& st) {
  st.view.LabTimecode.caption = SEGaTC(transformadaTCactual(st.s), st.fps());
  st.view.slVideo.value = std::nearbyint(st.s.g_dblPosActual);  // half to even, as the slider converts
}

void setPlayButton(Station& st, bool playing) {
  ToolbarButtonState& b = st.view.toolbarButton(6);
  b.caption = playing ? u"Stop" : u"Play";
  b.image = playing ? 2 : 1;
  st.view.menu("mnu_play").caption = playing ? u"Sto&p" : u"&Play";
}

}  // namespace

bool videoOpen(const Station& st) { return st.player && st.player->isOpen(); }

void ira(Station& st, double punto) {
  if (!videoOpen(st)) return;
  Session& s = st.s;
  s.g_dblPosActual = std::max(0.0, std::min(punto, s.videoDuration));
  st.player->setCurrentPosition(s.g_dblPosActual);
  showPosition(st);
  if (s.timecodeInClipboard) {
    st.ui.clearClipboard();
    st.ui.setClipboard(st.view.LabTimecode.caption);
  }
}

void videostart(Station& st) {
  if (st.player) st.player->run();
  st.s.g_fVideoRun = true;
}

void videostop(Station& st) {
  if (st.player) st.player->pause();
  st.s.g_fVideoRun = false;
}

void pausevideo(Station& st) {
  videostop(st);
  setPlayButton(st, false);
}

void resumevideo(Station& st) {
  videostart(st);
  setPlayButton(st, true);
}

void applyTrack(Station& st, char16_t track) {
  st.s.audioTrack = track;
  long balance;
  const char* item;
  switch (track) {
    case u'L': balance = -10000; item = "mnu_vid_track_l"; break;
    case u'R': balance = 10000; item = "mnu_vid_track_r"; break;
    case u'S': balance = 0; item = "mnu_vid_track_st"; break;
    default: return;
  }
  if (st.player) st.player->setBalance(balance);
  for (const char* m : {"mnu_vid_track_l", "mnu_vid_track_r", "mnu_vid_track_st"}) st.view.menu(m).checked = false;
  st.view.menu(item).checked = true;
}

void toggleMute(Station& st) {
  if (!videoOpen(st)) return;
  MenuItemState& m = st.view.menu("mnu_sil");
  m.checked = !m.checked;
  st.s.muteOn = m.checked;
  st.player->setVolume(st.s.muteOn ? -10000 : 0);
}

void installTransport(Station& st) {
  st.trackCommand = applyTrack;
  st.ira = ira;
  st.resumeVideo = resumevideo;
  st.pauseVideo = pausevideo;
  st.videoStart = videostart;
  st.videoStop = videostop;
}

void timer1Tick(Station& st) {
  Session& s = st.s;
  if (!s.g_fVideoRun) return;
  if (s.videoDuration - 0.01 > s.g_dblPosActual) {
    if (st.player) s.g_dblPosActual = st.player->currentPosition();
  } else {
    videostop(st);
    setPlayButton(st, false);
  }
  showPosition(st);
  if (s.fullscreenmode) st.view.caption = st.view.LabTimecode.caption;
  if (s.timecodeInClipboard) {
    st.ui.clearClipboard();
    st.ui.setClipboard(u"DUB[" + st.view.LabTimecode.caption + u"]\t");
  }
}

}  // namespace quillon
