#include "script/writer/writer_text.h"

#include <algorithm>

namespace quillon {

namespace {

constexpr char16_t kLf = u'\n';

bool isHigh(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool isLow(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

// One unit of Writer's text as the service holds it.
char16_t serviceUnit(char16_t c) {
  if (c == kLf) return CR;
  // A CR inside a paragraph would read as a paragraph mark here.
  if (c == CR) return kObjectMark;
  return c;
}

}  // namespace

long writerSteps(u16v t) {
  long n = 0;
  for (size_t i = 0; i < t.size(); ++i) {
    if (isHigh(t[i]) && i + 1 < t.size() && isLow(t[i + 1])) ++i;
    ++n;
  }
  return n;
}

u16 toWriterText(u16v t) {
  // Writer's insert splits paragraphs at CR already.
  u16 out(t);
  std::replace(out.begin(), out.end(), kLineBreak, kLf);
  return out;
}

void WriterText::clear() {
  text_.clear();
  starts_.assign(1, 0);
  pairEnds_.clear();
  finished_ = false;
}

void WriterText::appendUnit(char16_t c) {
  if (isLow(c) && !text_.empty() && isHigh(text_.back())) pairEnds_.push_back(length());
  text_.push_back(c);
}

void WriterText::appendPlain(u16v t) {
  text_.reserve(text_.size() + t.size());
  for (char16_t c : t) appendUnit(serviceUnit(c));
}

void WriterText::appendStep(u16v t) {
  if (t.size() == 1 || (t.size() == 2 && isHigh(t[0]) && isLow(t[1]))) {
    appendPlain(t);
  } else if (!t.empty() && t[0] == kLf) {
    // A paragraph break with a table behind it: the step ends in the
    // paragraph after the table.
    appendUnit(CR);
  } else {
    appendUnit(kObjectMark);
  }
}

bool WriterText::markLineBreak(long offset) {
  if (offset < 0 || offset >= length() - (finished_ ? 1 : 0) || text_[static_cast<size_t>(offset)] != CR) return false;
  text_[static_cast<size_t>(offset)] = kLineBreak;
  if (finished_) rebuildStarts();
  return true;
}

void WriterText::finish() {
  text_.push_back(CR);
  finished_ = true;
  rebuildStarts();
}

void WriterText::rebuildStarts() {
  starts_.assign(1, 0);
  for (size_t i = 0; i + 1 < text_.size(); ++i)
    if (text_[i] == CR) starts_.push_back(static_cast<long>(i) + 1);
}

u16 WriterText::text(TextRange r) const {
  long a = std::clamp(r.start, 0L, length());
  long b = std::clamp(r.end, a, length());
  return text_.substr(static_cast<size_t>(a), static_cast<size_t>(b - a));
}

TextRange WriterText::paragraph(long n) const {
  if (n < 1 || n > paragraphsCount()) return {};
  long s = starts_[static_cast<size_t>(n - 1)];
  long e = n < paragraphsCount() ? starts_[static_cast<size_t>(n)] : length();
  return {s, e};
}

long WriterText::paragraphIndexAt(long pos) const {
  auto it = std::upper_bound(starts_.begin(), starts_.end(), pos);
  return std::max<long>(1, static_cast<long>(it - starts_.begin()));
}

long WriterText::stepsTo(long offset) const {
  offset = std::clamp(offset, 0L, length());
  // Pair ends at or before `offset` each take one unit off: one inside a
  // pair counts as the pair's start.
  auto it = std::upper_bound(pairEnds_.begin(), pairEnds_.end(), offset);
  return offset - static_cast<long>(it - pairEnds_.begin());
}

long WriterText::offsetOfStep(long step) const {
  // The k-th pair's second unit is reached at step pairEnds_[k] - k.
  long lo = 0, hi = static_cast<long>(pairEnds_.size());
  while (lo < hi) {
    long mid = (lo + hi) / 2;
    if (pairEnds_[static_cast<size_t>(mid)] - mid <= step) lo = mid + 1;
    else hi = mid;
  }
  return std::min(step + lo, length());
}

void WriterText::insert(long pos, u16v t) {
  pos = std::clamp(pos, 0L, length());
  const long n = static_cast<long>(t.size());
  if (n == 0) return;
  text_.insert(static_cast<size_t>(pos), t);

  auto firstAfter = std::lower_bound(pairEnds_.begin(), pairEnds_.end(), pos);
  for (auto it = firstAfter; it != pairEnds_.end(); ++it) *it += n;
  std::vector<long> added;
  for (long i = 0; i < n; ++i)
    if (isLow(t[static_cast<size_t>(i)]) && i > 0 && isHigh(t[static_cast<size_t>(i - 1)])) added.push_back(pos + i);
  pairEnds_.insert(std::lower_bound(pairEnds_.begin(), pairEnds_.end(), pos), added.begin(), added.end());

  auto p = std::upper_bound(starts_.begin(), starts_.end(), pos);
  for (auto it = p; it != starts_.end(); ++it) *it += n;
  std::vector<long> newStarts;
  for (long i = 0; i < n; ++i)
    if (t[static_cast<size_t>(i)] == CR) newStarts.push_back(pos + i + 1);
  starts_.insert(std::upper_bound(starts_.begin(), starts_.end(), pos), newStarts.begin(), newStarts.end());
}

void WriterText::erase(TextRange r) {
  long a = std::clamp(r.start, 0L, length());
  long b = std::clamp(r.end, a, length());
  if (a == b) return;
  const long n = b - a;
  text_.erase(static_cast<size_t>(a), static_cast<size_t>(n));

  auto shiftOut = [&](std::vector<long>& v, long lo, long hi) {
    auto first = std::lower_bound(v.begin(), v.end(), lo);
    auto last = std::lower_bound(first, v.end(), hi);
    for (auto it = last; it != v.end(); ++it) *it -= n;
    v.erase(first, last);
  };
  shiftOut(pairEnds_, a, b);
  // Paragraphs starting inside the erased stretch or right behind its end
  // are joined to the one before.
  shiftOut(starts_, a + 1, b + 1);
}

}  // namespace quillon
