#include "simulation/simulate_blocks.h"

#include <cmath>

#include "core/timecode.h"
#include "script/document_ops.h"
#include "simulation/frame_table.h"
#include "simulation/overlay_windows.h"
#include "simulation/reading_speed_color.h"
#include "simulation/sim_frame.h"
#include "subtitling/subtitle_overlay.h"
#include "transport/video_commands.h"
#include "transport/video_menu.h"

namespace quillon {

namespace {

constexpr uint32_t kWhite = 0xFFFFFF;

void showSubtitleOverlay(Station& st) {
  st.view.overlays.FormaSub.Visible = true;
  st.view.overlays.focus = "FormaSub";
}

void hideSubtitleOverlay(Station& st) {
  st.view.overlays.FormaSub.Visible = false;
  if (st.view.overlays.focus == "FormaSub") st.view.overlays.focus = "Text1";
}

// Lays one subtitle out on the overlay as the audience will see it.
void layOutSubtitle(Station& st, int i) {
  const Session& s = st.s;
  const ScanTable& t = s.scan;
  FormaSubState& f = st.view.overlays.FormaSub;
  applySubtitleStyle(f.Line1, f.Line2, t.styleChar[i]);
  f.Line1.alignment = f.Line2.alignment = overlayAlignment(u16(1, t.alignChar[i]));
  const u16& text = t.text[i];
  const long len = static_cast<long>(text.size());
  const uint32_t colour = s.colourFeedback ? readingSpeedColor(s.readingSpeed, t.cueIn[i], t.cueOut[i], len) : kWhite;
  f.Line1.foreColor = f.Line2.foreColor = colour;

  // A text shorter than its two trailing CRs cannot be cut; it shows as one line.
  const bool cutFails = len < 2;
  const long p = cutFails ? 0 : instr(left(text, len - 2), u"\r");
  const bool twoLines = p > 1 && !cutFails;
  if (twoLines) {
    f.Line1.caption = left(text, p);
    f.Line2.caption = right(text, len - p);
  } else {
    f.Line1.caption = text;
    f.Line2.caption.clear();
  }
  const char16_t digit = t.posDigit[i];
  // A position that is no digit leaves the window's height and top as they were.
  if (digit >= u'0' && digit <= u'9')
    placeSubtitleOverlay(st, twoLines, digit - u'0');
  else
    f.Left = st.view.overlays.mainLeft + 60;
  showSubtitleOverlay(st);
}

// Shows subtitle i from its cue-in to its cue-out. False when the
// simulation was stopped before the cue-in.
bool playSubtitle(Station& st, int i) {
  Session& s = st.s;
  const ScanTable& t = s.scan;
  StatusPanelState& panel = st.view.panel(3);
  FormaSubState& f = st.view.overlays.FormaSub;
  panel.text = u"Subtitle";
  if (s.wysiwygOn) {
    // The main timer draws; this loop only keeps time.
    waitForPosition(st, t.cueOut[i], true);
    return true;
  }
  waitForPosition(st, t.cueIn[i], false);
  panel.enabled = true;
  if (!s.g_fsim) return false;
  layOutSubtitle(st, i);
  waitForPosition(st, t.cueOut[i], true);
  panel.enabled = false;
  hideSubtitleOverlay(st);
  f.Line1.caption.clear();
  f.Line2.caption.clear();
  return true;
}

// Sweeps a dubbing block's highlight through Text1 in step with the video,
// so that the actor sees the pace. False when stopped before the cue-in.
bool playDubbingBlock(Station& st, int i) {
  Session& s = st.s;
  const ScanTable& t = s.scan;
  StatusPanelState& panel = st.view.panel(3);
  Text1State& box = st.view.overlays.Text1;
  if (t.cueIn[i] + 0.2 < transformadaTCactual(s) && s.jumpToNextBlock)
    ira(st, transformadainversa(s, t.cueIn[i] - 1.0));
  const long voice = std::lrint(t.voiceIndex[i]);
  panel.text = voice >= 0 && voice < static_cast<long>(s.roster.voces.size()) ? s.roster.voces[static_cast<size_t>(voice)] : u16();
  if (s.followSimulation) findFromTop(st, SEGaTC(t.cueIn[i], st.fps()));
  box.Text = t.text[i];
  box.SelStart = 0;
  box.SelLength = 0;
  waitForPosition(st, t.cueIn[i], false);
  panel.enabled = true;
  if (!s.g_fsim) return false;
  const double len = static_cast<double>(box.Text.size());
  const double span = t.cueOut[i] - t.cueIn[i];
  while (s.g_fsim && !videoEnded(s)) {
    const double now = transformadaTCactual(s);
    if (now > t.cueOut[i]) break;
    // A block with no length, or a position before its cue-in after a seek,
    // gives no valid selection; the last one stays.
    if (span != 0) {
      const double sel = std::trunc(len * (now - t.cueIn[i]) / span);
      if (sel >= 0) box.SelLength = static_cast<int>(std::min(sel, len));
    }
    st.ui.pumpEvents();
  }
  panel.enabled = false;
  panel.text.clear();
  box.Text.clear();
  return true;
}

}  // namespace

int startSimulationRun(Station& st, SimulationStart start, double lead) {
  Session& s = st.s;
  const ScanTable& t = s.scan;
  if (start == SimulationStart::Top) ira(st, 0);
  else if (start == SimulationStart::Selection) ira(st, transformadainversa(s, t.cueIn[1] - 2.0));
  st.view.panel(3).enabled = false;
  videostart(st);
  if (st.doc) st.doc->selectAll();
  int i = 1;
  if (start == SimulationStart::CurrentPosition)
    while (i <= t.count() && t.cueIn[i] - lead < transformadaTCactual(s)) ++i;
  return i;
}

void simulateBlocks(Station& st, SimulationStart start, WysiwygRenderer* renderer) {
  Session& s = st.s;
  OverlayState& ov = st.view.overlays;
  const ScanTable& t = s.scan;
  StatusPanelState& panel = st.view.panel(3);

  normalSpeed(st);
  const MainWindowLock lock = lockMainWindow(st);
  st.ui.setPointer(Pointer::Hourglass);
  if (s.wysiwygOn) {
    panel.text = u"Preparing...";
    if (renderer) renderer->setupFont(st);
    panel.text = u"Rendering...";
    if (renderer) renderer->generateFrames(st);
    panel.text = u"Loading...";
    cleanSubtitlesArray(s);
    fillSubtitlesArray(s);
    panel.text = u"Simulating...";
  }
  s.g_fsim = true;
  showText1(st);
  panel.text = u"Simulating...";
  ov.FormaSub.Line1.foreColor = ov.FormaSub.Line2.foreColor = kWhite;
  st.ui.setPointer(Pointer::Default);

  const int count = t.count();
  const bool started = s.g_fsim && count > 0;
  if (started) {
    ov.FormaSub.Line1.caption.clear();
    ov.FormaSub.Line2.caption.clear();
    // From the current timecode: the first entry at least half a second ahead.
    int i = startSimulationRun(st, start, 0.5);

    for (; i <= count; ++i) {
      if (t.text[i].empty() || !s.g_fsim || !(s.videoDuration - 0.1 > s.g_dblPosActual)) break;
      jumpLongGap(st, i);
      if (s.followSimulation) findCueIn(st, SEGaTC(t.cueIn[i], st.fps()));
      const bool goOn = t.isSubtitle[i] ? playSubtitle(st, i) : playDubbingBlock(st, i);
      if (!goOn) break;
    }

    hideSubtitleOverlay(st);
    runOut(st);
    if (s.wysiwygCapable && s.wysiwygOn && renderer) renderer->showSubtitle(0);
    videostop(st);
  }

  s.g_fsim = false;
  // The same way back as Ctrl+F and Esc: menus, labels and the window's size.
  if (s.fullscreenmode) leaveFullScreen(st);
  hideText1(st);
  ov.Text1.Alignment = kAlignLeft;
  panel.text.clear();
  panel.enabled = true;
  FormaSubState& f = ov.FormaSub;
  for (OverlayLine* l : {&f.Line1, &f.Line2}) {
    l->italic = false;
    l->foreColor = kWhite;
    l->caption.clear();
  }
  f.Height = 700;
  hideSubtitleOverlay(st);
  unlockMainWindow(st, lock);
}

}  // namespace quillon
