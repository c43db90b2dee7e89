// A player for tests and headless runs: its position advances with a clock
// (the user-interface seam's time of day) at the set rate and stops at the
// end. Any call can be told to fail.
#pragma once

#include <functional>
#include <limits>
#include <set>
#include <string>

#include "core/media_player.h"

namespace quillon {

class SimulatedPlayer : public MediaPlayer {
 public:
  explicit SimulatedPlayer(std::function<double()> clock) : clock_(std::move(clock)) {}

  // What the next renderFile opens.
  double fileDuration = 60;
  double fileStartTimecode = 0;  // QuickTime start timecode in seconds
  // Names of calls that fail: "renderFile", "run", "setCurrentPosition", ...
  std::set<std::string> failing;
  // From this time of the clock on the player is gone, as when its process
  // dies in the middle of play: it no longer counts as open and every call
  // fails.
  double diesAt = std::numeric_limits<double>::infinity();

  bool renderFile(const std::string& path) override;
  bool isOpen() const override { return open_ && !dead(); }
  void run() override { if (ready("run") && position_ < duration_) running_ = true; }
  void pause() override { if (ready("pause")) running_ = false; }
  void stop() override { if (ready("stop")) running_ = false; }
  void release() override;
  double duration() override { return open_ && !fails("duration") ? duration_ : 0; }
  double currentPosition() override { return ready("currentPosition") ? position_ : 0; }
  void setCurrentPosition(double seconds) override;
  void setRate(double rate) override { if (ready("setRate")) rate_ = rate; }
  void setVolume(long volume) override { if (!fails("setVolume")) volume_ = volume; }
  void setBalance(long balance) override { if (!fails("setBalance")) balance_ = balance; }
  void setWindow(int left, int top, int width, int height, bool visible) override {
    if (!fails("setWindow")) window = {left, top, width, height, visible};
  }
  double quickTimeStartTimecode(const std::string&, int) override {
    return fails("quickTimeStartTimecode") ? 0 : fileStartTimecode;
  }

  bool running() const { return running_; }
  double rate() const { return rate_; }
  long volume() const { return volume_; }
  long balance() const { return balance_; }
  std::string path() const { return path_; }
  int seeks = 0;
  struct Window {
    int left = 0, top = 0, width = 0, height = 0;
    bool visible = false;
  } window;

 private:
  bool dead() const { return now() >= diesAt; }
  bool fails(const char* call) const { return dead() || failing.count(call) > 0; }
  double now() const;
  bool ready(const char* call);
  void settle();  // folds elapsed play time into the stored position

  std::function<double()> clock_;
  bool open_ = false, running_ = false;
  std::string path_;
  double duration_ = 0, position_ = 0, since_ = 0, rate_ = 1;
  long volume_ = 0, balance_ = 0;
};

}  // namespace quillon
