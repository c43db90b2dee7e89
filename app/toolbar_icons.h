// The pictures of Toolbar1's buttons, drawn rather than loaded so the
// station carries no image files.
#pragma once

#include <QIcon>

namespace quillon {

// Image 1 play, 2 stop; 3 to 13 the buttons in order: start, back 10, 5
// and 1 seconds, frame back, (6 unused), frame forward, forward 1, 5 and 10
// seconds, end.
QIcon toolbarIcon(int image);

}  // namespace quillon
