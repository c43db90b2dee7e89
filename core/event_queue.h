// A thread-safe queue of device events, oldest first: a device adapter's
// thread pushes, the window thread takes. The notifier runs on the pushing
// thread after each push, so the owner can wake its window thread.
#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <utility>

namespace quillon {

template <class Event>
class EventQueue {
 public:
  void push(Event ev) {
    std::function<void()> notify;
    {
      std::lock_guard lock(mutex_);
      events_.push_back(ev);
      notify = notify_;
    }
    if (notify) notify();
  }
  bool pop(Event& ev) {
    std::lock_guard lock(mutex_);
    if (events_.empty()) return false;
    ev = events_.front();
    events_.pop_front();
    return true;
  }
  void clear() {
    std::lock_guard lock(mutex_);
    events_.clear();
  }
  void setNotifier(std::function<void()> notify) {
    std::lock_guard lock(mutex_);
    notify_ = std::move(notify);
  }

 private:
  std::mutex mutex_;
  std::deque<Event> events_;
  std::function<void()> notify_;
};

}  // namespace quillon
