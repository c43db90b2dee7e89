// The foot pedal: three pedals on the modem status lines of a serial port.
// A burst of line changes settles for half a second (Timer2) and then the
// last line seen acts once.
#pragma once

#include "core/serial_port.h"
#include "core/station.h"

namespace quillon {

// A status line changed: the code is kept and Timer2 enabled. Enabling it
// while it runs does not restart it, so the whole burst acts once.
void onCommEvent(Station& st, CommEvent ev);
// Takes every event the port has queued, oldest first.
void deliverPedalEvents(Station& st);
// Timer2: off again, then forward (CTS), play/stop (DSR) or rewind (CD).
void timer2Tick(Station& st);
// Timer2's tick without acting: off again, and the code the burst left.
CommEvent settlePedal(Station& st);

// mnu_footpedalcom1 to mnu_footpedalcom4. The open port is not closed
// first, so a choice made while one is open fails with the message.
void mnu_footpedalcom(Station& st, int port);
// mnu_footpedaljump: seconds per forward or rewind press, 0 to 30.
void mnu_footpedaljump(Station& st);

}  // namespace quillon
