// The Video menu's commands beyond play and seek: slow motion, the video
// standard, the info box, the clipboard item, full screen.
#pragma once

#include "core/station.h"

namespace quillon {

// mnu_vid_slo_rate: asks the slow-motion rate in percent. A rate outside
// 10 to 90 becomes 25.
void mnu_vid_slo_rate(Station& st);
// mnu_vid_slo_set: slow motion on or off, shown by mnu_vid_vel_slo's mark.
void mnu_vid_slo_set(Station& st);
// Back to normal speed, the mark off.
void leaveSlowMotion(Station& st);

// mnu_NTSC, mnu_PAL, mnu_CINE: the converters' frame rate and the caption.
// The frame period of the opening stays.
void setVideoStandard(Station& st, int fps);
// "QUILLON: <file> - 25FPS".
u16 mainCaption(const Station& st);

// mnu_vid_inf.
void mnu_vid_inf(Station& st);
// mnu_grabframe: empties the clipboard and copies nothing.
void mnu_grabframe(Station& st);

// mnu_pan and its way back. In full screen the menus, toolbar, slider and
// time labels are hidden and Timer1 writes the time into the caption.
void enterFullScreen(Station& st);
void leaveFullScreen(Station& st);

}  // namespace quillon
