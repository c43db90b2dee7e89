#include "script/memory_document.h"

#include <algorithm>

namespace quillon {

MemoryDocument::MemoryDocument() { setText(u"\r"); }

void MemoryDocument::setText(u16v text) {
  u16 t(text);
  if (t.empty() || t.back() != CR) t += CR;
  text_.assign(t);
  sel_ = {0, 0};
  undo_.clear();
  notify(Change::Reset);
}

void MemoryDocument::rawInsert(long pos, u16v t, const std::vector<uint8_t>& ital, bool stickLeft) {
  long n = static_cast<long>(t.size());
  text_.insert(pos, t, ital.data());
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
  text_.erase(a, b);
  selectionAfterErase(sel_, a, b);
  notify(Change::Text, a, b - a, 0);
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
  Edit e{a, text_.text(a, b), text_.italics(a, b), 0};
  rawErase(a, b);
  undo_.push_back(std::move(e));
  modified = true;
}

bool MemoryDocument::italic(TextRange r) const {
  long a = std::clamp(r.start, 0L, length());
  long b = std::clamp(r.end, a, length());
  if (a == b) return a < length() && text_.italics(a, a + 1).front();
  // A paragraph's own mark carries no formatting of its own here.
  long italicCount = 0, counted = 0;
  text_.forEachPiece(a, b, [&](const char16_t* c, const uint8_t* f, long n, long) {
    for (long i = 0; i < n; ++i) {
      if (c[i] == CR) continue;
      ++counted;
      italicCount += f[i];
    }
    return true;
  });
  return counted > 0 && italicCount == counted;
}

void MemoryDocument::setItalic(TextRange r, bool on) {
  long a = std::clamp(r.start, 0L, length());
  long b = std::clamp(r.end, a, length());
  text_.setItalic(a, b, on);
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
  long s = n == 1 ? 0 : text_.markAt(n - 1) + 1;
  return {s, text_.markAt(n) + 1};
}

long MemoryDocument::paragraphIndexAt(long pos) const {
  if (pos < 0) return 1;
  // The final mark opens no paragraph behind it.
  return 1 + text_.marksBefore(std::min(pos, length() - 1));
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
  return d->text(r);
}

void MemoryDocumentService::insertText(long pos, u16v t, bool stickLeft, bool ital) {
  QUILLON_ACTIVE_OR();
  d->insert(pos, t, stickLeft, ital);
}

void MemoryDocumentService::eraseText(TextRange r) {
  QUILLON_ACTIVE_OR();
  d->erase(r);
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
