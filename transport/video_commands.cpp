#include "transport/video_commands.h"

#include <cmath>

#include "core/media_player.h"
#include "core/timecode.h"
#include "script/timing_tag.h"

namespace quillon {

namespace {

void showPosition(Station& st) {
  st.view.LabTimecode.caption = SEGaTC(transformadaTCactual(st.s), st.fps());
  st.view.slVideo.value = std::nearbyint(st.s.g_dblPosActual);  // half to even, as the slider converts
}

}  // namespace

void showPlayState(Station& st, bool playing) {
  ToolbarButtonState& b = st.view.toolbarButton(6);
  b.caption = playing ? u"Stop" : u"Play";
  b.image = playing ? 2 : 1;
  st.view.menu("mnu_play").caption = playing ? u"Sto&p" : u"&Play";
}

void togglePlay(Station& st) {
  if (st.s.g_fVideoRun)
    pausevideo(st);
  else
    resumevideo(st);
}

void jump(Station& st, double seconds) { ira(st, st.s.g_dblPosActual + seconds); }
void backonesecond(Station& st) { jump(st, -1); }
void advanceonesecond(Station& st) { jump(st, 1); }
void back5seconds(Station& st) { jump(st, -5); }
void advance5seconds(Station& st) { jump(st, 5); }

void backoneframe(Station& st) {
  st.s.frameStepFlag = true;
  jump(st, -st.s.framePeriod);
}

void advanceoneframe(Station& st) {
  st.s.frameStepFlag = true;
  jump(st, st.s.framePeriod);
}

void mnu_5secf(Station& st) { jump(st, 5); }
void mnu_10secf(Station& st) { jump(st, 10); }
void mnu_20secf(Station& st) { jump(st, 20); }
void mnu_5secb(Station& st) { jump(st, -5); }
void mnu_10secb(Station& st) { jump(st, -10); }
void mnu_20secb(Station& st) { jump(st, -20); }

void mnu_com(Station& st) { ira(st, 0); }

void mnu_fin(Station& st) {
  ira(st, st.s.videoDuration - 1);
  if (!st.s.g_fVideoRun) videostart(st);
}

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
  showPlayState(st, false);
}

void resumevideo(Station& st) {
  videostart(st);
  showPlayState(st, true);
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
  // A player gone in the middle of play reports no position any more: the
  // video ends where it stood, so that every wait on it ends as at the end.
  // The timecode window is cut with it, so positions keep their timecodes.
  if (st.player && !st.player->isOpen() && s.g_dblPosActual < s.videoDuration) {
    s.tcEnd = transformadaTCactual(s);
    s.videoDuration = s.g_dblPosActual;
  }
  if (s.videoDuration - 0.01 > s.g_dblPosActual) {
    if (st.player) s.g_dblPosActual = st.player->currentPosition();
  } else {
    videostop(st);
    showPlayState(st, false);
  }
  showPosition(st);
  if (s.fullscreenmode) st.view.caption = st.view.LabTimecode.caption;
  if (s.timecodeInClipboard) {
    st.ui.clearClipboard();
    st.ui.setClipboard(TimingTag::shortDubbing(st.view.LabTimecode.caption).text());
  }
}

}  // namespace quillon
