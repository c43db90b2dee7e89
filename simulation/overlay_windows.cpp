#include "simulation/overlay_windows.h"

#include <algorithm>
#include <cmath>

#include "core/timecode.h"
#include "subtitling/subtitle_overlay.h"
#include "transport/video_commands.h"

namespace quillon {

namespace {

// The transport moves the keys ask for. A frame step raises the frame-step
// flag, so that the slider's own move after it does not seek.
void frameStep(Station& st, int frames) {
  st.s.frameStepFlag = true;
  ira(st, st.s.g_dblPosActual + frames * st.s.framePeriod);
}
void seekBy(Station& st, double seconds) { ira(st, st.s.g_dblPosActual + seconds); }

// What differs between the two overlays under the shared key table.
struct OverlayTarget {
  int16_t& position;
  int16_t topPosition;          // highest position the U and T keys reach
  std::vector<OverlayLine*> lines;  // the lines style and alignment keys act on
  std::vector<OverlayLine*> firstLine, secondLine;  // the 1 and 2 keys
};

void setAlignment(Station& st, OverlayTarget& t, int alignment, const char16_t* letter) {
  for (OverlayLine* l : t.lines) l->alignment = alignment;
  st.s.ultimaposhcc = letter;
}

void setItalics(Station& st, OverlayTarget& t, bool first, bool second, const char16_t* letter) {
  for (OverlayLine* l : t.firstLine) l->italic = first;
  for (OverlayLine* l : t.secondLine) l->italic = second;
  st.s.miItalStyle = letter;
}

// The cue-in and cue-out labels of an edit in progress.
LabelState& editedLabel(Station& st) { return st.s.editingcueout ? st.view.LabDur : st.view.LabCom; }

// The keys both overlays share. Frame steps in an edit may not cross the
// other mark or the neighbouring subtitles.
void overlayKey(Station& st, OverlayTarget& t, int keyCode, int shift) {
  Session& s = st.s;
  const u16& cueInLabel = st.view.LabCom.caption;
  const u16& cueOutLabel = st.view.LabDur.caption;
  switch (keyCode) {
    case vk::Esc:
      s.g_fsim = false;
      s.saveedittiming = false;
      s.g_fedit = false;
      break;
    case vk::Space:
      if (!s.g_fedit) {
        if (shift & vk::ShiftMask) s.outnextin = true;
        s.TCSpacebar = transformadaTCactual(s);
      }
      break;
    case vk::U:
      if (t.position < t.topPosition) ++t.position;
      break;
    case vk::D:
      if (t.position != 0) --t.position;
      break;
    case vk::T: t.position = t.topPosition; break;
    case vk::B: t.position = 0; break;
    case vk::L: setAlignment(st, t, kAlignLeft, u"L"); break;
    case vk::C: setAlignment(st, t, kAlignCentre, u"C"); break;
    case vk::R: setAlignment(st, t, kAlignRight, u"R"); break;
    case vk::I: setItalics(st, t, true, true, u"I"); break;
    case vk::N: setItalics(st, t, false, false, u"N"); break;
    case vk::D1: setItalics(st, t, true, false, u"1"); break;
    case vk::D2: setItalics(st, t, false, true, u"2"); break;
    case vk::Up:
      if (!s.g_fedit || (s.editingcueout ? cueOutLabel != cueInLabel : cueInLabel != SEGaTC(s.lowerlimit, st.fps())))
        frameStep(st, -1);
      break;
    case vk::Down:
      if (!s.g_fedit || (s.editingcueout ? cueOutLabel != SEGaTC(s.upperlimit, st.fps()) : cueInLabel != cueOutLabel))
        frameStep(st, 1);
      break;
    case vk::Left:
      if (!s.g_fedit) seekBy(st, -1);
      break;
    case vk::Right:
      if (!s.g_fedit) seekBy(st, 1);
      break;
    case vk::PageUp:
      if (!s.g_fedit) seekBy(st, -5);
      break;
    case vk::PageDown:
      if (!s.g_fedit) seekBy(st, 5);
      break;
    case vk::Enter:
      if (s.g_fspot) {
        if (s.g_fVideoRun) {
          pausevideo(st);
          s.ultimodelay = 0;
        } else {
          resumevideo(st);
          s.ultimodelay = s.delay;
        }
      }
      if (s.g_fedit) {
        s.saveedittiming = true;
        s.g_fedit = false;
      }
      break;
    case vk::Tab:
      if (s.g_fedit) {
        s.editingcueout = !s.editingcueout;
        ira(st, transformadainversa(s, TCaSEG(editedLabel(st).caption, st.fps(), st.ui)));
      }
      break;
    default: break;
  }
}

// An edit follows the display: the label under edit shows where the video is.
void followEdit(Station& st) {
  if (st.s.g_fedit) editedLabel(st).caption = st.view.LabTimecode.caption;
}

void timingPress(Station& st, int button) {
  st.s.TCSpacebar = transformadaTCactual(st.s);
  if (button == kRightButton) st.s.outnextin = true;
}

}  // namespace

// ---- FormaSub -------------------------------------------------------------

void formaSubKeyDown(Station& st, int keyCode, int shift) {
  FormaSubState& f = st.view.overlays.FormaSub;
  f.Left = st.view.overlays.mainLeft + 60;
  OverlayTarget t{st.s.ultimaposenpantalla, 9, {&f.Line1, &f.Line2}, {&f.Line1}, {&f.Line2}};
  overlayKey(st, t, keyCode, shift);
  placeSubtitleOverlay(st, !f.Line2.caption.empty(), st.s.ultimaposenpantalla);
  followEdit(st);
}

void formaSubMouseDown(Station& st, int button) { timingPress(st, button); }

void formaSubClick(Station& st) {
  if (st.s.g_fspot) st.s.g_fsim = false;
}

// ---- FormaCC --------------------------------------------------------------

int captionLeft(const Station& st, char16_t align, int width) {
  const int left = st.view.overlays.mainLeft;
  if (align == u'L') return left + 60;
  if (align == u'C') return left + 60 + (kPictureWidthTwips - width) / 2;
  return left - 60 + (kPictureWidthTwips - width);
}

int captionTop(const Station& st, int position, int height) {
  const int raw = static_cast<int>(std::floor(kPictureHeightTwips - position * kCaptionRowTwips - height));
  return st.view.overlays.mainTop + std::max(raw, 750);
}

void showCaption(Station& st, const std::array<u16, 4>& rows, int longest, int rowCount, int position,
                 char16_t align) {
  FormaCCState& f = st.view.overlays.FormaCC;
  f.Width = longest * kCaptionCharTwips;
  f.Left = captionLeft(st, align, f.Width);
  for (int r = 1; r <= 4; ++r) f.labline(r).caption = rows[static_cast<size_t>(r - 1)];
  f.Height = std::max(rowCount, 1) * kCaptionRowTwips;
  f.Top = captionTop(st, position, f.Height);
  f.Visible = true;
}

void formaCCKeyDown(Station& st, int keyCode, int shift) {
  FormaCCState& f = st.view.overlays.FormaCC;
  // A caption position is one hexadecimal digit.
  OverlayTarget t{st.s.ultimaposenpantallacc, 15, {}, {}, {}};
  for (int r = 1; r <= 4; ++r) t.lines.push_back(&f.labline(r));
  t.lines.push_back(&f.Line1);
  t.lines.push_back(&f.Line2);
  t.firstLine = {&f.labline(1), &f.Line1};
  t.secondLine = {&f.labline(2), &f.labline(3), &f.labline(4), &f.Line2};
  overlayKey(st, t, keyCode, shift);
  const char16_t align = st.s.ultimaposhcc.empty() ? u'C' : st.s.ultimaposhcc[0];
  f.Left = captionLeft(st, align, f.Width);
  f.Top = captionTop(st, st.s.ultimaposenpantallacc, f.Height);
  followEdit(st);
}

void formaCCMouseDown(Station& st, int button) { timingPress(st, button); }

void formaCCClick(Station& st) {
  if (st.s.g_fspot) st.s.g_fsim = false;
}

}  // namespace quillon
