#include "script/files/paragraph_match.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>

namespace quillon::docfiles {

std::vector<ParagraphText> documentParagraphs(const MemoryDocument& doc) {
  std::vector<ParagraphText> out;
  const u16& t = doc.text();
  const auto& flags = doc.italicFlags();
  out.reserve(static_cast<size_t>(doc.paragraphsCount()));
  for (long n = 1; n <= doc.paragraphsCount(); ++n) {
    TextRange r = doc.paragraph(n);
    long end = r.end - 1;  // the mark
    out.push_back({t.substr(static_cast<size_t>(r.start), static_cast<size_t>(end - r.start)),
                   std::vector<uint8_t>(flags.begin() + r.start, flags.begin() + end)});
  }
  return out;
}

namespace {

class Matcher {
 public:
  Matcher(const std::vector<ParagraphText>& a, const std::vector<ParagraphText>& b) : a_(a), b_(b) {
    out.assign(b.size(), {});
    ha_.reserve(a.size());
    hb_.reserve(b.size());
    for (const auto& p : a) ha_.push_back(hash(p));
    for (const auto& p : b) hb_.push_back(hash(p));
  }

  void run() { align(0, static_cast<long>(a_.size()), 0, static_cast<long>(b_.size()), 0); }

  std::vector<ParagraphOrigin> out;

 private:
  static size_t hash(const ParagraphText& p) {
    size_t h = std::hash<std::u16string_view>()(p.text);
    std::string_view flags(reinterpret_cast<const char*>(p.italic.data()), p.italic.size());
    return h ^ (std::hash<std::string_view>()(flags) * 31);
  }
  bool equal(long i, long j) const { return ha_[i] == hb_[j] && a_[i] == b_[j]; }

  void align(long a0, long a1, long b0, long b1, int depth) {
    while (a0 < a1 && b0 < b1 && equal(a0, b0)) out[b0++] = {a0++, true};
    while (a0 < a1 && b0 < b1 && equal(a1 - 1, b1 - 1)) out[--b1] = {--a1, true};
    // Deep nesting only comes from pathological repetition; pairing in order is then good enough.
    if (a0 == a1 || b0 == b1 || depth > 48) {
      pair(a0, a1, b0, b1);
      return;
    }
    // Paragraphs occurring once on each side, in an order both sides agree on.
    std::unordered_map<size_t, std::pair<long, long>> seen;  // hash -> (count in a, index)
    for (long i = a0; i < a1; ++i) {
      auto& s = seen[ha_[i]];
      s.first += 1;
      s.second = i;
    }
    std::unordered_map<size_t, std::pair<long, long>> seenB;
    for (long j = b0; j < b1; ++j) {
      auto it = seen.find(hb_[j]);
      if (it == seen.end() || it->second.first != 1) continue;
      auto& s = seenB[hb_[j]];
      s.first += 1;
      s.second = j;
    }
    std::vector<std::pair<long, long>> candidates;  // (b index, a index) in b order
    for (long j = b0; j < b1; ++j) {
      auto it = seenB.find(hb_[j]);
      if (it == seenB.end() || it->second.first != 1) continue;
      long i = seen[hb_[j]].second;
      if (equal(i, j)) candidates.emplace_back(j, i);
    }
    std::vector<std::pair<long, long>> anchors = longestIncreasing(candidates);
    if (anchors.empty()) {
      pair(a0, a1, b0, b1);
      return;
    }
    long pa = a0, pb = b0;
    for (auto [j, i] : anchors) {
      align(pa, i, pb, j, depth + 1);
      out[j] = {i, true};
      pa = i + 1;
      pb = j + 1;
    }
    align(pa, a1, pb, b1, depth + 1);
  }

  // Patience sorting: the longest run of candidates increasing in a.
  static std::vector<std::pair<long, long>> longestIncreasing(const std::vector<std::pair<long, long>>& c) {
    std::vector<long> tails;  // index into c of the smallest tail of each length
    std::vector<long> prev(c.size(), -1);
    for (size_t k = 0; k < c.size(); ++k) {
      auto it = std::lower_bound(tails.begin(), tails.end(), c[k].second,
                                 [&](long idx, long v) { return c[static_cast<size_t>(idx)].second < v; });
      if (it != tails.begin()) prev[k] = *(it - 1);
      if (it == tails.end())
        tails.push_back(static_cast<long>(k));
      else
        *it = static_cast<long>(k);
    }
    std::vector<std::pair<long, long>> seq;
    for (long k = tails.empty() ? -1 : tails.back(); k >= 0; k = prev[static_cast<size_t>(k)])
      seq.push_back(c[static_cast<size_t>(k)]);
    std::reverse(seq.begin(), seq.end());
    return seq;
  }

  // No common paragraph left: edited ones pair in order; a surplus on the
  // new side is new text, on the old side deleted text.
  void pair(long a0, long a1, long b0, long b1) {
    for (long j = b0; j < b1; ++j) {
      long i = a0 + (j - b0);
      out[j] = i < a1 ? ParagraphOrigin{i, false} : ParagraphOrigin{-1, false};
    }
  }

  const std::vector<ParagraphText>& a_;
  const std::vector<ParagraphText>& b_;
  std::vector<size_t> ha_, hb_;
};

}  // namespace

std::vector<ParagraphOrigin> matchParagraphs(const std::vector<ParagraphText>& before,
                                             const std::vector<ParagraphText>& after) {
  Matcher m(before, after);
  m.run();
  return m.out;
}

}  // namespace quillon::docfiles
