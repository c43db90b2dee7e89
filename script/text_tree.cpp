#include "script/text_tree.h"

#include <algorithm>

namespace quillon {

namespace {

// Chunk and fan-out bounds. A chunk is short enough that moving its text on
// an edit costs little, long enough that the tree stays three or four levels
// deep for a feature film's script. Inserted text goes in pieces of at most
// kPiece, so one chunk that overflows splits into two of at least kLeafMin.
constexpr long kLeafMax = 512, kLeafMin = 128, kLeafFill = 384, kPiece = 256;
constexpr size_t kFanMax = 32, kFanMin = 8, kFanFill = 24;

long countMarks(const char16_t* c, long n) { return static_cast<long>(std::count(c, c + n, CR)); }

}  // namespace

struct TextTree::Node {
  long len = 0, crs = 0;
  bool leaf = true;
  u16 chars;                  // leaf
  std::vector<uint8_t> ital;  // leaf, one flag per character
  std::vector<std::unique_ptr<Node>> kids;

  void refresh() {
    if (leaf) {
      len = static_cast<long>(chars.size());
      crs = countMarks(chars.data(), len);
      return;
    }
    len = crs = 0;
    for (const auto& k : kids) {
      len += k->len;
      crs += k->crs;
    }
  }
  bool underfull() const { return leaf ? len < kLeafMin : kids.size() < kFanMin; }
  bool overfull() const { return leaf ? len > kLeafMax : kids.size() > kFanMax; }

  // The second half moves into a new sibling, returned.
  std::unique_ptr<Node> split() {
    auto right = std::make_unique<Node>();
    right->leaf = leaf;
    if (leaf) {
      const size_t half = chars.size() / 2;
      right->chars = chars.substr(half);
      right->ital.assign(ital.begin() + static_cast<long>(half), ital.end());
      chars.resize(half);
      ital.resize(half);
    } else {
      const size_t half = kids.size() / 2;
      right->kids.assign(std::make_move_iterator(kids.begin() + static_cast<long>(half)),
                         std::make_move_iterator(kids.end()));
      kids.resize(half);
    }
    refresh();
    right->refresh();
    return right;
  }

  std::unique_ptr<Node> clone() const {
    auto c = std::make_unique<Node>();
    c->len = len;
    c->crs = crs;
    c->leaf = leaf;
    c->chars = chars;
    c->ital = ital;
    for (const auto& k : kids) c->kids.push_back(k->clone());
    return c;
  }

