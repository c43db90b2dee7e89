#include "transport/input/switch_decoders.h"

#include <linux/input.h>

#include <algorithm>
#include <cstring>

namespace quillon {

namespace {

// Left to right: a mouse's middle button stands between its left and right.
int position(int code) {
  if (code == BTN_MIDDLE) return BTN_RIGHT;
  if (code == BTN_RIGHT) return BTN_MIDDLE;
  return code;
}

}  // namespace

EventRecordDecoder::EventRecordDecoder(std::vector<int> keys) : keys_(std::move(keys)) {
  std::sort(keys_.begin(), keys_.end(), [](int a, int b) { return position(a) < position(b); });
}

int EventRecordDecoder::switchOf(int code) const {
  if (!keys_.empty()) {
    auto it = std::find(keys_.begin(), keys_.end(), code);
    return it == keys_.end() ? -1 : static_cast<int>(it - keys_.begin());
  }
  if (code >= BTN_0 && code <= BTN_9) return code - BTN_0;
  if (code >= BTN_LEFT && code <= BTN_MIDDLE) return position(code) - BTN_LEFT;
  if (code >= BTN_TRIGGER && code <= BTN_DEAD) return code - BTN_TRIGGER;
  return -1;
}

void EventRecordDecoder::feed(const uint8_t* data, size_t size, const Sink& sink) {
  partial_.insert(partial_.end(), data, data + size);
  size_t at = 0;
  for (; at + sizeof(input_event) <= partial_.size(); at += sizeof(input_event)) {
    input_event ev;
    std::memcpy(&ev, partial_.data() + at, sizeof ev);
    if (ev.type != EV_KEY || (ev.value != 0 && ev.value != 1)) continue;
    if (const int sw = switchOf(ev.code); sw >= 0) sink(sw);
  }
  partial_.erase(partial_.begin(), partial_.begin() + static_cast<std::ptrdiff_t>(at));
}

HidReportDecoder::HidReportDecoder(size_t reportSize) : reportSize_(reportSize) {}

void HidReportDecoder::feed(const uint8_t* data, size_t size, const Sink& sink) {
  if (reportSize_ == 0) {
    if (size > 0) report(data[0], sink);
    return;
  }
  partial_.insert(partial_.end(), data, data + size);
  size_t at = 0;
  for (; at + reportSize_ <= partial_.size(); at += reportSize_) report(partial_[at], sink);
  partial_.erase(partial_.begin(), partial_.begin() + static_cast<std::ptrdiff_t>(at));
}

void HidReportDecoder::report(uint8_t switches, const Sink& sink) {
  const uint8_t changed = switches ^ last_;
  last_ = switches;
  for (int bit = 0; bit < 8; ++bit)
    if (changed & (1u << bit)) sink(bit);
}

}  // namespace quillon
