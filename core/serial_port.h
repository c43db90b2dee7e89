// The serial-port seam of the foot pedal: a port by number, its modem status
// lines read as communications events by the transport layer.
//
// The pedal sends no data: each pedal is wired to one status line and a
// change of that line is the whole message. The adapter watches the lines
// on a thread of its own and queues one event per change; the window thread
// takes them from the queue in its event pump, so the pedal logic runs on
// the window thread like any key.
#pragma once

#include <cstdint>
#include <functional>

#include "core/event_queue.h"

namespace quillon {

// Event codes of the serial control (`CommEvent`), as the pedal logic tests them.
enum class CommEvent : int16_t {
  comEvSend = 1,
  comEvReceive = 2,
  comEvCTS = 3,  // forward pedal
  comEvDSR = 4,  // middle pedal
  comEvCD = 5,   // rewind pedal
  comEvRing = 6,
};

using CommEventQueue = EventQueue<CommEvent>;

class SerialPort {
 public:
  virtual ~SerialPort() = default;
  // Opens COM`port` (1 to 4); false when the device is missing or busy, and
  // false when a port is already open, whichever it is.
  virtual bool open(int port) = 0;
  virtual void close() = 0;
  virtual bool isOpen() const = 0;

  // Takes the oldest status-line event not yet taken; false when none
  // waits. Called from the window thread.
  virtual bool takeEvent(CommEvent& ev) {
    (void)ev;
    return false;
  }
  // Called on the adapter's thread whenever an event has been queued, so
  // the owner can post a wake-up to its window thread.
  virtual void setEventNotifier(std::function<void()> notify) { (void)notify; }
};

}  // namespace quillon
