#include "transport/video_open.h"

#include <cmath>

#include "core/media_player.h"
#include "core/timecode.h"
#include "subtitling/retiming.h"
#include "transport/file_tag.h"
#include "transport/video_commands.h"
#include "transport/video_menu.h"

namespace quillon {

namespace {

const u16 kOpenFilter = u"Media files|*.avi;*.wmv;*.asf;*.mov;*.mpg;*.mpeg|All files|*.*";

// The path less its last component, with the separator.
std::string folderOf(const std::string& path) {
  auto slash = path.find_last_of('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

// Runs the video from where it stands until the position reaches `until`,
// then pauses it. Ends early when the video stops by itself at its end, or
// when a player that does not move has had two seconds more than needed.
void playUntil(Station& st, double until) {
  const double deadline = st.ui.timeOfDay() + (until - st.s.g_dblPosActual) + 2;
  videostart(st);
  while (st.s.g_dblPosActual < until && st.s.g_fVideoRun && st.ui.timeOfDay() < deadline) st.ui.pumpEvents();
  videostop(st);
}

// The typed answer reshaped ("HHMMSS", "HHMMSSFF") and read; -1 after the
// converter's own box.
double typedTimecode(Station& st, const u16& typed, u16& shaped) {
  shaped = expandTypedTimecode(typed);
  return TCaSEG(shaped, st.fps(), st.ui);
}

}  // namespace

void cleanUpPros(Station&) {}

void abrirvideo(Station& st, const u16& path) {
  Session& s = st.s;
  ViewState& v = st.view;

  if (path.empty()) {
    FileDialogRequest req;
    req.title = u"Open video file";
    req.filter = kOpenFilter;
    req.initialDir = fromUtf8(s.dialogInitDir);
    auto chosen = st.ui.openFileDialog(req);
    if (!chosen || chosen->empty()) return;
    s.videoFile = fromUtf8(*chosen);
    s.dialogInitDir = folderOf(*chosen);
  } else {
    s.videoFile = path.size() > 2 ? path.substr(1, path.size() - 2) : u16();
    if (s.videoFile.empty()) return;
  }
  const std::string file = toUtf8(s.videoFile);

  st.ui.setPointer(Pointer::Hourglass);
  v.menu("mnu_pan").enabled = true;
  v.panel(3).text = u"Opening video...";
  const std::optional<u16> tag = readFileTag(file);
  v.LabTimecode.visible = true;
  if (!tag) {
    st.ui.setPointer(Pointer::Default);
    return;
  }
  v.menu("mnu_sub_exp").enabled = true;

  const bool quickTime = right(s.videoFile, 3) == u"mov";
  if (quickTime) {
    setVideoStandard(st, 30);
    const double start = st.player ? st.player->quickTimeStartTimecode(file, 30) : 0;
    s.TCInitial = SEGaTC(start, 30);
    s.TCBase = TCaFRAMES(s.TCInitial, 30);
    s.tcStart = start;
    v.LabCom.caption = SEGaTC(s.tcStart, 30);
    v.LabTimecode.caption = v.LabCom.caption;
    cleanUpPros(st);
  } else {
    applyFileTag(s, v, *tag);
  }

  // The rendered simulation stays off in every session.
  s.wysiwygCapable = false;
  v.menu("mnu_WYS").enabled = false;
  v.menu("mnu_WYS").checked = false;
  for (const char* m : {"mnu_WYS_font", "mnu_WYS_hpos", "mnu_WYS_vpos"}) v.menu(m).visible = false;
  v.panel(3).enabled = false;
  if (!st.player) {
    st.ui.setPointer(Pointer::Default);
    critical(st.ui, u"Error: Cannot create video object");
    return;
  }

  MediaPlayer& p = *st.player;
  // A player that cannot build the playback of this file is as good as no
  // player: the same box, and the window stays as it was.
  if (!p.renderFile(file)) {
    v.panel(3).text.clear();
    st.ui.setPointer(Pointer::Default);
    critical(st.ui, u"Error: Cannot create video object");
    return;
  }
  p.setVolume(s.muteOn ? -10000 : 0);
  p.setWindow(5, 0, 360, 270, true);
  s.videoDuration = p.duration();
  p.setRate(1);

  s.noframes = SEGaFRAMES(s.videoDuration, s.g_fps);
  if (st.cleanSubtitlesArray) st.cleanSubtitlesArray(st);
  s.qcInputName = s.videoFile;
  s.qcOutputName = left(s.videoFile, static_cast<long>(s.videoFile.size()) - 4) + u" - QC" + right(s.videoFile, 4);

  if (quickTime) {
    s.tcEnd = s.tcStart + s.videoDuration;
    s.TCFinal = SEGaTC(s.tcEnd, s.g_fps);
    v.LabDur.caption = s.TCFinal;
    applyTrack(st, u'S');
  } else {
    setVideoTimecodeWindow(s, v, mid(*tag, 3, 16));
    applyTrack(st, u'R');
  }

  v.panel(3).text = u"Loading video...";
  v.slVideo.max = std::nearbyint(s.videoDuration);
  s.g_dblPosActual = 0;
  s.keyDigitsForward = true;
  s.g_fsim = s.g_fspot = s.g_fedit = false;

  for (const char* m : {"mnu_ctlVideo", "mnu_tex_par", "mnu_sub", "mnu_dub", "mnu_cc"}) v.menu(m).enabled = true;
  v.caption = mainCaption(st);

  s.framePeriod = 1.0 / s.g_fps;
  v.slVideo.enabled = true;
  v.toolbarEnabled = true;
  v.menu("mnu_herr").enabled = true;
  st.ui.setPointer(Pointer::Default);

  resumevideo(st);
  v.overlays.focus = "slVideo";
  v.panel(3).text.clear();
}

void tagcurrentfile(Station& st) {
  if (!videoOpen(st)) return;
  Session& s = st.s;
  ViewState& v = st.view;
  leaveSlowMotion(st);
  s.g_fVideoRun = false;
  v.LabTimecode.visible = v.LabCom.visible = v.LabDur.visible = false;
  auto showLabels = [&] { v.LabTimecode.visible = v.LabCom.visible = v.LabDur.visible = true; };

  // The frame a second into the file, where its burnt-in timecode can be read.
  ira(st, 0);
  playUntil(st, 1);
  auto answer = st.ui.inputBox(u"Enter initial timecode...", g_appTitle, u"00:00:00:00");
  if (!answer || answer->empty()) return showLabels();
  u16 initialText;
  double initial = typedTimecode(st, *answer, initialText);
  if (initial == -1) return showLabels();
  initial -= 1;

  // And five seconds before the end.
  ira(st, s.videoDuration - 6);
  playUntil(st, s.videoDuration - 5);
  answer = st.ui.inputBox(u"Enter final timecode ...", g_appTitle, SEGaTC(initial + s.videoDuration - 5, st.fps()));
  u16 finalText;
  const double final = typedTimecode(st, answer.value_or(u16()), finalText);
  if (final == -1) return showLabels();

  s.tcStart = initial < 0 ? 0 : initial;
  s.tcEnd = final + 5 > initial ? final + 5 : s.tcStart + s.videoDuration;
  v.LabCom.caption = initialText;
  v.LabDur.caption = SEGaTC(s.tcEnd, st.fps());
  ira(st, 0);
  videostop(st);
  showLabels();
}

}  // namespace quillon
