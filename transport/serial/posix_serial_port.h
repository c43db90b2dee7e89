// The foot pedal's port on a POSIX serial device.
//
// COM1 to COM4 are /dev/ttyS0 to /dev/ttyS3 unless QUILLON_COM1 ...
// QUILLON_COM4 name another device (a USB adapter is /dev/ttyUSB0). The
// port is opened without becoming the controlling terminal, DTR and RTS are
// raised to power the pedal, and a watcher thread queues one event per
// change of CTS, DSR or CD for the window thread to take.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "core/serial_port.h"
#include "transport/serial/modem_lines.h"
#include "transport/serial/modem_watcher.h"

namespace quillon {

// The lines of an open descriptor through the serial ioctls.
class PosixModemLines : public ModemLineSource {
 public:
  explicit PosixModemLines(int fd);
  bool counts(LineCounts& c) override;
  bool levels(LineLevels& l) override;
  Wait waitForChange() override;
  void interrupt() override;

 private:
  struct Waiter;
  int fd_;
  std::shared_ptr<Waiter> waiter_;
};

class PosixSerialPort : public SerialPort {
 public:
  // Makes the line source of a newly opened descriptor; tests put a
  // scripted one in place of the ioctls.
  using LineSourceFactory = std::function<std::unique_ptr<ModemLineSource>(int fd)>;

  explicit PosixSerialPort(LineSourceFactory factory = {});
  ~PosixSerialPort() override;
  PosixSerialPort(const PosixSerialPort&) = delete;
  PosixSerialPort& operator=(const PosixSerialPort&) = delete;

  // The device of COM`port`; empty for a port number below 1.
  static std::string devicePath(int port);

  bool open(int port) override;
  void close() override;
  // A device that went away while open counts as closed, so that the port
  // menu can open it again once it is back.
  bool isOpen() const override { return fd_ >= 0 && !watcher_->gone(); }
  bool takeEvent(CommEvent& ev) override { return events_.pop(ev); }
  void setEventNotifier(std::function<void()> notify) override { events_.setNotifier(std::move(notify)); }

 private:
  LineSourceFactory factory_;
  int fd_ = -1;
  std::unique_ptr<ModemWatcher> watcher_;
  CommEventQueue events_;
};

}  // namespace quillon
