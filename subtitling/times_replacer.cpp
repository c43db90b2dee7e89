#include "subtitling/times_replacer.h"

#include <algorithm>

#include "script/document_ops.h"
#include "script/document_service.h"

namespace quillon {

namespace {

// A times pattern matches 24 characters of the document: cue-in with its
// frame separator at 8, '>' at 11, cue-out with its separator at 20, ']' at 23.
constexpr long kWindow = 24;
constexpr size_t kInSep = 8, kOutSep = 20, kGt = 11, kBracket = 23;
constexpr char16_t kMask = u'\0';

// The window's key, or false when no times pattern can match it.
bool windowKey(u16v w, u16& key) {
  if (static_cast<long>(w.size()) < kWindow || w[kGt] != u'>' || w[kBracket] != u']') return false;
  key.assign(w.substr(0, kWindow));
  key[kInSep] = kMask;
  key[kOutSep] = kMask;
  return true;
}

// The key a find text stands for, or false when it is not a times pattern
// (then only the general search can answer for it).
bool patternKey(const u16& f, u16& key) {
  if (f.size() != 26 || f.substr(8, 2) != u"^?" || f.substr(21, 2) != u"^?" || f[12] != u'>' || f[25] != u']')
    return false;
  key = f.substr(0, 8) + kMask + f.substr(10, 11) + kMask + f.substr(23, 3);
  // Any other caret would be a search code of its own.
  for (size_t i = 0; i < key.size(); ++i)
    if (key[i] == u'^') return false;
  return key.size() == static_cast<size_t>(kWindow);
}

}  // namespace

void TimesReplacer::learnWindow(long p, u16v window) {
  u16 key;
  if (windowKey(window, key)) index_[key].insert(p);
}

void TimesReplacer::rebuild() {
  index_.clear();
  const u16 all = st_.doc->content();
  const long n = static_cast<long>(all.size());
  for (long p = 0; p + kWindow <= n; ++p)
    if (all[static_cast<size_t>(p + kGt)] == u'>' && all[static_cast<size_t>(p + kBracket)] == u']')
      learnWindow(p, u16v(all).substr(static_cast<size_t>(p), kWindow));
  built_ = true;
}

void TimesReplacer::forget(long from, long to) {
  DocumentService& d = *st_.doc;
  from = std::max(0L, from);
  const u16 t = d.text({from, to + kWindow - 1});
  for (long p = from; p < to; ++p) {
    u16 key;
    if (windowKey(u16v(t).substr(std::min(t.size(), static_cast<size_t>(p - from))), key)) {
      auto it = index_.find(key);
      if (it == index_.end()) continue;
      it->second.erase(p);
      if (it->second.empty()) index_.erase(it);
    }
  }
}

void TimesReplacer::learn(long from, long to) {
  DocumentService& d = *st_.doc;
  from = std::max(0L, from);
  const u16 t = d.text({from, to + kWindow - 1});
  for (long p = from; p < to; ++p) learnWindow(p, u16v(t).substr(std::min(t.size(), static_cast<size_t>(p - from))));
}

bool TimesReplacer::isTimesPattern(const u16& findText) {
  u16 key;
  return patternKey(findText, key);
}

bool TimesReplacer::replace(const u16& findText, const u16& replaceText) {
  DocumentService& d = *st_.doc;
  u16 key;
  if (!patternKey(findText, key)) {
    built_ = false;
    return replaceInDocument(st_, findText, replaceText);
  }
  if (!built_) rebuild();
  auto it = index_.find(key);
  if (it == index_.end()) {
    // Nothing matches anywhere: the search of the whole document changes
    // nothing and leaves it selected.
    d.selectAll();
    d.undoClear();
    return false;
  }
  const long at = *it->second.begin();
  // Every window that overlaps the replaced text changes its key.
  forget(at - kWindow + 1, at + kWindow);
  // The search runs over the match alone and finds it at once; the
  // replacement itself is the one replaceInDocument makes.
  d.select({at, at + kWindow});
  FindRequest f;
  f.findText = findText;
  f.replaceWith = replaceText;
  f.replace = ReplaceMode::One;
  d.execute(f);
  d.undoClear();
  if (static_cast<long>(replaceText.size()) == kWindow)
    learn(at - kWindow + 1, at + kWindow);
  else
    built_ = false;  // later places moved: read the index afresh next time
  return d.selection() == findText;
}

}  // namespace quillon
