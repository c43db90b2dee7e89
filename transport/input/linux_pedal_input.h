// USB foot pedals on the Linux input subsystem: /dev/input/event* nodes,
// and /dev/hidraw* for pedals whose reports the kernel does not map to
// keys. Pedals are found in sysfs; inotify on the device folders tells
// when one may have come or gone. An open pedal is read by a watcher
// thread that queues one change per press and per release.
//
// A node that answers none of the input ioctls (a named pipe, a file) is
// read as records come: `struct input_event` records, or one-byte HID
// reports when its name holds "hidraw".
#pragma once

#include <memory>
#include <string>

#include "core/event_queue.h"
#include "core/pedal_input.h"
#include "transport/input/input_watcher.h"

namespace quillon {

class LinuxPedalInput : public PedalInput {
 public:
  // The sysfs tree and the device folder; tests give trees of their own.
  explicit LinuxPedalInput(std::string sysRoot = "/sys", std::string devRoot = "/dev");
  ~LinuxPedalInput() override;
  LinuxPedalInput(const LinuxPedalInput&) = delete;
  LinuxPedalInput& operator=(const LinuxPedalInput&) = delete;

  std::vector<PedalDeviceInfo> devices() override;
  bool devicesMayHaveChanged() override;
  PedalOpen open(const std::string& path) override;
  void close() override;
  bool isOpen() const override { return fd_ >= 0 && !watcher_->gone(); }
  std::string openPath() const override { return path_; }
  bool takeSwitchChange(int& pedalSwitch) override { return changes_.pop(pedalSwitch); }
  void setEventNotifier(std::function<void()> notify) override { changes_.setNotifier(std::move(notify)); }
  std::string readerGroup(const std::string& path) override;

 private:
  std::string sysRoot_, devRoot_;
  int inotify_ = -1;
  bool watching_ = false;  // both device folders are watched
  bool asked_ = false;     // devicesMayHaveChanged has been called
  int fd_ = -1;
  std::string path_;
  std::unique_ptr<InputWatcher> watcher_;
  EventQueue<int> changes_;
};

}  // namespace quillon
