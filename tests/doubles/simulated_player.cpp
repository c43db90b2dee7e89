#include "doubles/simulated_player.h"

#include <algorithm>

namespace quillon {

double SimulatedPlayer::now() const { return clock_ ? clock_() : 0; }

void SimulatedPlayer::settle() {
  double t = now();
  if (running_) {
    position_ = std::min(duration_, position_ + (t - since_) * rate_);
    if (position_ >= duration_) running_ = false;  // stops at the end
  }
  since_ = t;
}

bool SimulatedPlayer::renderFile(const std::string& path) {
  if (fails("renderFile")) return false;
  open_ = true;
  running_ = false;
  path_ = path;
  duration_ = fileDuration;
  position_ = 0;
  rate_ = 1;
  since_ = now();
  return true;
}

// An open player whose call does not fail, its position brought up to now.
bool SimulatedPlayer::ready(const char* call) {
  if (!open_ || fails(call)) return false;
  settle();
  return true;
}

void SimulatedPlayer::release() {
  open_ = running_ = false;
  path_.clear();
}

void SimulatedPlayer::setCurrentPosition(double seconds) {
  if (!ready("setCurrentPosition")) return;
  position_ = std::clamp(seconds, 0.0, duration_);
  ++seeks;
}

}  // namespace quillon
