// The windows that float over the video, as plain data: the subtitle overlay
// `FormaSub`, the caption overlay `FormaCC` and the main window's text box
// `Text1` that dubbing blocks sweep through. Geometry is in twips, taking the
// main window's Left and Top as reference; colours are 24-bit, blue high.
// The logic that fills and moves them lives in simulation/; the Qt windows
// render them.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/text.h"

namespace quillon {

// Text alignment of a label or text box.
inline constexpr int kAlignLeft = 1, kAlignCentre = 2, kAlignRight = 3;

// One label of an overlay: `Line1`, `Line2` or a row of `Labline`.
struct OverlayLine {
  u16 caption;
  uint32_t foreColor = 0xFFFFFF;
  bool italic = false;
  int alignment = kAlignCentre;
};

struct FormaSubState {
  OverlayLine Line1, Line2;
  int Left = 0, Top = 0;
  int Width = 5500, Height = 700;
  uint32_t BackColor = 0x000000;
  bool Visible = false;
};

struct FormaCCState {
  // Rows 1 to 4 of the control array; index 0 is unused.
  std::array<OverlayLine, 5> Labline;
  // The two lines the caption timing loop shows.
  OverlayLine Line1, Line2;
  int Left = 0, Top = 0;
  int Width = 5500, Height = 1000;
  uint32_t BackColor = 0x000000;
  bool Visible = false;

  OverlayLine& labline(int row) { return Labline.at(static_cast<size_t>(row)); }
  const OverlayLine& labline(int row) const { return Labline.at(static_cast<size_t>(row)); }
};

// The main window's text box for dubbing dialogue. It rests off to the left
// and hidden; a simulation brings it in.
struct Text1State {
  u16 Text;
  int SelStart = 0, SelLength = 0;
  int Alignment = kAlignLeft;
  int Left = -1000;
  bool Visible = false;
};

struct OverlayState {
  FormaSubState FormaSub;
  FormaCCState FormaCC;
  Text1State Text1;
  // `frmMain.Left` and `frmMain.Top`, in twips.
  int mainLeft = 0, mainTop = 0;
  // Name of the control holding the keyboard focus ("slVideo", "FormaSub",
  // "FormaCC", "Text1"); empty when the main window itself has it.
  std::string focus;
};

}  // namespace quillon
