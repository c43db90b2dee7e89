#include "script/document_service.h"

#include <algorithm>
#include <cwctype>

#include "script/layout.h"

namespace quillon {

namespace {

bool isWordChar(char16_t c) {
  if (c < 128) return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
  return std::iswalnum(static_cast<wint_t>(c)) || (c >= 0xC0 && c != 0xD7 && c != 0xF7);
}

char16_t fold(char16_t c) {
  if (c >= u'A' && c <= u'Z') return c + 32;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
  return c;
}

}  // namespace

bool findPatternMatchesAt(u16v hay, long pos, u16v pat, bool matchCase, long& matchLength) {
  long h = pos;
  for (size_t i = 0; i < pat.size(); ++i) {
    if (h >= static_cast<long>(hay.size())) return false;
    char16_t p = pat[i];
    if (p == u'^' && i + 1 < pat.size()) {
      char16_t q = pat[i + 1];
      if (q == u'?') {
        ++i;
        ++h;
        continue;
      }
      if (q == u'^') {
        ++i;
        if (hay[h] != u'^') return false;
        ++h;
        continue;
      }
    }
    char16_t c = hay[h];
    if (matchCase ? c != p : fold(c) != fold(p)) return false;
    ++h;
  }
  matchLength = h - pos;
  return true;
}

long DocumentService::layoutLines(TextRange r) { return countLayoutLines(text(r), kLayoutLineWidth); }

bool DocumentService::requireDocument() {
  if (documentsCount() < 1) {
    raiseError(kErrNoDocument);
    return false;
  }
  return true;
}

u16 DocumentService::content() {
  if (!requireDocument()) return {};
  return text({0, length()});
}

void DocumentService::contentInsertBefore(const u16& t) {
  if (!requireDocument()) return;
  insertText(0, t, false, false);
}

void DocumentService::contentInsertAfter(const u16& t) {
  if (!requireDocument()) return;
  // The final paragraph mark always stays last.
  insertText(length() - 1, t, true, false);
}

TextRange DocumentService::documentRange() {
  if (!requireDocument()) return {};
  return {0, length()};
}

void DocumentService::selectAll() {
  if (!requireDocument()) return;
  setSelectionRange({0, length()});
}

TextRange DocumentService::paragraph(long n) {
  if (!requireDocument()) return {};
  if (n < 1 || n > paragraphsCount()) {
    raiseError(kErrBadIndex);
    return {};
  }
  return paragraphRange(n);
}

long DocumentService::computeStatistics(int statistic) {
  if (!requireDocument()) return 0;
  return computeStatistics(statistic, {0, length()});
}

long DocumentService::computeStatistics(int statistic, TextRange r) {
  if (!requireDocument()) return 0;
  u16 t = text(r);
  switch (statistic) {
    case wdStatisticWords: return countStatisticWords(t);
    case wdStatisticLines: return layoutLines(r);
    case wdStatisticPages: return std::max<long>(1, (layoutLines(r) + kLayoutLinesPerPage - 1) / kLayoutLinesPerPage);
    case wdStatisticCharacters: {
      long n = 0;
      for (char16_t c : t)
        if (c != u' ' && c != u'\t' && c != CR) ++n;
      return n;
    }
    case wdStatisticParagraphs: {
      long n = 0;
      long start = 0;
      for (long i = 0; i < static_cast<long>(t.size()); ++i)
        if (t[i] == CR) {
          if (i > start) ++n;  // empty paragraphs do not count
          start = i + 1;
        }
      if (start < static_cast<long>(t.size())) ++n;
      return n;
    }
    case wdStatisticCharactersWithSpaces: {
      long n = 0;
      for (char16_t c : t)
        if (c != CR) ++n;
      return n;
    }
    default: return 0;
  }
}

TextRange DocumentService::insertBefore(TextRange r, const u16& t) {
  if (!requireDocument()) return r;
  insertText(r.start, t, false, false);
  return {r.start, r.end + static_cast<long>(t.size())};
}

TextRange DocumentService::insertAfter(TextRange r, const u16& t) {
  if (!requireDocument()) return r;
  long len = length();
  long at = r.end;
  // Behind the final paragraph mark is not a place: the text goes before it.
  if (at >= len) at = len - 1;
  insertText(at, t, true, false);
  return {std::min(r.start, at), at + static_cast<long>(t.size())};
}

void DocumentService::deleteRange(TextRange r) {
  if (!requireDocument()) return;
  long len = length();
  r.start = std::clamp(r.start, 0L, len);
  r.end = std::clamp(r.end, r.start, len);
  // The final paragraph mark cannot be deleted.
  if (r.end == len) r.end = len - 1;
  if (r.end > r.start) eraseText(r);
}

std::vector<TextRange> DocumentService::words(TextRange r) {
  std::vector<TextRange> out;
  if (!requireDocument()) return out;
  u16 t = text(r);
  long n = static_cast<long>(t.size());
  long i = 0;
  while (i < n) {
    long s = i;
    if (t[i] == CR) {
      ++i;
    } else if (isWordChar(t[i])) {
      while (i < n && isWordChar(t[i])) ++i;
      while (i < n && t[i] == u' ') ++i;
    } else if (t[i] == u' ' || t[i] == TAB) {
      while (i < n && (t[i] == u' ' || t[i] == TAB)) ++i;
    } else {
      ++i;
      while (i < n && t[i] == u' ') ++i;
    }
    out.push_back({r.start + s, r.start + i});
  }
  return out;
}

u16 DocumentService::selection() {
  if (!requireDocument()) return {};
  return text(selectionRange());
}

int DocumentService::selectionType() {
  if (!requireDocument()) return 0;
  return selectionRange().collapsed() ? wdSelectionIP : wdSelectionNormal;
}

namespace {
// First and last paragraph the selection touches.
std::pair<long, long> selectedParagraphs(DocumentService& d) {
  TextRange s = d.selectionRange();
  long first = d.paragraphIndexAt(s.start);
  long last = s.collapsed() ? first : d.paragraphIndexAt(s.end - 1);
  return {first, std::max(first, last)};
}
}  // namespace

TextRange DocumentService::selectionParagraph(long n) {
  if (!requireDocument()) return {};
  auto [first, last] = selectedParagraphs(*this);
  long p = first + n - 1;
  if (n < 1 || p > last) {
    raiseError(kErrBadIndex);
    return {};
  }
  return paragraphRange(p);
}

long DocumentService::selectionParagraphsCount() {
  if (!requireDocument()) return 0;
  auto [first, last] = selectedParagraphs(*this);
  return last - first + 1;
}

std::optional<TextRange> DocumentService::next(int unit, long count) {
  if (!requireDocument()) return std::nullopt;
  TextRange s = selectionRange();
  if (unit == wdParagraph) {
    long ref = selectedParagraphs(*this).second;
    long target = ref + count;
    if (count < 1 || target > paragraphsCount()) {
      raiseError(kErrNoObject);
      return std::nullopt;
    }
    return paragraphRange(target);
  }
  long at = s.end + count - 1;
  if (count < 1 || at >= length()) {
    raiseError(kErrNoObject);
    return std::nullopt;
  }
  return TextRange{at, at + 1};
}

std::optional<TextRange> DocumentService::previous(int unit, long count) {
  if (!requireDocument()) return std::nullopt;
  TextRange s = selectionRange();
  if (unit == wdParagraph) {
    long ref = paragraphIndexAt(s.start);
    long target = ref - count;
    if (count < 1 || target < 1) {
      raiseError(kErrNoObject);
      return std::nullopt;
    }
    return paragraphRange(target);
  }
  long at = s.start - count;
  if (count < 1 || at < 0) {
    raiseError(kErrNoObject);
    return std::nullopt;
  }
  return TextRange{at, at + 1};
}

bool DocumentService::selectNext(int unit, long count) {
  auto r = next(unit, count);
  if (!r) return false;
  setSelectionRange(*r);
  return true;
}

bool DocumentService::selectPrevious(int unit, long count) {
  auto r = previous(unit, count);
  if (!r) return false;
  setSelectionRange(*r);
  return true;
}

void DocumentService::collapse() {
  if (!requireDocument()) return;
  TextRange s = selectionRange();
  setSelectionRange({s.start, s.start});
}

void DocumentService::collapseEnd() {
  if (!requireDocument()) return;
  TextRange s = selectionRange();
  long e = std::min(s.end, length() - 1);
  setSelectionRange({e, e});
}

void DocumentService::moveRight(int unit, long count, bool extend) {
  if (!requireDocument() || count <= 0) return;
  TextRange s = selectionRange();
  long last = length() - 1;  // the cursor never passes the final paragraph mark
  if (unit == wdParagraph) {
    long p = paragraphIndexAt(extend ? s.end : s.end);
    long target = std::min(p + count, paragraphsCount());
    long pos = target > p ? paragraphRange(target).start : last;
    if (extend)
      setSelectionRange({s.start, std::max(s.start, pos)});
    else
      setSelectionRange({pos, pos});
    return;
  }
  if (extend) {
    setSelectionRange({s.start, std::min(s.end + count, length())});
    return;
  }
  long pos = s.end;
  // Collapsing a selection counts as the first step, as the arrow key does.
  if (!s.collapsed()) --count;
  pos = std::min(pos + count, last);
  setSelectionRange({pos, pos});
}

void DocumentService::selectionInsertAfter(const u16& t) {
  if (!requireDocument()) return;
  insertAfter(selectionRange(), t);
}

void DocumentService::selectionInsertBefore(const u16& t) {
  if (!requireDocument()) return;
  insertBefore(selectionRange(), t);
}

bool DocumentService::execute(const FindRequest& f) {
  if (!requireDocument() || f.findText.empty()) return false;
  long len = length();
  TextRange s = selectionRange();
  // A selection bounds the search; an insertion point searches on to the end.
  long from = s.start, to = s.collapsed() ? len : s.end;
  if (!f.forward && s.collapsed()) {
    from = 0;
    to = s.start;
  }
  bool replacing = f.replaceWith.has_value() && f.replace != ReplaceMode::None;

  // The literal head of the pattern (up to its first caret) lets a forward
  // case-sensitive search skip ahead with a plain substring scan.
  u16v head = f.findText;
  if (auto caret = head.find(u'^'); caret != u16v::npos) head = head.substr(0, caret);
  // Only the range searched is read, so a search bounded by a small
  // selection costs no more than that selection. `hay` holds the document's
  // text from offset `base`; a and b are document offsets inside it.
  auto findIn = [&](u16v hay, long base, long a, long b, bool forward, long& at, long& mlen) {
    if (forward) {
      long p = a;
      while (p < b) {
        if (f.matchCase && !head.empty()) {
          size_t q = hay.find(head, static_cast<size_t>(p - base));
          if (q == u16v::npos || static_cast<long>(q) + base >= b) return false;
          p = static_cast<long>(q) + base;
        }
        if (findPatternMatchesAt(hay, p - base, f.findText, f.matchCase, mlen) && p + mlen <= b) {
          at = p;
          return true;
        }
        ++p;
      }
    } else {
      for (long p = b - 1; p >= a; --p)
        if (findPatternMatchesAt(hay, p - base, f.findText, f.matchCase, mlen) && p + mlen <= b) {
          at = p;
          return true;
        }
    }
    return false;
  };
  // Characters one match spans: ^? and ^^ stand for one each.
  long span = 0;
  for (size_t i = 0; i < f.findText.size(); ++i, ++span)
    if (f.findText[i] == u'^' && i + 1 < f.findText.size() && (f.findText[i + 1] == u'?' || f.findText[i + 1] == u'^')) ++i;
  // The text is read in windows that double from a small one up to a bound:
  // finding the next tag near the cursor costs the distance to it, and no
  // search holds more than one window of the script at a time. A window
  // reads `span` characters past its end, so a match across its edge is seen.
  constexpr long kFirstWindow = 256, kLargestWindow = 1L << 16;
  auto searchRange = [&](long a, long b, bool forward, long& at, long& mlen) {
    long chunk = kFirstWindow;
    for (long done = 0; done < b - a; done += chunk, chunk = std::min(chunk * 2, kLargestWindow)) {
      // Match starts looked at in this window: [first, stop).
      const long first = forward ? a + done : std::max(a, b - done - chunk);
      const long stop = forward ? std::min(b, first + chunk) : b - done;
      const long readTo = std::min(b, stop + span);
      u16 part = text({first, readTo});
      if (findIn(part, first, first, readTo, forward, at, mlen) && at < stop) return true;
    }
    return false;
  };

  if (replacing && f.replace == ReplaceMode::All) {
    std::vector<std::pair<long, long>> hits;
    long p = from;
    long at, mlen;
    while (p < to && searchRange(p, to, true, at, mlen)) {
      hits.push_back({at, mlen});
      p = at + std::max(mlen, 1L);
    }
    if (hits.empty()) return false;
    // Back to front so earlier offsets stay valid.
    for (auto it = hits.rbegin(); it != hits.rend(); ++it) {
      bool ital = italicAt({it->first, it->first + 1});
      replaceText({it->first, it->first + it->second}, *f.replaceWith, ital);
    }
    return true;
  }

  long at = -1, mlen = 0;
  bool found = searchRange(from, to, f.forward, at, mlen);
  if (!found && f.wrap)
    found = f.forward ? searchRange(0, from, true, at, mlen) : searchRange(to, len, false, at, mlen);
  if (!found) return false;
  if (replacing) {
    bool ital = italicAt({at, at + 1});
    replaceText({at, at + mlen}, *f.replaceWith, ital);
    setSelectionRange({at, at + static_cast<long>(f.replaceWith->size())});
  } else {
    setSelectionRange({at, at + mlen});
  }
  return true;
}

void DocumentService::replaceText(TextRange r, u16v t, bool italic) {
  eraseText(r);
  insertText(r.start, t, false, italic);
}

}  // namespace quillon