  // A sibling to the right appended to this node.
  void absorb(Node& r) {
    if (leaf) {
      chars += r.chars;
      ital.insert(ital.end(), r.ital.begin(), r.ital.end());
    } else {
      for (auto& k : r.kids) kids.push_back(std::move(k));
    }
    len += r.len;
    crs += r.crs;
  }
};

namespace {

using Node = TextTree::Node;

std::unique_ptr<Node> insertAt(Node& n, long pos, u16v t, const uint8_t* it) {
  const long k = static_cast<long>(t.size());
  const long marks = countMarks(t.data(), k);
  n.len += k;
  n.crs += marks;
  if (n.leaf) {
    n.chars.insert(static_cast<size_t>(pos), t);
    n.ital.insert(n.ital.begin() + pos, it, it + k);
    return n.overfull() ? n.split() : nullptr;
  }
  // A place between two children goes to the left one, at its end.
  size_t i = 0;
  while (i + 1 < n.kids.size() && pos > n.kids[i]->len) pos -= n.kids[i++]->len;
  if (auto extra = insertAt(*n.kids[i], pos, t, it))
    n.kids.insert(n.kids.begin() + static_cast<long>(i) + 1, std::move(extra));
  return n.overfull() ? n.split() : nullptr;
}

// Children below their minimum join a neighbour (and split again evenly when
// the two together are too many), so every node keeps to its bounds.
void rebalance(Node& n) {
  size_t i = 0;
  while (i < n.kids.size() && n.kids.size() > 1) {
    if (!n.kids[i]->underfull()) {
      ++i;
      continue;
    }
    const size_t j = i + 1 < n.kids.size() ? i : i - 1;
    n.kids[j]->absorb(*n.kids[j + 1]);
    n.kids.erase(n.kids.begin() + static_cast<long>(j) + 1);
    if (n.kids[j]->overfull()) n.kids.insert(n.kids.begin() + static_cast<long>(j) + 1, n.kids[j]->split());
    i = j;
  }
}

// 0 <= a < b <= n.len. Children wholly inside go at once.
void eraseIn(Node& n, long a, long b) {
  if (n.leaf) {
    n.chars.erase(static_cast<size_t>(a), static_cast<size_t>(b - a));
    n.ital.erase(n.ital.begin() + a, n.ital.begin() + b);
    n.refresh();
    return;
  }
  long base = 0;
  size_t w = 0;
  for (size_t r = 0; r < n.kids.size(); ++r) {
    Node& k = *n.kids[r];
    const long lo = std::max(a, base) - base, hi = std::min(b, base + k.len) - base;
    base += k.len;
    if (lo >= hi || lo > 0 || hi < k.len) {
      if (lo < hi) eraseIn(k, lo, hi);
      if (w != r) n.kids[w] = std::move(n.kids[r]);
      ++w;
    }
  }
  n.kids.resize(w);
  rebalance(n);
  n.refresh();
}

void setItalicIn(Node& n, long base, long a, long b, bool on) {
  if (n.leaf) {
    const long lo = std::max(a, base) - base, hi = std::min(b, base + n.len) - base;
    if (lo < hi) std::fill(n.ital.begin() + lo, n.ital.begin() + hi, on ? 1 : 0);
    return;
  }
  for (auto& k : n.kids) {
    if (base >= b) break;
    if (base + k->len > a) setItalicIn(*k, base, a, b, on);
    base += k->len;
  }
}

bool walk(const Node& n, long base, long a, long b, const TextTree::PieceVisitor& f) {
  if (n.leaf) {
    const long lo = std::max(a, base) - base, hi = std::min(b, base + n.len) - base;
    return lo >= hi || f(n.chars.data() + lo, n.ital.data() + lo, hi - lo, base + lo);
  }
  for (const auto& k : n.kids) {
    if (base >= b) break;
    if (base + k->len > a && !walk(*k, base, a, b, f)) return false;
    base += k->len;
  }
  return true;
}

// Nodes of one level grouped under parents of about kFanFill children.
std::vector<std::unique_ptr<Node>> parentsOf(std::vector<std::unique_ptr<Node>> level) {
  const size_t groups = (level.size() + kFanFill - 1) / kFanFill;
  std::vector<std::unique_ptr<Node>> up;
  up.reserve(groups);
  size_t at = 0;
  for (size_t g = 0; g < groups; ++g) {
    const size_t take = (level.size() - at) / (groups - g);
    auto p = std::make_unique<Node>();
    p->leaf = false;
    for (size_t k = 0; k < take; ++k) p->kids.push_back(std::move(level[at++]));
    p->refresh();
    up.push_back(std::move(p));
  }
  return up;
}

}  // namespace

TextTree::TextTree() : root_(std::make_unique<Node>()) {}
TextTree::~TextTree() = default;
TextTree::TextTree(const TextTree& o) : root_(o.root_->clone()) {}
TextTree& TextTree::operator=(const TextTree& o) {
  if (this != &o) root_ = o.root_->clone();
  return *this;
}
TextTree::TextTree(TextTree&&) noexcept = default;
TextTree& TextTree::operator=(TextTree&&) noexcept = default;

void TextTree::assign(u16v text) {
  const long n = static_cast<long>(text.size());
  const long leaves = std::max(1L, (n + kLeafFill - 1) / kLeafFill);
  std::vector<std::unique_ptr<Node>> level;
  level.reserve(static_cast<size_t>(leaves));
  long at = 0;
  for (long l = 0; l < leaves; ++l) {
    const long take = (n - at) / (leaves - l);
    auto leaf = std::make_unique<Node>();
    leaf->chars = u16(text.substr(static_cast<size_t>(at), static_cast<size_t>(take)));
    leaf->ital.assign(static_cast<size_t>(take), 0);
    leaf->refresh();
    level.push_back(std::move(leaf));
    at += take;
  }
  while (level.size() > 1) level = parentsOf(std::move(level));
  root_ = std::move(level.front());
}

long TextTree::length() const { return root_->len; }
long TextTree::marks() const { return root_->crs; }

void TextTree::forEachPiece(long a, long b, const PieceVisitor& f) const {
  a = std::clamp(a, 0L, length());
  b = std::clamp(b, a, length());
  if (a < b) walk(*root_, 0, a, b, f);
}

u16 TextTree::text(long a, long b) const {
  u16 out;
  out.reserve(static_cast<size_t>(std::max(0L, std::min(b, length()) - std::max(a, 0L))));
  forEachPiece(a, b, [&](const char16_t* c, const uint8_t*, long n, long) {
    out.append(c, static_cast<size_t>(n));
    return true;
  });
  return out;
}

std::vector<uint8_t> TextTree::italics(long a, long b) const {
  std::vector<uint8_t> out;
  forEachPiece(a, b, [&](const char16_t*, const uint8_t* i, long n, long) {
    out.insert(out.end(), i, i + n);
    return true;
  });
  return out;
}

void TextTree::insert(long pos, u16v text, const uint8_t* italic) {
  pos = std::clamp(pos, 0L, length());
  for (size_t done = 0; done < text.size(); done += kPiece) {
    const u16v piece = text.substr(done, kPiece);
    if (auto extra = insertAt(*root_, pos + static_cast<long>(done), piece, italic + done)) {
      auto top = std::make_unique<Node>();
      top->leaf = false;
      top->kids.push_back(std::move(root_));
      top->kids.push_back(std::move(extra));
      top->refresh();
      root_ = std::move(top);
    }
  }
}

void TextTree::erase(long a, long b) {
  a = std::clamp(a, 0L, length());
  b = std::clamp(b, a, length());
  if (a == b) return;
  eraseIn(*root_, a, b);
  while (!root_->leaf && root_->kids.size() == 1) root_ = std::move(root_->kids.front());
  if (!root_->leaf && root_->kids.empty()) root_ = std::make_unique<Node>();
}

void TextTree::setItalic(long a, long b, bool on) {
  a = std::clamp(a, 0L, length());
  b = std::clamp(b, a, length());
  if (a < b) setItalicIn(*root_, 0, a, b, on);
}

long TextTree::marksBefore(long pos) const {
  pos = std::clamp(pos, 0L, length());
  const Node* n = root_.get();
  long count = 0;
  while (!n->leaf) {
    size_t i = 0;
    while (i + 1 < n->kids.size() && pos >= n->kids[i]->len) {
      pos -= n->kids[i]->len;
      count += n->kids[i++]->crs;
    }
    n = n->kids[i].get();
  }
  return count + countMarks(n->chars.data(), pos);
}

long TextTree::markAt(long k) const {
  if (k < 1 || k > marks()) return -1;
  const Node* n = root_.get();
  long base = 0;
  while (!n->leaf) {
    size_t i = 0;
    while (k > n->kids[i]->crs) {
      k -= n->kids[i]->crs;
      base += n->kids[i++]->len;
    }
    n = n->kids[i].get();
  }
  for (long i = 0;; ++i)
    if (n->chars[static_cast<size_t>(i)] == CR && --k == 0) return base + i;
}

}  // namespace quillon
