// What both simulation engines share: taking over the main window and
// giving it back, the dubbing text box across the picture, the jump over a
// long gap, the end-of-video test of their wait loops, and the pumped waits
// themselves.
#pragma once

#include <array>

#include "core/station.h"
#include "script/timing_run.h"

namespace quillon {

// The main window as a simulation found it, to be given back on every way out.
struct MainWindowLock {
  std::array<bool, kLockedMenus.size()> menuEnabled{};
};

// Hides slVideo and Toolbar1 and disables the top menus, so that nothing
// but the simulation's own keys can act while it runs.
MainWindowLock lockMainWindow(Station& st);
// Brings them back (the slider and toolbar only outside full screen, whose
// layout has none), gives slVideo the focus and the pointer its normal shape.
void unlockMainWindow(Station& st, const MainWindowLock& lock);

// The video has come to its end: the position reached the duration, or the
// main timer stopped the video in its last 10 ms, after which the position
// is not read again and would otherwise never reach the duration.
bool videoEnded(const Session& s);

// Pumps while the video position is below `until` (or not above it, with
// `inclusive`), the video has not ended and the simulation runs.
void waitForPosition(Station& st, double until, bool inclusive);

// The dubbing text box `Text1` across the picture, centred and with the
// focus, for the length of a simulation; and put away again after it.
void showText1(Station& st);
void hideText1(Station& st);

// A gap of over ten seconds before entry i is jumped (when the operator
// asked for it), leaving two seconds of run-in.
void jumpLongGap(Station& st, int i);

// Common start: normal speed, the video flag cleared.
void normalSpeed(Station& st);
// The closing run-out: the video runs on for a tenth of a second.
void runOut(Station& st);

}  // namespace quillon
