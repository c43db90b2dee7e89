#include "script/writer/view_updates.h"

#include <com/sun/star/uno/Exception.hpp>

namespace quillon::uno {

ViewUpdates::ViewUpdates(Reference<css::frame::XModel> model, Reference<css::view::XSelectionSupplier> selector)
    : model_(std::move(model)), selector_(std::move(selector)) {}

ViewUpdates::~ViewUpdates() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
    now_ = true;
  }
  changed_.notify_all();
  if (worker_.joinable()) worker_.join();
}

void ViewUpdates::holdViews() {
  std::lock_guard<std::mutex> lock(mutex_);
  lastUse_ = Clock::now();
  if (held_ || busy_) return;
  model_->lockControllers();
  held_ = true;
  if (!worker_.joinable()) worker_ = std::thread([this] { run(); });
  changed_.notify_all();
}

void ViewUpdates::select(const Reference<css::text::XTextRange>& range) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    lastUse_ = Clock::now();
    pending_ = range;
    if (!worker_.joinable()) worker_ = std::thread([this] { run(); });
  }
  changed_.notify_all();
}

void ViewUpdates::touch() {
  std::lock_guard<std::mutex> lock(mutex_);
  lastUse_ = Clock::now();
}

void ViewUpdates::flush() {
  std::unique_lock<std::mutex> lock(mutex_);
  now_ = true;
  changed_.notify_all();
  changed_.wait(lock, [this] { return !due() && !busy_; });
  now_ = false;
}

void ViewUpdates::run() {
  std::unique_lock<std::mutex> lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return due() || stopping_; });
    if (!due()) return;
    // Until the station has left Writer alone for a moment.
    while (!now_ && Clock::now() - lastUse_ < kPause)
      changed_.wait_until(lock, lastUse_ + kPause, [this] { return now_; });
    Reference<css::text::XTextRange> range = std::move(pending_);
    pending_.clear();
    const bool release = held_;
    held_ = false;
    busy_ = true;
    lock.unlock();
    try {
      if (range.is()) selector_->select(Any(range));
      if (release) model_->unlockControllers();
      // Answers once the layout is done.
      if (range.is() || release) model_->getURL();
    } catch (const css::uno::Exception&) {
      // The document or the office went away; the station learns of it on
      // its own next call.
    }
    range.clear();
    lock.lock();
    busy_ = false;
    changed_.notify_all();
  }
}

}  // namespace quillon::uno
