// The transport commands that sit directly on the player: seeking, run and
// pause with the labels brought along, the audio track, mute.
#pragma once

#include "core/station.h"

namespace quillon {

bool videoOpen(const Station& st);

// Seek to `punto` seconds of the player's clock, limited to the video, and
// refresh the timecode label, the slider and the clipboard option.
void ira(Station& st, double punto);
void videostart(Station& st);
void videostop(Station& st);
// As videostop / videostart, with toolbar button 6 and mnu_play following.
void pausevideo(Station& st);
void resumevideo(Station& st);

// "L", "R" or "S": the balance and the one checked track item.
void applyTrack(Station& st, char16_t track);
// mnu_sil.
void toggleMute(Station& st);

// Installs the track command, ira and resumevideo as the station's hooks,
// so that folders below transport can reach them.
void installTransport(Station& st);

// The 33 ms position poll.
void timer1Tick(Station& st);

}  // namespace quillon
