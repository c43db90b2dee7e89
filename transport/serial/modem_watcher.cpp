#include "transport/serial/modem_watcher.h"

#include <algorithm>
#include <chrono>

namespace quillon {

ModemWatcher::ModemWatcher(std::unique_ptr<ModemLineSource> source, Sink sink)
    : source_(std::move(source)), sink_(std::move(sink)) {
  haveCounts_ = source_->counts(lastCounts_);
  haveLevels_ = source_->levels(lastLevels_);
  // Without counts a wake-up would not say which line moved, or whether one
  // moved and came back: levels are polled instead.
  polling_ = !haveCounts_;
  thread_ = std::thread([this] { run(); });
}

ModemWatcher::~ModemWatcher() { stop(); }

void ModemWatcher::stop() {
  {
    std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  wake_.notify_all();
  source_->interrupt();
  if (thread_.joinable()) thread_.join();
}

void ModemWatcher::run() {
  auto stopping = [this] {
    std::lock_guard lock(mutex_);
    return stopping_;
  };
  while (!stopping() && !gone_) {
    if (!polling_) {
      switch (source_->waitForChange()) {
        case ModemLineSource::Wait::Changed:
          lookAtCounts();
          break;
        case ModemLineSource::Wait::Interrupted:
          break;
        case ModemLineSource::Wait::Unsupported:
          polling_ = true;
          break;
      }
      continue;
    }
    if (!pollPause()) break;
    if (haveCounts_)
      lookAtCounts();
    else
      lookAtLevels();
  }
}

bool ModemWatcher::pollPause() {
  std::unique_lock lock(mutex_);
  return !wake_.wait_for(lock, std::chrono::milliseconds(kPollMilliseconds), [this] { return stopping_; });
}

void ModemWatcher::lookAtCounts() {
  LineCounts now;
  // Counts that could be read and no longer can: the device is gone.
  if (!source_->counts(now)) {
    gone_ = true;
    return;
  }
  auto deliver = [this](uint32_t before, uint32_t after, CommEvent ev) {
    for (uint32_t n = std::min(after - before, kMaxEventsPerLook); n > 0; --n) sink_(ev);
  };
  deliver(lastCounts_.cts, now.cts, CommEvent::comEvCTS);
  deliver(lastCounts_.dsr, now.dsr, CommEvent::comEvDSR);
  deliver(lastCounts_.cd, now.cd, CommEvent::comEvCD);
  lastCounts_ = now;
}

void ModemWatcher::lookAtLevels() {
  LineLevels now;
  if (!source_->levels(now)) {
    if (haveLevels_) gone_ = true;
    return;
  }
  if (now.cts != lastLevels_.cts) sink_(CommEvent::comEvCTS);
  if (now.dsr != lastLevels_.dsr) sink_(CommEvent::comEvDSR);
  if (now.cd != lastLevels_.cd) sink_(CommEvent::comEvCD);
  lastLevels_ = now;
}

}  // namespace quillon
