#include "script/memory_document.h"

#include <algorithm>

namespace quillon {

MemoryDocument::MemoryDocument() { setText(u"\r"); }

void MemoryDocument::setText(u16v text) {
  text_ = u16(text);
  if (text_.empty() || text_.back() != CR) text_ += CR;
  italic_.assign(text_.size(), 0);
  sel_ = {0, 0};
  undo_.clear();
  rebuildStarts();
  notify(Change::Reset);
}

void MemoryDocument::rebuildStarts() {
  starts_.clear();
  starts_.push_back(0);
  for (size_t i = 0; i + 1 < text_.size(); ++i)
    if (text_[i] == CR) starts_.push_back(static_cast<long>(i) + 1);
}

void MemoryDocument::rawInsert(long pos, u16v t, const std::vector<uint8_t>& ital, bool stickLeft) {
  long n = static_cast<long>(t.size());
  text_.insert(static_cast<size_t>(pos), t);
  italic_.insert(italic_.begin() + pos, ital.begin(), ital.end());
  // Paragraph starts behind the insertion move; new paragraph marks add starts.
  auto it = std::upper_bound(starts_.begin(), starts_.end(), pos);
  for (auto j = it; j != starts_.end(); ++j) *j += n;
  std::vector<long> fresh;
  for (long k = 0; k < n; ++k)
    if (t[static_cast<size_t>(k)] == CR) fresh.push_back(pos + k + 1);
  // A mark inserted at the very end would open a paragraph behind the final mark.
  while (!fresh.empty() && fresh.back() >= length()) fresh.pop_back();
  starts_.insert(it, fresh.begin(), fresh.end());
  selectionAfterInsert(sel_, pos, n, stickLeft);
  notify(Change::Text, pos, 0, n);
}

void MemoryDocument::selectionAfterInsert(TextRange& sel, long pos, long n, bool stickLeft) {
  auto shift = [&](long& p) {
    if (p > pos || (p == pos && !stickLeft)) p += n;
  };
  if (sel.collapsed()) {
    shift(sel.start);
    sel.end = sel.start;
  } else {
    // A selection grows only from within; text at its edges stays outside.
    if (sel.start >= pos && !(sel.start == pos && stickLeft)) sel.start += n;
    if (sel.end > pos) sel.end += n;
  }
}

void MemoryDocument::selectionAfterErase(TextRange& sel, long a, long b) {
  long n = b - a;
  auto fix = [&](long& p) {
    if (p >= b)
      p -= n;
    else if (p > a)
      p = a;
  };
  fix(sel.start);
  fix(sel.end);
}

void MemoryDocument::rawErase(long a, long b) {
  long n = b - a;
  text_.erase(static_cast<size_t>(a), static_cast<size_t>(n));
  italic_.erase(italic_.begin() + a, italic_.begin() + b);
  auto first = std::upper_bound(starts_.begin(), starts_.end(), a);
  auto last = std::upper_bound(first, starts_.end(), b);
  auto it = starts_.erase(first, last);
  for (; it != starts_.end(); ++it) *it -= n;
  selectionAfterErase(sel_, a, b);
  notify(Change::Text, a, n, 0);
}

void MemoryDocument::insert(long pos, u16v t, bool stickLeft, bool ital) {
  if (t.empty()) return;
  pos = std::clamp(pos, 0L, length() - 1);
  rawInsert(pos, t, std::vector<uint8_t>(t.size(), ital ? 1 : 0), stickLeft);
  undo_.push_back({pos, {}, {}, static_cast<long>(t.size())});
  modified = true;
}

void MemoryDocument::erase(TextRange r) {
  long a = std::clamp(r.start, 0L, length() - 1);
  long b = std::clamp(r.end, a, length() - 1);  // the final mark stays
  if (b <= a) return;
  Edit e{a, text_.substr(static_cast<size_t>(a), static_cast<size_t>(b - a)),
         std::vector<uint8_t>(italic_.begin() + a, italic_.begin() + b), 0};
  rawErase(a, b);
  undo_.push_back(std::move(e));
  modified = true;
}

void MemoryDocument::replace(TextRange r, u16v t, bool ital) {
  const long n = static_cast<long>(t.size());
  const bool inside = r.start >= 0 && r.start < r.end && r.end <= length() - 1;
  const bool sameLength = inside && r.length() == n;
  const auto hasCR = [](u16v x) { return x.find(CR) != u16v::npos; };
  if (!sameLength || hasCR(t) || hasCR(u16v(text_).substr(static_cast<size_t>(r.start), static_cast<size_t>(n)))) {
    erase(r);
    insert(r.start, t, false, ital);
    return;
  }
  // Same length and no paragraph mark on either side: the characters are
  // overwritten where they stand, so a long script is not moved for every
  // tag rewritten. Undo and the selection end up as erase-then-insert leaves them.
  Edit removed{r.start, text_.substr(static_cast<size_t>(r.start), static_cast<size_t>(n)),
               std::vector<uint8_t>(italic_.begin() + r.start, italic_.begin() + r.end), 0};
  std::copy(t.begin(), t.end(), text_.begin() + r.start);
  std::fill(italic_.begin() + r.start, italic_.begin() + r.end, ital ? 1 : 0);
  selectionAfterErase(sel_, r.start, r.end);
  selectionAfterInsert(sel_, r.start, n, false);
  undo_.push_back(std::move(removed));
  undo_.push_back({r.start, {}, {}, n});
  modified = true;
  notify(Change::Text, r.start, n, n);
}

bool MemoryDocument::italic(TextRange r) const {
  long a = std::clamp(r.start, 0L, length());
  long b = std::clamp(r.end, a, length());
  if (a == b) return a < length() && italic_[a];
  // A paragraph's own mark carries no formatting of its own here.
  long italicCount = 0, counted = 0;
  for (long i = a; i < b; ++i) {
    if (text_[i] == CR) continue;
    ++counted;
    italicCount += italic_[i];
  }
  return counted > 0 && italicCount == counted;
}

void MemoryDocument::setItalic(TextRange r, bool on) {
  long a = std::clamp(r.start, 0L, length());
  long b = std::clamp(r.end, a, length());
  for (long i = a; i < b; ++i) italic_[i] = on ? 1 : 0;
  modified = true;
  if (b > a) notify(Change::Italic, a, 0, b - a);
}

void MemoryDocument::setSelection(TextRange r) {
  long a = std::clamp(r.start, 0L, length());
  long b = std::clamp(r.end, a, length());
  sel_ = {a, b};
  notify(Change::Selection, a);
}

TextRange MemoryDocument::paragraph(long n) const {
  if (n < 1 || n > paragraphsCount()) return {};
  long s = starts_[n - 1];
  long e = n < paragraphsCount() ? starts_[n] : length();
  return {s, e};
}

long MemoryDocument::paragraphIndexAt(long pos) const {
  auto it = std::upper_bound(starts_.begin(), starts_.end(), pos);
  return std::max<long>(1, static_cast<long>(it - starts_.begin()));
}

bool MemoryDocument::undo() {
  if (undo_.empty()) return false;
  Edit e = std::move(undo_.back());
  undo_.pop_back();
  if (e.insertedLength > 0) {
    rawErase(e.pos, e.pos + e.insertedLength);
  } else {
    rawInsert(e.pos, e.removed, e.removedItalic, false);
  }
  modified = true;
  return true;
}

// ---- service ---------------------------------------------------------------

MemoryDocumentService::MemoryDocumentService() = default;

MemoryDocument* MemoryDocumentService::active() { return docs_.empty() ? nullptr : docs_[active_].get(); }

void MemoryDocumentService::activate(size_t index) {
  if (index < docs_.size()) active_ = index;
}

MemoryDocument& MemoryDocumentService::addDocument(std::unique_ptr<MemoryDocument> doc) {
  docs_.push_back(std::move(doc));
  active_ = docs_.size() - 1;
  return *docs_.back();
}

void MemoryDocumentService::closeActive() {
  if (docs_.empty()) return;
  docs_.erase(docs_.begin() + static_cast<long>(active_));
  if (active_ >= docs_.size() && !docs_.empty()) active_ = docs_.size() - 1;
  if (docs_.empty()) active_ = 0;
}

void MemoryDocumentService::documentsAdd() {
  auto d = std::make_unique<MemoryDocument>();
  d->name = u"Document" + numberText(++newCounter_);
  addDocument(std::move(d));
}

#define QUILLON_ACTIVE_OR(ret)        \
  MemoryDocument* d = active();       \
  if (!d) {                           \
    raiseError(kErrNoDocument);       \
    return ret;                       \
  }

u16 MemoryDocumentService::name() {
  QUILLON_ACTIVE_OR(u16{});
  return d->name;
}

u16 MemoryDocumentService::fullName() {
  QUILLON_ACTIVE_OR(u16{});
  return d->path.empty() ? d->name : fromUtf8(d->path);
}

long MemoryDocumentService::length() {
  QUILLON_ACTIVE_OR(0);
  return d->length();
}

u16 MemoryDocumentService::text(TextRange r) {
  QUILLON_ACTIVE_OR(u16{});
  long a = std::clamp(r.start, 0L, d->length());
  long b = std::clamp(r.end, a, d->length());
  return d->text().substr(static_cast<size_t>(a), static_cast<size_t>(b - a));
}

void MemoryDocumentService::insertText(long pos, u16v t, bool stickLeft, bool ital) {
  QUILLON_ACTIVE_OR();
  d->insert(pos, t, stickLeft, ital);
}

void MemoryDocumentService::eraseText(TextRange r) {
  QUILLON_ACTIVE_OR();
  d->erase(r);
}

void MemoryDocumentService::replaceText(TextRange r, u16v t, bool ital) {
  QUILLON_ACTIVE_OR();
  d->replace(r, t, ital);
}

bool MemoryDocumentService::italicAt(TextRange r) {
  QUILLON_ACTIVE_OR(false);
  return d->italic(r);
}

void MemoryDocumentService::setItalic(TextRange r, bool on) {
  QUILLON_ACTIVE_OR();
  d->setItalic(r, on);
}

u16 MemoryDocumentService::fontName() {
  QUILLON_ACTIVE_OR(u16{});
  return d->fontName;
}

void MemoryDocumentService::setFontName(const u16& font) {
  QUILLON_ACTIVE_OR();
  d->fontName = font;
}

TextRange MemoryDocumentService::selectionRange() {
  QUILLON_ACTIVE_OR(TextRange{});
  return d->selection();
}

void MemoryDocumentService::setSelectionRange(TextRange r) {
  QUILLON_ACTIVE_OR();
  d->setSelection(r);
}

long MemoryDocumentService::paragraphsCount() {
  QUILLON_ACTIVE_OR(0);
  return d->paragraphsCount();
}

TextRange MemoryDocumentService::paragraphRange(long n) {
  QUILLON_ACTIVE_OR(TextRange{});
  return d->paragraph(n);
}

long MemoryDocumentService::paragraphIndexAt(long pos) {
  QUILLON_ACTIVE_OR(0);
  return d->paragraphIndexAt(pos);
}

void MemoryDocumentService::undoClear() {
  QUILLON_ACTIVE_OR();
  d->undoClear();
}

std::optional<u16> MemoryDocumentService::customProperty(const u16& key) {
  QUILLON_ACTIVE_OR(std::nullopt);
  for (auto& [k, v] : d->customProperties)
    if (k == key) return v;
  return std::nullopt;
}

void MemoryDocumentService::setCustomProperty(const u16& key, const u16& value) {
  QUILLON_ACTIVE_OR();
  for (auto& [k, v] : d->customProperties)
    if (k == key) {
      v = value;
      return;
    }
  d->customProperties.emplace_back(key, value);
  d->modified = true;
}

std::optional<u16> MemoryDocumentService::builtinProperty(int index) {
  QUILLON_ACTIVE_OR(std::nullopt);
  for (auto& [k, v] : d->builtinProperties)
    if (k == index) return v;
  return std::nullopt;
}

void MemoryDocumentService::setBuiltinProperty(int index, const u16& value) {
  QUILLON_ACTIVE_OR();
  for (auto& [k, v] : d->builtinProperties)
    if (k == index) {
      v = value;
      return;
    }
  d->builtinProperties.emplace_back(index, value);
}

#undef QUILLON_ACTIVE_OR

}  // namespace quillon
