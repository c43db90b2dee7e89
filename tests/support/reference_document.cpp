#include "support/reference_document.h"

#include <algorithm>

namespace quillon::testing {

ReferenceDocumentService::ReferenceDocumentService(const u16& text) {
  docs_.emplace_back();
  doc().text = text.empty() || text.back() != CR ? text + CR : text;
  doc().italic.assign(doc().text.size(), 0);
}

u16 ReferenceDocumentService::text(TextRange r) {
  const long a = clampTo(r.start, length()), b = clampTo(r.end, length());
  return a < b ? doc().text.substr(static_cast<size_t>(a), static_cast<size_t>(b - a)) : u16();
}

void ReferenceDocumentService::insertText(long pos, u16v t, bool stickLeft, bool italic) {
  if (t.empty()) return;
  pos = clampTo(pos, length() - 1);
  const long n = static_cast<long>(t.size());
  Doc& d = doc();
  d.text.insert(static_cast<size_t>(pos), t);
  d.italic.insert(d.italic.begin() + pos, t.size(), italic ? 1 : 0);
  // A point moves behind the new text unless it sticks to the left of it; a
  // selection takes in text put strictly inside it.
  TextRange& s = d.selection;
  const bool point = s.collapsed();
  if (s.start > pos || (s.start == pos && !stickLeft)) s.start += n;
  if (point)
    s.end = s.start;
  else if (s.end > pos)
    s.end += n;
}

void ReferenceDocumentService::eraseText(TextRange r) {
  const long a = clampTo(r.start, length() - 1), b = std::max(a, clampTo(r.end, length() - 1));
  if (a == b) return;
  Doc& d = doc();
  d.text.erase(static_cast<size_t>(a), static_cast<size_t>(b - a));
  d.italic.erase(d.italic.begin() + a, d.italic.begin() + b);
  for (long* p : {&d.selection.start, &d.selection.end}) *p = *p >= b ? *p - (b - a) : std::min(*p, a);
}

bool ReferenceDocumentService::italicAt(TextRange r) {
  const long a = clampTo(r.start, length()), b = std::max(a, clampTo(r.end, length()));
  if (a == b) return a < length() && doc().italic[static_cast<size_t>(a)];
  bool any = false;
  for (long i = a; i < b; ++i) {
    if (doc().text[static_cast<size_t>(i)] == CR) continue;
    if (!doc().italic[static_cast<size_t>(i)]) return false;
    any = true;
  }
  return any;
}

void ReferenceDocumentService::setItalic(TextRange r, bool on) {
  for (long i = clampTo(r.start, length()); i < clampTo(r.end, length()); ++i) doc().italic[static_cast<size_t>(i)] = on;
}

void ReferenceDocumentService::setSelectionRange(TextRange r) {
  const long a = clampTo(r.start, length());
  doc().selection = {a, std::max(a, clampTo(r.end, length()))};
}

long ReferenceDocumentService::paragraphsCount() {
  return static_cast<long>(std::count(doc().text.begin(), doc().text.end(), CR));
}

TextRange ReferenceDocumentService::paragraphRange(long n) {
  const u16& t = doc().text;
  size_t start = 0;
  for (size_t mark = t.find(CR); n > 0 && mark != u16::npos; mark = t.find(CR, start)) {
    if (--n == 0) return {static_cast<long>(start), static_cast<long>(mark) + 1};
    start = mark + 1;
  }
  return {};
}

long ReferenceDocumentService::paragraphIndexAt(long pos) {
  const long upTo = clampTo(pos, length() - 1);
  return 1 + static_cast<long>(std::count(doc().text.begin(), doc().text.begin() + upTo, CR));
}

std::optional<u16> ReferenceDocumentService::customProperty(const u16& name) {
  auto it = doc().custom.find(name);
  return it == doc().custom.end() ? std::nullopt : std::optional<u16>(it->second);
}

std::optional<u16> ReferenceDocumentService::builtinProperty(int index) {
  auto it = doc().builtin.find(index);
  return it == doc().builtin.end() ? std::nullopt : std::optional<u16>(it->second);
}

}  // namespace quillon::testing
