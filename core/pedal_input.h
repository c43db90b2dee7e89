// The seam of foot pedals on the input subsystem (USB foot switches), beside
// the serial port's.
//
// Such a pedal has switches, numbered from 0 left to right. Each press and
// each release of a switch is one change, queued by the adapter's thread as
// the serial adapter queues a line change and taken on the window thread.
// Which of the station's pedal events a switch stands for is the transport
// logic's business, so that the order can be changed without the adapter.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace quillon {

struct PedalDeviceInfo {
  std::string path;  // "/dev/input/event7", "/dev/hidraw3"
  std::string name;  // "VEC USB Footpedal"
  uint16_t vendor = 0, product = 0;
  bool hidraw = false;  // raw reports rather than keys

  // The same pedal after it was unplugged and plugged in again, when its
  // node may have another number: "event:05f3:00ff:VEC USB Footpedal".
  std::string identity() const {
    char id[16];
    std::snprintf(id, sizeof id, ":%04x:%04x:", vendor, product);
    return (hidraw ? "hidraw" : "event") + std::string(id) + name;
  }
};

enum class PedalOpen { Opened, Missing, NotPermitted, Failed };

class PedalInput {
 public:
  virtual ~PedalInput() = default;

  // The pedals the machine has now, whether or not the user may read them.
  virtual std::vector<PedalDeviceInfo> devices() = 0;
  // Whether pedals may have come, gone or changed their permissions since
  // the last call: true on the first call, and always when the adapter
  // cannot tell.
  virtual bool devicesMayHaveChanged() = 0;

  // Opens a pedal by its node, or a pipe that carries what such a node
  // would; the one open before is closed first, whatever the outcome.
  virtual PedalOpen open(const std::string& path) = 0;
  virtual void close() = 0;
  // False when closed, and once the open pedal has gone (unplugged).
  virtual bool isOpen() const = 0;
  // The node asked for at the last open that succeeded; empty once closed.
  virtual std::string openPath() const = 0;

  // Takes the oldest switch change not yet taken; false when none waits.
  virtual bool takeSwitchChange(int& pedalSwitch) = 0;
  // Called on the adapter's thread whenever a change has been queued.
  virtual void setEventNotifier(std::function<void()> notify) = 0;

  // The group whose members may read `path` ("input"); empty when only
  // root may, or when it cannot be told.
  virtual std::string readerGroup(const std::string& path) = 0;
};

}  // namespace quillon
