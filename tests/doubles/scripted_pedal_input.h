// Test double of the input-pedal seam: a machine with the pedals a test
// plugs in and pulls out, whose switches the test presses by hand.
#pragma once

#include <algorithm>
#include <set>
#include <utility>

#include "core/event_queue.h"
#include "core/pedal_input.h"

namespace quillon {

class ScriptedPedalInput : public PedalInput {
 public:
  std::vector<PedalDeviceInfo> present;  // pedals plugged in
  std::set<std::string> unreadable;      // nodes the user may not read
  std::string group = "input";           // the group that may read them
  std::vector<std::string> openAttempts;
  bool changed = true;  // what devicesMayHaveChanged answers next

  std::vector<PedalDeviceInfo> devices() override { return present; }
  bool devicesMayHaveChanged() override { return std::exchange(changed, false); }

  PedalOpen open(const std::string& path) override {
    openAttempts.push_back(path);
    close();
    if (unreadable.count(path)) return PedalOpen::NotPermitted;
    if (!plugged(path)) return PedalOpen::Missing;
    open_ = path;
    return PedalOpen::Opened;
  }
  void close() override {
    open_.clear();
    gone_ = false;
    queue_.clear();
  }
  bool isOpen() const override { return !open_.empty() && !gone_; }
  std::string openPath() const override { return open_; }
  bool takeSwitchChange(int& pedalSwitch) override { return queue_.pop(pedalSwitch); }
  void setEventNotifier(std::function<void()> notify) override { queue_.setNotifier(std::move(notify)); }
  std::string readerGroup(const std::string&) override { return group; }

  // A switch moves once; ignored unless a pedal is open.
  void change(int pedalSwitch) {
    if (isOpen()) queue_.push(pedalSwitch);
  }
  void plug(const PedalDeviceInfo& pedal) {
    present.push_back(pedal);
    changed = true;
  }
  // The pedal leaves the machine; open, it falls silent.
  void unplug(const std::string& path) {
    std::erase_if(present, [&](const PedalDeviceInfo& d) { return d.path == path; });
    if (open_ == path) {
      gone_ = true;
      queue_.clear();
    }
    changed = true;
  }

 private:
  bool plugged(const std::string& path) const {
    return std::any_of(present.begin(), present.end(), [&](const PedalDeviceInfo& d) { return d.path == path; });
  }
  std::string open_;
  bool gone_ = false;
  EventQueue<int> queue_;
};

}  // namespace quillon
