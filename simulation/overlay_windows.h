// What the overlay windows do: the subtitle overlay `FormaSub`, the caption
// overlay `FormaCC` and the dubbing text box `Text1`. The Qt windows forward
// their key and mouse events here; the simulation and the timing loops place
// and fill them through the layout functions.
#pragma once

#include "core/station.h"

namespace quillon {

// Virtual key codes the handlers know.
namespace vk {
inline constexpr int Tab = 9, Enter = 13, Esc = 27, Space = 32, PageUp = 33, PageDown = 34;
inline constexpr int Left = 37, Up = 38, Right = 39, Down = 40;
inline constexpr int D1 = 49, D2 = 50;
inline constexpr int B = 66, C = 67, D = 68, I = 73, L = 76, N = 78, R = 82, T = 84, U = 85;
// Modifier mask of a key event.
inline constexpr int ShiftMask = 1;
}  // namespace vk

// Mouse buttons.
inline constexpr int kLeftButton = 1, kRightButton = 2;

// ---- FormaSub -------------------------------------------------------------

void formaSubKeyDown(Station& st, int keyCode, int shift);
// A press of any button on the window or on one of its lines.
void formaSubMouseDown(Station& st, int button);
// A click on the window itself (not on a line).
void formaSubClick(Station& st);

// ---- FormaCC --------------------------------------------------------------

inline constexpr int kCaptionCharTwips = 150, kCaptionRowTwips = 250;
inline constexpr int kPictureWidthTwips = 5500, kPictureHeightTwips = 4500;

// Left of a caption `Width` twips wide by its alignment: L, C, or anything
// else (right).
int captionLeft(const Station& st, char16_t align, int width);
// Top of a caption `height` twips high at hexadecimal position `position`;
// never higher than 750 twips below the main window's top.
int captionTop(const Station& st, int position, int height);
// Lays out and shows a caption: `rows` from row 1, `longest` the length of
// the longest row, `rowCount` the number of the last non-empty row.
void showCaption(Station& st, const std::array<u16, 4>& rows, int longest, int rowCount, int position,
                 char16_t align);

void formaCCKeyDown(Station& st, int keyCode, int shift);
void formaCCMouseDown(Station& st, int button);
void formaCCClick(Station& st);

}  // namespace quillon
