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

void SimulatedPlayer::run() {
  if (ready("run") && position_ < duration_) running_ = true;
}

void SimulatedPlayer::pause() {
  if (ready("pause")) running_ = false;
}

void SimulatedPlayer::stop() {
  if (ready("stop")) running_ = false;
}

void SimulatedPlayer::release() {
  open_ = running_ = false;
  path_.clear();
}

double SimulatedPlayer::duration() { return open_ && !fails("duration") ? duration_ : 0; }

double SimulatedPlayer::currentPosition() { return ready("currentPosition") ? position_ : 0; }

void SimulatedPlayer::setCurrentPosition(double seconds) {
  if (!ready("setCurrentPosition")) return;
  position_ = std::clamp(seconds, 0.0, duration_);
  ++seeks;
}

void SimulatedPlayer::setRate(double rate) {
  if (ready("setRate")) rate_ = rate;
}

void SimulatedPlayer::setVolume(long volume) {
  if (!fails("setVolume")) volume_ = volume;
}

void SimulatedPlayer::setBalance(long balance) {
  if (!fails("setBalance")) balance_ = balance;
}

void SimulatedPlayer::setWindow(int left, int top, int width, int height, bool visible) {
  if (!fails("setWindow")) window = {left, top, width, height, visible};
}

double SimulatedPlayer::quickTimeStartTimecode(const std::string&, int) {
  return fails("quickTimeStartTimecode") ? 0 : fileStartTimecode;
}

}  // namespace quillon
