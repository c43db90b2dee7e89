#include "transport/input/input_watcher.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace quillon {

InputWatcher::InputWatcher(int fd, std::unique_ptr<SwitchDecoder> decoder, SwitchDecoder::Sink sink)
    : fd_(fd), wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), decoder_(std::move(decoder)), sink_(std::move(sink)) {
  thread_ = std::thread([this] { run(); });
}

InputWatcher::~InputWatcher() {
  stop();
  if (wake_ >= 0) ::close(wake_);
}

void InputWatcher::stop() {
  if (!thread_.joinable()) return;
  const uint64_t one = 1;
  if (wake_ >= 0) (void)!::write(wake_, &one, sizeof one);
  thread_.join();
}

void InputWatcher::run() {
  // Without a way to be woken the thread could not be stopped while the
  // node is quiet: the pedal counts as gone rather than hang the window.
  if (wake_ < 0) {
    gone_ = true;
    return;
  }
  pollfd fds[2] = {{fd_, POLLIN, 0}, {wake_, POLLIN, 0}};
  uint8_t buffer[4096];
  for (;;) {
    if (poll(fds, 2, -1) < 0) {
      if (errno == EINTR) continue;
      gone_ = true;
      return;
    }
    if (fds[1].revents) return;
    if (!fds[0].revents) continue;
    const ssize_t n = ::read(fd_, buffer, sizeof buffer);
    if (n > 0) {
      decoder_->feed(buffer, static_cast<size_t>(n), sink_);
      continue;
    }
    if (n < 0 && (errno == EAGAIN || errno == EINTR)) continue;
    gone_ = true;  // the end of the feed, or the device went away
    return;
  }
}

}  // namespace quillon
