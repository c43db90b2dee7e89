#include "script/files/paragraph_match.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>

namespace quillon::docfiles {

std::vector<ParagraphText> documentParagraphs(const MemoryDocument& doc) {
  std::vector<ParagraphText> out;
  const u16 t = doc.text();
  const auto flags = doc.italicFlags();
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

  // No equal paragraph left. Old and new pair up in order as edited
  // paragraphs, choosing the pairs whose texts share the most at their
  // ends (a tag put in front, a word added behind); a surplus on the new
  // side is new text, on the old side deleted text.
  void pair(long a0, long a1, long b0, long b1) {
    long na = a1 - a0, nb = b1 - b0;
    for (long j = b0; j < b1; ++j) out[j] = {-1, false};
    if (na == 0 || nb == 0) return;
    if (na * nb > 250000) {  // too many to weigh: in order
      for (long k = 0; k < std::min(na, nb); ++k) out[b0 + k] = {a0 + k, false};
      return;
    }
    // best[i][j]: the best score pairing a[a0+i..] with b[b0+j..].
    std::vector<double> best(static_cast<size_t>((na + 1) * (nb + 1)), 0.0);
    auto at = [&](long i, long j) -> double& { return best[static_cast<size_t>(i * (nb + 1) + j)]; };
    for (long i = na - 1; i >= 0; --i)
      for (long j = nb - 1; j >= 0; --j)
        at(i, j) = std::max({at(i + 1, j), at(i, j + 1), at(i + 1, j + 1) + likeness(a0 + i, b0 + j)});
    for (long i = 0, j = 0; i < na && j < nb;) {
      if (at(i, j) == at(i + 1, j + 1) + likeness(a0 + i, b0 + j)) {
        out[b0 + j] = {a0 + i, false};
        ++i;
        ++j;
      } else if (at(i, j) == at(i, j + 1)) {
        ++j;
      } else {
        ++i;
      }
    }
  }

  // How much of two paragraphs agrees at their ends; a little for any pair,
  // so that edited paragraphs keep their own formatting.
  double likeness(long i, long j) const {
    const u16& x = a_[i].text;
    const u16& y = b_[j].text;
    size_t shorter = std::min(x.size(), y.size()), longer = std::max(x.size(), y.size());
    size_t pre = 0;
    while (pre < shorter && x[pre] == y[pre]) ++pre;
    size_t suf = 0;
    while (suf < shorter - pre && x[x.size() - 1 - suf] == y[y.size() - 1 - suf]) ++suf;
    return 0.001 + (longer ? static_cast<double>(pre + suf) / static_cast<double>(longer) : 1.0);
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
