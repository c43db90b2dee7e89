// Test double of the serial-port seam: a machine with a given set of ports,
// where a test changes a status line by hand.
#pragma once

#include <set>
#include <vector>

#include "core/serial_port.h"

namespace quillon {

class ScriptedSerialPort : public SerialPort {
 public:
  std::set<int> presentPorts{1};  // ports the machine has
  std::vector<int> openAttempts;  // every port asked for, in order
  int openPort = 0;               // 0 when closed

  bool open(int port) override {
    openAttempts.push_back(port);
    if (openPort != 0 || !presentPorts.count(port)) return false;
    openPort = port;
    return true;
  }
  void close() override {
    openPort = 0;
    queue_.clear();
  }
  bool isOpen() const override { return openPort != 0; }

  bool takeEvent(CommEvent& ev) override { return queue_.pop(ev); }
  void setEventNotifier(std::function<void()> notify) override { queue_.setNotifier(std::move(notify)); }

  // The adapter is pulled out: the device leaves the machine, the open port
  // counts as closed and hears nothing more, events not yet taken included.
  // Putting it back is presentPorts.insert(n).
  void vanish() {
    presentPorts.erase(openPort);
    close();
  }

  // A pedal moves: its line changes once. Ignored while the port is closed,
  // as a real closed port hears nothing.
  void lineChange(CommEvent ev) {
    if (openPort != 0) queue_.push(ev);
  }

 private:
  CommEventQueue queue_;
};

}  // namespace quillon
