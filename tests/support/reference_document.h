// The plainest document service there is: one buffer of text, one of italic
// flags, paragraphs found by reading the text from the start every time.
// Slow on purpose; the station's own document is held to it.
#pragma once

#include <algorithm>
#include <vector>

#include "script/document_service.h"

namespace quillon::testing {

class ReferenceDocumentService : public DocumentService {
 public:
  explicit ReferenceDocumentService(u16 text) : text_(std::move(text)) {
    if (text_.empty() || text_.back() != CR) text_ += CR;
    italic_.assign(text_.size(), 0);
  }
  const std::vector<uint8_t>& italics() const { return italic_; }

  bool connect() override { return true; }
  int documentsCount() override { return 1; }
  void documentsAdd() override {}
  u16 userName() override { return {}; }
  u16 userAddress() override { return {}; }
  u16 name() override { return u"Reference"; }
  u16 fullName() override { return name(); }
  u16 fontName() override { return {}; }
  void setFontName(const u16&) override {}
  void undoClear() override {}
  std::optional<u16> customProperty(const u16&) override { return std::nullopt; }
  void setCustomProperty(const u16&, const u16&) override {}
  std::optional<u16> builtinProperty(int) override { return std::nullopt; }
  void setBuiltinProperty(int, const u16&) override {}

  long length() override { return static_cast<long>(text_.size()); }
  u16 text(TextRange r) override {
    const long a = clampTo(r.start, length()), b = clampTo(r.end, length());
    return a < b ? text_.substr(static_cast<size_t>(a), static_cast<size_t>(b - a)) : u16();
  }
  void insertText(long pos, u16v t, bool stickLeft, bool italic) override {
    if (t.empty()) return;
    pos = clampTo(pos, length() - 1);
    const long n = static_cast<long>(t.size());
    text_.insert(static_cast<size_t>(pos), t);
    italic_.insert(italic_.begin() + pos, t.size(), italic ? 1 : 0);
    // A point moves behind the new text unless it sticks to the left of it;
    // a selection takes in text put strictly inside it.
    const bool point = sel_.collapsed();
    if (sel_.start > pos || (sel_.start == pos && !stickLeft)) sel_.start += n;
    if (point)
      sel_.end = sel_.start;
    else if (sel_.end > pos)
      sel_.end += n;
  }
  void eraseText(TextRange r) override {
    const long a = clampTo(r.start, length() - 1), b = std::max(a, clampTo(r.end, length() - 1));
    text_.erase(static_cast<size_t>(a), static_cast<size_t>(b - a));
    italic_.erase(italic_.begin() + a, italic_.begin() + b);
    for (long* p : {&sel_.start, &sel_.end}) *p = *p >= b ? *p - (b - a) : std::min(*p, a);
  }
  bool italicAt(TextRange r) override {
    const long a = clampTo(r.start, length()), b = std::max(a, clampTo(r.end, length()));
    if (a == b) return a < length() && italic_[static_cast<size_t>(a)];
    long upright = 0, marks = 0;
    for (long i = a; i < b; ++i) {
      if (text_[static_cast<size_t>(i)] == CR) ++marks;
      else if (!italic_[static_cast<size_t>(i)]) ++upright;
    }
    return upright == 0 && marks < b - a;
  }
  void setItalic(TextRange r, bool on) override {
    for (long i = clampTo(r.start, length()); i < clampTo(r.end, length()); ++i) italic_[static_cast<size_t>(i)] = on;
  }
  TextRange selectionRange() override { return sel_; }
  void setSelectionRange(TextRange r) override {
    const long a = clampTo(r.start, length());
    sel_ = {a, std::max(a, clampTo(r.end, length()))};
  }
  long paragraphsCount() override { return static_cast<long>(std::count(text_.begin(), text_.end(), CR)); }
  TextRange paragraphRange(long n) override {
    size_t start = 0;
    for (size_t mark = text_.find(CR); n > 0 && mark != u16::npos; mark = text_.find(CR, start)) {
      if (--n == 0) return {static_cast<long>(start), static_cast<long>(mark) + 1};
      start = mark + 1;
    }
    return {};
  }
  long paragraphIndexAt(long pos) override {
    return 1 + static_cast<long>(std::count(text_.begin(), text_.begin() + clampTo(pos, length() - 1), CR));
  }

 private:
  static long clampTo(long p, long hi) { return std::max(0L, std::min(p, hi)); }
  u16 text_;
  std::vector<uint8_t> italic_;
  TextRange sel_;
};

}  // namespace quillon::testing
