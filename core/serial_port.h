// The serial-port seam of the foot pedal: a port by number, its modem status
// lines read as events by the transport layer.
#pragma once

namespace quillon {

class SerialPort {
 public:
  virtual ~SerialPort() = default;
  // Opens COM`port` (1 to 4); false when the device is missing or busy.
  virtual bool open(int port) = 0;
  virtual void close() = 0;
  virtual bool isOpen() const = 0;
};

}  // namespace quillon
