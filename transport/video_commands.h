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

// Toolbar button 6 and mnu_play: "Stop"/"Sto&p" with image 2 while
// playing, "Play"/"&Play" with image 1 otherwise.
void showPlayState(Station& st, bool playing);
// mnu_play, the Enter key, toolbar button 6 and the middle pedal: pause a
// running video, run a paused one, the labels following.
void togglePlay(Station& st);

// Relative seeks from the present position.
void jump(Station& st, double seconds);
void backonesecond(Station& st);
void advanceonesecond(Station& st);
void back5seconds(Station& st);
void advance5seconds(Station& st);
// A frame step raises the frame-step flag first, so that the slider's own
// move after it is not taken for a seek to whole seconds.
void backoneframe(Station& st);
void advanceoneframe(Station& st);
// mnu_5secf, mnu_10secf, mnu_20secf and their backward twins.
void mnu_5secf(Station& st);
void mnu_10secf(Station& st);
void mnu_20secf(Station& st);
void mnu_5secb(Station& st);
void mnu_10secb(Station& st);
void mnu_20secb(Station& st);
// mnu_com (Home): to the start. mnu_fin (End): one second before the end,
// and the video runs.
void mnu_com(Station& st);
void mnu_fin(Station& st);

// Installs the track command, ira, the run and pause commands as the
// station's hooks, so that folders below transport can reach them.
void installTransport(Station& st);

// The 33 ms position poll.
void timer1Tick(Station& st);

}  // namespace quillon
