// Whole-script retiming: every tag of the selected block (or of the whole
// script) moved by an offset or carried to another frame rate, in place or
// into a new document; and the burnt-in timecode reference of the video.
#pragma once

#include "core/station.h"

namespace quillon {

void mnu_tex_off(Station& st);
void mnu_tex_PALtoNTSC(Station& st);
void mnu_tex_NTSCtoPAL(Station& st);
void mnu_tag_in(Station& st);
void mnu_tag_out(Station& st);
void mnu_tex_iTC(Station& st);

// The typed short forms of a timecode: "HHMMSS" becomes "HH:MM:SS:00",
// "HHMMSSFF" becomes "HH:MM:SS:FF"; anything else stays as it is.
u16 expandTypedTimecode(const u16& typed);

// The rewrite itself, for a block already read into the scan table:
// every entry's times moved by `offset` seconds, the find texts written at
// `fromFps`, the new times at `toFps`. In place, or as a new document.
void retimeInPlace(Station& st, double offset, int fromFps, int toFps);
void retimeIntoNewDocument(Station& st, double offset, int toFps);

}  // namespace quillon
