// Opening a video, and typing the timecode window of one that has none.
#pragma once

#include "core/station.h"

namespace quillon {

// Opens a video. An empty `path` asks the user with the file dialog;
// otherwise `path` is the command line, whose first and last characters
// (its quotation marks) are dropped. The frame rate and timecode window come
// from the QuickTime start timecode for a name ending in "mov" (case
// sensitive), from the 18-character file tag for any other. The video plays
// the moment it is open. A cancelled dialog leaves everything as it was.
void abrirvideo(Station& st, const u16& path);

// Closes the QuickTime timecode reader after the start timecode is read.
// The player seam's reading opens and closes its own reader, so nothing is
// left to close here; the step stays for the order of the opening.
void cleanUpPros(Station& st);

// mnu_video_tag: shows the first frame and one near the end so the user can
// read the burnt-in timecode there, and takes the window from the two
// answers.
void tagcurrentfile(Station& st);

}  // namespace quillon
