#include "script/timing_run.h"

#include "core/timecode.h"
#include "script/timing_helpers.h"

namespace quillon {

namespace {

constexpr uint32_t kCueDue = 65280, kCueMarked = 255;

void setWindowEnabled(ViewState& v, bool enabled) {
  v.toolbarEnabled = enabled;
  v.slVideo.enabled = enabled;
  for (const char* m : kLockedMenus) v.menu(m).enabled = enabled;
}

}  // namespace

bool beforeVideoEnd(const Session& s) { return s.videoDuration - 0.01 > s.g_dblPosActual; }

KeptCueLabels lockWindowForRun(Station& st) {
  Session& s = st.s;
  ViewState& v = st.view;
  const KeptCueLabels kept{v.LabCom, v.LabDur};
  v.LabCom.caption.clear();
  v.LabDur.caption.clear();
  setWindowEnabled(v, false);
  s.g_fspot = true;
  s.ultimaposhcc = u"C";
  s.TCSpacebar = 0;
  s.outnextin = false;
  if (st.resumeVideo) st.resumeVideo(st);
  return kept;
}

void giveWindowBack(Station& st, const KeptCueLabels& kept) {
  Session& s = st.s;
  ViewState& v = st.view;
  v.LabCom = kept.com;
  v.LabDur = kept.dur;
  s.g_fsim = false;
  if (instr(v.panel(8).text, u"Error") > 0) v.panel(8).text.clear();
  if (st.pauseVideo) st.pauseVideo(st);
  setWindowEnabled(v, true);
  v.overlays.focus = "slVideo";
  s.g_fspot = false;
  st.ui.setPointer(Pointer::Default);
}

bool readyForCue(Station& st, double lastCueOut, double gap, double& lowerBound) {
  Session& s = st.s;
  if (!s.g_fsim) return false;
  st.view.LabCom.caption.clear();
  st.view.LabDur.caption.clear();
  if (lastCueOut > 0) lowerBound = lastCueOut + gap;
  if (s.outnextin) {
    s.outnextin = false;
    s.TCSpacebar = lowerBound;
  } else {
    s.TCSpacebar = 0;
  }
  return s.videoDuration - 0.1 > s.g_dblPosActual;
}

Cue waitForCueIn(Station& st, double lowerBound, double chars) {
  Session& s = st.s;
  ViewState& v = st.view;
  const int fps = st.fps();
  waitWhile(st, [&] { return s.TCSpacebar == 0 && beforeVideoEnd(s) && s.g_fsim; });
  Cue cue;
  cue.in = laterOf(s.TCSpacebar, lowerBound);
  v.LabCom.caption = SEGaTC(cue.in, fps);
  cue.out = cue.in + autoDuration(s, chars);
  v.LabDur.caption = SEGaTC(cue.out, fps);
  v.LabDur.foreColor = kTextOn;
  return cue;
}

double waitForCueOut(Station& st, bool assisted, const Cue& cue, double gap, bool oneLine, double& floorOut) {
  Session& s = st.s;
  ViewState& v = st.view;
  if (assisted) {
    waitWhile(st, [&] { return cue.out + gap > transformadaTCactual(s) && beforeVideoEnd(s) && s.g_fsim; });
    return cue.out;
  }
  s.TCSpacebar = 0;
  waitWhile(st, [&] {
    if (!(s.TCSpacebar == 0 && beforeVideoEnd(s) && s.g_fsim)) return false;
    // Green once the text has had its reading time.
    if (cue.out - s.delay < transformadaTCactual(s)) v.LabDur.foreColor = kCueDue;
    return true;
  });
  if (oneLine) floorOut = cue.in + s.minOnAir1;
  double out = s.TCSpacebar;
  if (!(s.TCSpacebar > floorOut)) {
    out = floorOut;
    waitWhile(st, [&] { return transformadaTCactual(s) < out && beforeVideoEnd(s) && s.g_fsim; });
  }
  v.LabDur.foreColor = kCueMarked;
  v.LabDur.caption = SEGaTC(out, st.fps());
  return out;
}

}  // namespace quillon
