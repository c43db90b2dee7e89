// Whole-script rewriting of tag times that stays linear in the script's size.
//
// Every retiming and interleave step is a `replaceInDocument` of a times
// pattern, `Left(in,8) ^? Right(in,2) > Left(out,8) ^? Right(out,2) ]`: the
// first match counted from the top of the document is replaced. Searching
// the whole script for each of thousands of tags would be quadratic, so this
// keeps an index of every place where such a pattern could match, keyed by
// its text with the two frame separators masked out, and updates it around
// each replacement. The first place of a key is exactly the first match from
// the top, whatever the earlier replacements wrote, so the result is the one
// `replaceInDocument` gives.
#pragma once

#include <set>
#include <unordered_map>

#include "core/station.h"

namespace quillon {

class TimesReplacer {
 public:
  explicit TimesReplacer(Station& st) : st_(st) {}

  // As replaceInDocument(st, findText, replaceText). A find text of another
  // shape goes to replaceInDocument itself.
  bool replace(const u16& findText, const u16& replaceText);
  // Whether a find text is one the index answers for.
  static bool isTimesPattern(const u16& findText);

 private:
  void rebuild();
  void forget(long from, long to);  // windows starting in [from, to)
  void learn(long from, long to);
  void learnWindow(long p, u16v window);

  Station& st_;
  bool built_ = false;
  std::unordered_map<u16, std::set<long>> index_;
};

}  // namespace quillon
