#include <cmath>

#include "captions/caption_checks.h"
#include "captions/caption_layout.h"
#include "core/timecode.h"
#include "script/document_ops.h"
#include "simulation/overlay_windows.h"
#include "simulation/sim_frame.h"
#include "simulation/simulate_blocks.h"
#include "transport/video_commands.h"

namespace quillon {

namespace {

void clearRows(FormaCCState& f) {
  for (int r = 1; r <= 4; ++r) f.labline(r).caption.clear();
}

void hideCaptionOverlay(Station& st) {
  st.view.overlays.FormaCC.Visible = false;
  if (st.view.overlays.focus == "FormaCC") st.view.overlays.focus = "Text1";
}

// Shows caption i from its cue-in to its cue-out. False when the
// simulation was stopped before the cue-in.
bool playCaption(Station& st, int i) {
  Session& s = st.s;
  const ScanTable& t = s.scan;
  FormaCCState& f = st.view.overlays.FormaCC;
  StatusPanelState& panel = st.view.panel(3);
  clearRows(f);
  panel.text = u"Caption";
  panel.enabled = false;
  waitForPosition(st, t.cueIn[i], false);
  panel.enabled = true;
  if (!s.g_fsim) return false;

  const bool italic = t.styleChar[i] == u'I';
  for (int r = 1; r <= 4; ++r) f.labline(r).italic = italic;
  const CaptionBlock b = captionBlock(st, i);
  if (b.longest > kCaptionRowWidth) {
    pausevideo(st);
    const u16 tc = SEGaTC(t.cueIn[i], st.fps());
    msgBox(st.ui, u"Error: Maximum number of characters per row (32) exceeded in caption in [" + tc + u"]\r\r" +
                      t.text[i]);
    st.ui.setPointer(Pointer::Default);
    findFromTop(st, tc);
    s.g_fsim = false;
  } else {
    showCaption(st, t.captionRows[static_cast<size_t>(i)], b.longest, b.rows, b.position, b.align);
    st.view.overlays.focus = "FormaCC";
  }
  waitForPosition(st, t.cueOut[i], true);
  hideCaptionOverlay(st);
  panel.enabled = false;
  panel.text.clear();
  clearRows(f);
  return true;
}

}  // namespace

void simulateCaptions(Station& st, SimulationStart start) {
  Session& s = st.s;
  OverlayState& ov = st.view.overlays;
  const ScanTable& t = s.scan;
  StatusPanelState& panel = st.view.panel(3);

  normalSpeed(st);
  s.g_fsim = true;
  const MainWindowLock lock = lockMainWindow(st);
  // The hourglass stays on for the whole of a caption simulation.
  st.ui.setPointer(Pointer::Hourglass);
  showText1(st);
  panel.text = u"CC Decoding...";
  clearRows(ov.FormaCC);

  const int count = t.count();
  const bool started = s.g_fsim && count > 0;
  if (started) {
    // A caption needs two seconds of lead, not the half second of a subtitle.
    int i = startSimulationRun(st, start, 2.0);

    for (; i <= count; ++i) {
      if (!s.g_fsim || !(s.videoDuration - 0.1 > s.g_dblPosActual)) break;
      if (s.followSimulation) findCueIn(st, SEGaTC(t.cueIn[i], st.fps()));
      jumpLongGap(st, i);
      // A caption more than a second late is not shown at all.
      if (!t.isSubtitle[i] || transformadaTCactual(s) - 1.0 > t.cueIn[i]) continue;
      if (!playCaption(st, i)) break;
    }

    hideCaptionOverlay(st);
    runOut(st);
    // A caption simulation leaves the video paused where it stopped.
    pausevideo(st);
  }

  s.g_fsim = false;
  hideText1(st);
  panel.text.clear();
  panel.enabled = true;
  for (OverlayLine* l : {&ov.FormaCC.Line1, &ov.FormaCC.Line2}) {
    l->italic = false;
    l->caption.clear();
  }
  hideCaptionOverlay(st);
  unlockMainWindow(st, lock);
}

}  // namespace quillon
