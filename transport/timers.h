// The main window's timers as the logic runs them. The window's event pump
// calls fireDueTimers on each turn; headless runs call it from the
// scripted interface's onPump, so that loops waiting on the position see it
// move as they would in the station.
#pragma once

#include "core/station.h"

namespace quillon {

// Takes the pedals' waiting changes (and looks for USB pedals come and
// gone, once a second), then runs every enabled timer
// whose time has come (Timer1, Timer2, Timer4, in that order). A timer
// that was late ticks once, not once per missed interval.
void fireDueTimers(Station& st);

// Timer4, while an edit waits: the label of the time being edited blinks.
void timer4Tick(Station& st);

}  // namespace quillon
