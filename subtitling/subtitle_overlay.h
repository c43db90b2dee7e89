// How the timing loop, the edit of one subtitle and the simulation dress the
// subtitle overlay: placement, alignment and the style letter its italics
// stand for.
#pragma once

#include "core/station.h"

namespace quillon {

// Left 60 twips into the main window; 700 high for two lines, or 350 high
// and 250 lower for one line, raised 350 twips per position step.
void placeSubtitleOverlay(Station& st, bool twoLines, int position);

// Label alignment of an alignment letter: L left, R right, else centred.
int overlayAlignment(u16v letter);
// The tag's alignment character: L and R stand, anything else is a blank.
char16_t tagAlignment(u16v letter);

// Sets both lines' italics by a style letter: N, I, 1 or 2. Any other letter
// leaves them as they are.
void applySubtitleStyle(OverlayLine& line1, OverlayLine& line2, char16_t style);
// The style letter the overlay's italics stand for: I, 1 (first line only),
// 2 (second line only) or N. One line is only ever I or N.
char16_t styleFromOverlay(const FormaSubState& f, bool twoLines);

}  // namespace quillon
