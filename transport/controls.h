// The main window's transport controls: Toolbar1, the slider slVideo and
// the clicks on the three time labels.
#pragma once

#include "core/station.h"

namespace quillon {

// Toolbar1, buttons 1 to 11 (start, back 10/5/1 s, frame back, play/stop,
// frame forward, forward 1/5/10 s, end). Nothing without a video; the
// slider takes the focus after each.
void toolbarClick(Station& st, int index);

// slVideo moved by the user to `slVideo.value`. After a frame step the
// slider's own move is swallowed once, so the exact frame position stays.
void sliderScroll(Station& st);

// LabTimecode: a click marks as the space bar does, a double click asks a
// timecode to go to. LabCom and LabDur: a double click sets the burnt-in
// timecode of the in or out point.
void labTimecodeClick(Station& st);
void labTimecodeDoubleClick(Station& st);
void labComDoubleClick(Station& st);
void labDurDoubleClick(Station& st);

}  // namespace quillon
