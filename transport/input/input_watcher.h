// The thread that reads an open pedal node and hands each switch change to
// a sink. It sleeps in poll() until the node has something or it is
// stopped; a node that ends (a pipe whose writer has closed) or fails (a
// pedal unplugged: ENODEV) is gone, and the thread ends.
#pragma once

#include <atomic>
#include <memory>
#include <thread>

#include "transport/input/switch_decoders.h"

namespace quillon {

class InputWatcher {
 public:
  // `fd` stays the caller's, open and non-blocking, until the watcher is
  // stopped.
  InputWatcher(int fd, std::unique_ptr<SwitchDecoder> decoder, SwitchDecoder::Sink sink);
  ~InputWatcher();  // stops
  InputWatcher(const InputWatcher&) = delete;
  InputWatcher& operator=(const InputWatcher&) = delete;

  // Returns once the thread has ended.
  void stop();
  bool gone() const { return gone_; }

 private:
  void run();

  int fd_;
  int wake_ = -1;  // an eventfd: written to stop the thread
  std::unique_ptr<SwitchDecoder> decoder_;
  SwitchDecoder::Sink sink_;
  std::atomic<bool> gone_{false};
  std::thread thread_;
};

}  // namespace quillon
