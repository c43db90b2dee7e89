// The thread that watches a port's modem status lines and turns each change
// into a communications event: CTS comEvCTS, DSR comEvDSR, CD comEvCD.
//
// It blocks until the driver reports a change and counts transitions, so a
// tap that comes and goes before the thread looks still gives its two
// events. A driver that cannot wait is polled; one that keeps no counts is
// polled for levels, and then a tap shorter than the poll is lost.
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "core/serial_port.h"
#include "transport/serial/modem_lines.h"

namespace quillon {

class ModemWatcher {
 public:
  using Sink = std::function<void(CommEvent)>;
  static constexpr int kPollMilliseconds = 10;
  // A burst counted on one line in one look is capped: the pedal logic keeps
  // only the last code anyway, and a noisy line must not flood the queue.
  static constexpr uint32_t kMaxEventsPerLook = 16;

  ModemWatcher(std::unique_ptr<ModemLineSource> source, Sink sink);
  ~ModemWatcher();  // stops
  ModemWatcher(const ModemWatcher&) = delete;
  ModemWatcher& operator=(const ModemWatcher&) = delete;

  // Returns once the thread has ended.
  void stop();
  // Whether the thread fell back to polling.
  bool polling() const { return polling_; }
  // Whether the device went away (a USB adapter pulled out): lines that
  // could be read no longer can. The thread has ended or is ending.
  bool gone() const { return gone_; }

 private:
  void run();
  void lookAtCounts();
  void lookAtLevels();
  // Sleeps one poll period; false when stopped meanwhile.
  bool pollPause();

  std::unique_ptr<ModemLineSource> source_;
  Sink sink_;
  LineCounts lastCounts_;
  LineLevels lastLevels_;
  bool haveCounts_ = false, haveLevels_ = false;
  std::atomic<bool> polling_{false};
  std::atomic<bool> gone_{false};

  std::mutex mutex_;
  std::condition_variable wake_;
  bool stopping_ = false;
  std::thread thread_;
};

}  // namespace quillon
