// What the operator sees of the document in Writer, kept up to date from a
// thread of its own.
//
// After an edit Writer lays the document out again before it shows a
// selection or answers the next call, which in a long script takes the
// better part of a second. The timing loop writes a tag and moves the
// selection at every mark, and a retiming rewrites thousands of tags in a
// row; neither may wait for that. So the service's edits hold Writer's views
// still, and once the station has left Writer alone for a moment, this
// thread shows the latest selection and lets the views go: Writer then lays
// out once, while the station waits for the operator anyway.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "script/writer/uno_support.h"

namespace quillon::uno {

class ViewUpdates {
 public:
  ViewUpdates(Reference<css::frame::XModel> model, Reference<css::view::XSelectionSupplier> selector);
  ~ViewUpdates();  // shows what is pending and lets the views go
  ViewUpdates(const ViewUpdates&) = delete;
  ViewUpdates& operator=(const ViewUpdates&) = delete;

  // Before an edit: the views stay still until the station pauses.
  void holdViews();
  // Writer selects `range` when the station pauses; a later one replaces it.
  void select(const Reference<css::text::XTextRange>& range);
  // The station uses Writer now: the pause starts again.
  void touch();
  // Shows what is pending at once and waits until Writer has laid it out.
  void flush();

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kPause{200};
  bool due() const { return pending_.is() || held_; }
  void run();

  Reference<css::frame::XModel> model_;
  Reference<css::view::XSelectionSupplier> selector_;
  std::mutex mutex_;
  std::condition_variable changed_;
  Reference<css::text::XTextRange> pending_;
  bool held_ = false;     // the views are locked by the service
  bool busy_ = false;     // the thread is showing them
  bool now_ = false;      // shown at once, without the pause
  bool stopping_ = false;
  Clock::time_point lastUse_ = Clock::now();
  std::thread worker_;
};

}  // namespace quillon::uno
