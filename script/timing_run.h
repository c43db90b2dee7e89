// What the subtitle and the caption timing runs share: the window taken from
// the operator for a run and given back after it, the waits on the video, and
// the marking of one cue-in and cue-out.
#pragma once

#include <array>
#include <cstdint>

#include "core/station.h"

namespace quillon {

// The menus a timing run or a simulation takes away from the operator.
inline constexpr std::array<const char*, 7> kLockedMenus = {"mnu_file", "mnu_ctlVideo", "mnu_sub", "mnu_dub",
                                                            "mnu_cc",   "mnu_herr",     "mnu_hlp"};

// The coming text is grey until its cue-in, white while it is on.
constexpr uint32_t kTextComing = 0xC0C0C0, kTextOn = 0xFFFFFF;

// The waits end with the video. Timer1 stops reading the position once it
// is within a hundredth of a second of the end, so that is the end here too:
// a wait for the exact length could outlast a video that has stopped.
bool beforeVideoEnd(const Session& s);

// Yields to the event loop while `keepWaiting` holds.
template <class Pred>
void waitWhile(Station& st, Pred keepWaiting) {
  while (keepWaiting()) st.ui.pumpEvents();
}

// The cue labels as they were before the run.
struct KeptCueLabels {
  LabelState com, dur;
};

// Takes the window from the operator: the cue labels kept and cleared, the
// toolbar, the slider and the run's menus locked, the marks reset (centred,
// no spacebar mark pending), then the video resumed.
KeptCueLabels lockWindowForRun(Station& st);
// Every way out of a run: the labels and the window given back, the video
// paused, an error in status panel 8 cleared. The caller hides its overlay.
void giveWindowBack(Station& st, const KeptCueLabels& kept);

// Before each text: the cue labels cleared, the lower bound moved behind the
// last cue-out by `gap`, a pending "out is the next in" mark taken as the
// cue-in. False when the run has ended or the video is all but over.
bool readyForCue(Station& st, double lastCueOut, double gap, double& lowerBound);

struct Cue {
  double in = 0, out = 0;
};

// Waits for the cue-in mark, never earlier than `lowerBound`, and shows it
// with the cue-out a text of `chars` characters suggests.
Cue waitForCueIn(Station& st, double lowerBound, double chars);

// Waits for the cue-out and returns it. Assisted, the suggested cue-out
// passes by itself (with the gap). Otherwise it is the operator's mark, held
// back to `floorOut` when it comes too early; a one-line text sets floorOut to
// its cue-in plus the shortest time on air, a longer one keeps the last value.
double waitForCueOut(Station& st, bool assisted, const Cue& cue, double gap, bool oneLine, double& floorOut);

}  // namespace quillon
