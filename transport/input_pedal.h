// USB foot pedals on the input subsystem, beside the serial pedal: the
// pedals the port menu lists, the one chosen (kept in options.conf as
// `pedal.device`), the event each switch stands for (`pedal.map`), and a
// pedal unplugged and plugged in again picked up without a restart.
//
// A switch change is a line change by another road: it goes through
// onCommEvent and Timer2's fold like the serial pedal's, so the two act
// alike.
#pragma once

#include <string_view>
#include <vector>

#include "core/serial_port.h"
#include "core/station.h"

namespace quillon {

// The port menu lists at most this many pedals, as mnu_footpedalusb1 on.
inline constexpr int kMaxListedPedals = 8;
// How often the devices are looked at for pedals come and gone.
inline constexpr double kPedalWatchSeconds = 1;
// Left rewinds, the middle plays or stops, right goes forward.
inline constexpr std::string_view kDefaultPedalMap = "5,4,3";

// "5,4,3": the event of each switch from the left, 3, 4, 5 or 0 for none,
// at most eight; empty for text that is not such a list.
std::vector<CommEvent> parsePedalMap(std::string_view text);
// The station's order (`pedal.map`), the default when unset or unreadable.
std::vector<CommEvent> pedalMap(const Station& st);
// What the station does on a settled pedal event: "3 forward".
std::string pedalActionText(CommEvent ev);

// Takes every switch change the input pedal has queued, oldest first, into
// onCommEvent; a switch the order leaves without an event is ignored.
void deliverInputPedalEvents(Station& st);

// At the start: the port menu lists the pedals, and the chosen one opens
// when it is there. Nothing is said when it is not: it is opened when it
// comes, as it would be after being unplugged.
void startPedalInput(Station& st);
// From the event pump, at most once every kPedalWatchSeconds: the list
// follows pedals come and gone, and the chosen pedal, when not open, is
// opened again once it is back.
void watchPedalInput(Station& st);

// mnu_footpedalusbN: opens the Nth pedal listed and makes it the choice;
// the pedal open and chosen is closed and forgotten instead. A pedal the
// user may not read gives a box that names the group to join.
void mnu_footpedalusb(Station& st, int n);
// mnu_footpedalmap: the event of each switch, left to right.
void mnu_footpedalmap(Station& st);

}  // namespace quillon
