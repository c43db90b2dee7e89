// What the pedal's watcher needs of a serial device, one step above the
// ioctls, so that tests can move the lines by hand (a pseudo-terminal has
// no modem lines to move).
#pragma once

#include <cstdint>

namespace quillon {

// Transitions seen on each input line since the device was opened.
struct LineCounts {
  uint32_t cts = 0, dsr = 0, cd = 0;
};

// Present level of each input line.
struct LineLevels {
  bool cts = false, dsr = false, cd = false;
};

class ModemLineSource {
 public:
  virtual ~ModemLineSource() = default;

  // false when the driver keeps no counts.
  virtual bool counts(LineCounts& c) = 0;
  // false when the levels cannot be read.
  virtual bool levels(LineLevels& l) = 0;

  enum class Wait { Changed, Interrupted, Unsupported };
  // Blocks until CTS, DSR or CD changes, or interrupt() is called.
  virtual Wait waitForChange() = 0;
  // From another thread: ends a waitForChange in progress, and makes every
  // later one return Interrupted at once.
  virtual void interrupt() = 0;
};

}  // namespace quillon
