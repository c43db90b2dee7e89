// The keyboard command map. Each key goes to one handler, by the focus:
// the slider's when `slVideo` has it, the text box's when `Text1` has it,
// the main window's otherwise. Key codes are the virtual key codes; `shift`
// is the modifier mask, Ctrl being 2.
#pragma once

#include "core/station.h"

namespace quillon {

inline constexpr int kShiftMask = 1, kCtrlMask = 2, kAltMask = 4;

// Routes a key by `view.overlays.focus` ("slVideo", "Text1", or the main
// window); keys for the overlays are theirs and are not taken here.
void keyDown(Station& st, int keyCode, int shift);

// The three handlers. The main window's and the slider's do nothing
// without a video; the text box's acts in any state.
void formKeyDown(Station& st, int keyCode, int shift);
void sliderKeyDown(Station& st, int keyCode, int shift);
void text1KeyDown(Station& st, int keyCode, int shift);

// Esc: ends a simulation, else an edit, else full screen; with none of
// them, drops the open dubbing mark and pauses a running video.
void escapeKey(Station& st);
// Space (and a click on LabTimecode): the first press opens a dubbing
// block at the present timecode, the second closes it later in time, stops
// the video and hands the block to the character choice and the tag.
void spaceMark(Station& st);
// Ctrl+Space and mnu_iraultblo: one second before the last block's cue-in.
void mnu_iraultblo(Station& st);

// Markers 1 to 12. Setting keeps the position; markers 1 to 10 show it in
// their menu item. A marker at 0 is unset, and going to it sets it.
void setMarker(Station& st, int n);
void goToOrSetMarker(Station& st, int n);
// mnu_iramarca1 to mnu_iramarca10.
void mnu_iramarca(Station& st, int n);

// mnu_dir: the digit keys jump forward or back.
void mnu_dir(Station& st);
void setKeyDigitsForward(Station& st, bool forward);

}  // namespace quillon
