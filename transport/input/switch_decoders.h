// What a pedal's node gives, turned into switch changes: the input
// subsystem's event records, or raw HID reports for a pedal whose switches
// the kernel does not map to keys.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace quillon {

class SwitchDecoder {
 public:
  using Sink = std::function<void(int pedalSwitch)>;
  virtual ~SwitchDecoder() = default;
  // Bytes as read: a device gives whole records or one report per read, a
  // pipe any part of its stream.
  virtual void feed(const uint8_t* data, size_t size, const Sink& sink) = 0;
};

// `struct input_event` records: each press and each release of a key is a
// change of its switch; key repeats and other event types are not.
class EventRecordDecoder : public SwitchDecoder {
 public:
  // `keys`: the key codes the device has, from which the switches are
  // numbered left to right. Empty when the node could not be asked (a
  // pipe): the buttons pedals use are then numbered from their codes.
  explicit EventRecordDecoder(std::vector<int> keys);
  void feed(const uint8_t* data, size_t size, const Sink& sink) override;
  // The switch a key code stands for; -1 for none.
  int switchOf(int code) const;

 private:
  std::vector<int> keys_;  // in switch order
  std::vector<uint8_t> partial_;
};

// HID reports whose first byte holds one bit per switch, the lowest bit
// the leftmost: a bit that differs from the report before is a change.
class HidReportDecoder : public SwitchDecoder {
 public:
  // `reportSize` 0: each feed is one report, as a device's read gives it;
  // otherwise the stream is cut into reports of that many bytes.
  explicit HidReportDecoder(size_t reportSize);
  void feed(const uint8_t* data, size_t size, const Sink& sink) override;

 private:
  void report(uint8_t switches, const Sink& sink);
  size_t reportSize_;
  uint8_t last_ = 0;
  std::vector<uint8_t> partial_;
};

}  // namespace quillon
