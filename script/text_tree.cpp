#include "script/text_tree.h"

#include <algorithm>

namespace quillon {

namespace {

// Chunk and fan-out bounds. A chunk is short enough that moving its text on
// an edit costs little, long enough that the tree stays three or four levels
// deep for a feature film's script. Inserted text goes in pieces of at most
// kPiece, so a chunk that overflows splits into two that fit.
constexpr long kLeafMax = 512, kLeafMin = 128, kLeafFill = 384, kPiece = 256;
constexpr size_t kFanMax = 32, kFanMin = 8, kFanFill = 24;

long countMarks(const char16_t* c, long n) { return static_cast<long>(std::count(c, c + n, CR)); }

}  // namespace

struct TextTree::Node {
  // A child with its counts kept beside it, so that a walk down the tree
  // reads one parent's array instead of visiting every child.
  struct Kid {
    long len = 0, crs = 0;
    size_t size = 0;  // the child's characters (a chunk) or children
    std::unique_ptr<Node> node;
  };

  long len = 0, crs = 0;
  bool leaf = true;
  u16 chars;                  // a chunk's text
  std::vector<uint8_t> ital;  // a chunk's flags, one per character
  std::vector<Kid> kids;

  size_t size() const { return leaf ? chars.size() : kids.size(); }
  static Kid kid(std::unique_ptr<Node> n) { return {n->len, n->crs, n->size(), std::move(n)}; }
  static void sync(Kid& k) { k = kid(std::move(k.node)); }

  void refresh() {
    if (leaf) {
      len = static_cast<long>(chars.size());
      crs = countMarks(chars.data(), len);
      return;
    }
    len = crs = 0;
    for (const Kid& k : kids) {
      len += k.len;
      crs += k.crs;
    }
  }
  // Bounds of the children, read from their entries alone.
  bool kidsAreLeaves() const { return kids.front().node->leaf; }
  bool underfull(const Kid& k, bool leaves) const { return leaves ? k.len < kLeafMin : k.size < kFanMin; }
  bool overfull() const { return leaf ? len > kLeafMax : kids.size() > kFanMax; }

  // What lies from `at` on (characters or children) moves into a new
  // sibling, returned.
  std::unique_ptr<Node> split(size_t at) {
    auto right = std::make_unique<Node>();
    right->leaf = leaf;
    if (leaf) {
      right->chars = chars.substr(at);
      right->ital.assign(ital.begin() + static_cast<long>(at), ital.end());
      chars.resize(at);
      ital.resize(at);
    } else {
      right->kids.assign(std::make_move_iterator(kids.begin() + static_cast<long>(at)),
                         std::make_move_iterator(kids.end()));
      kids.resize(at);
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
    for (const Kid& k : kids) c->kids.push_back(kid(k.node->clone()));
    return c;
  }

  // A sibling to the right appended to this node.
  void absorb(Node& r) {
    if (leaf) {
      chars += r.chars;
      ital.insert(ital.end(), r.ital.begin(), r.ital.end());
    } else {
      for (Kid& k : r.kids) kids.push_back(std::move(k));
    }
    len += r.len;
    crs += r.crs;
  }
};

namespace {

using Node = TextTree::Node;

// An overflowing node splits just behind what went in, as far as both sides
// fit: text written in order, as an import writes it, then fills every chunk
// and every node instead of leaving each half empty.
std::unique_ptr<Node> splitBehind(Node& n, size_t end) {
  const size_t most = n.leaf ? static_cast<size_t>(kLeafMax) : kFanMax;
  return n.split(std::clamp(end, n.size() - most, most));
}

std::unique_ptr<Node> insertAt(Node& n, long pos, u16v t, const uint8_t* it) {
  const long k = static_cast<long>(t.size());
  const long marks = countMarks(t.data(), k);
  n.len += k;
  n.crs += marks;
  if (n.leaf) {
    n.chars.insert(static_cast<size_t>(pos), t);
    n.ital.insert(n.ital.begin() + pos, it, it + k);
    return n.overfull() ? splitBehind(n, static_cast<size_t>(pos + k)) : nullptr;
  }
  // A place between two children goes to the left one, at its end.
  size_t i = 0;
  while (i + 1 < n.kids.size() && pos > n.kids[i].len) pos -= n.kids[i++].len;
  auto extra = insertAt(*n.kids[i].node, pos, t, it);
  Node::sync(n.kids[i]);
  if (extra) n.kids.insert(n.kids.begin() + static_cast<long>(i) + 1, Node::kid(std::move(extra)));
  return n.overfull() ? splitBehind(n, i + 2) : nullptr;
}

// Children below their minimum join a neighbour (and split again evenly when
// the two together are too many), so every node keeps to its bounds.
void rebalance(Node& n) {
  if (n.kids.empty()) return;
  const bool leaves = n.kidsAreLeaves();
  size_t i = 0;
  while (i < n.kids.size() && n.kids.size() > 1) {
    if (!n.underfull(n.kids[i], leaves)) {
      ++i;
      continue;
    }
    const size_t j = i + 1 < n.kids.size() ? i : i - 1;
    Node& joined = *n.kids[j].node;
    joined.absorb(*n.kids[j + 1].node);
    n.kids.erase(n.kids.begin() + static_cast<long>(j) + 1);
    if (joined.overfull())
      n.kids.insert(n.kids.begin() + static_cast<long>(j) + 1, Node::kid(joined.split(joined.size() / 2)));
    Node::sync(n.kids[j]);
    i = j;
  }
}

// 0 <= a < b <= n.len; returns the paragraph marks erased. Children wholly
// inside go at once; only the children the range touches are visited.
long eraseIn(Node& n, long a, long b) {
  long gone = 0;
  if (n.leaf) {
    gone = countMarks(n.chars.data() + a, b - a);
    n.chars.erase(static_cast<size_t>(a), static_cast<size_t>(b - a));
    n.ital.erase(n.ital.begin() + a, n.ital.begin() + b);
  } else {
    size_t i = 0;
    long base = 0;
    while (base + n.kids[i].len <= a) base += n.kids[i++].len;
    size_t dropFrom = i, dropTo = i;  // the children wholly erased lie together
    for (; i < n.kids.size() && base < b; ++i) {
      Node::Kid& k = n.kids[i];
      const long lo = std::max(a, base) - base, hi = std::min(b, base + k.len) - base;
      base += k.len;
      if (lo == 0 && hi == k.len) {
        gone += k.crs;
        if (dropTo == dropFrom) dropFrom = i;
        dropTo = i + 1;
        continue;
      }
      gone += eraseIn(*k.node, lo, hi);
      Node::sync(k);
    }
    n.kids.erase(n.kids.begin() + static_cast<long>(dropFrom), n.kids.begin() + static_cast<long>(dropTo));
    rebalance(n);
  }
  n.len -= b - a;
  n.crs -= gone;
  return gone;
}

void setItalicIn(Node& n, long base, long a, long b, bool on) {
  if (n.leaf) {
    const long lo = std::max(a, base) - base, hi = std::min(b, base + n.len) - base;
    if (lo < hi) std::fill(n.ital.begin() + lo, n.ital.begin() + hi, on ? 1 : 0);
    return;
  }
  for (Node::Kid& k : n.kids) {
    if (base >= b) break;
    if (base + k.len > a) setItalicIn(*k.node, base, a, b, on);
    base += k.len;
  }
}

bool walk(const Node& n, long base, long a, long b, const TextTree::PieceVisitor& f) {
  if (n.leaf) {
    const long lo = std::max(a, base) - base, hi = std::min(b, base + n.len) - base;
    return lo >= hi || f(n.chars.data() + lo, n.ital.data() + lo, hi - lo, base + lo);
  }
  for (const Node::Kid& k : n.kids) {
    if (base >= b) break;
    if (base + k.len > a && !walk(*k.node, base, a, b, f)) return false;
    base += k.len;
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
    for (size_t k = 0; k < take; ++k) p->kids.push_back(Node::kid(std::move(level[at++])));
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
      top->kids.push_back(Node::kid(std::move(root_)));
      top->kids.push_back(Node::kid(std::move(extra)));
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
  while (!root_->leaf && root_->kids.size() == 1) root_ = std::move(root_->kids.front().node);
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
    while (i + 1 < n->kids.size() && pos >= n->kids[i].len) {
      pos -= n->kids[i].len;
      count += n->kids[i++].crs;
    }
    n = n->kids[i].node.get();
  }
  return count + countMarks(n->chars.data(), pos);
}

long TextTree::markAt(long k) const {
  if (k < 1 || k > marks()) return -1;
  const Node* n = root_.get();
  long base = 0;
  while (!n->leaf) {
    size_t i = 0;
    while (k > n->kids[i].crs) {
      k -= n->kids[i].crs;
      base += n->kids[i++].len;
    }
    n = n->kids[i].node.get();
  }
  // Whole blocks are counted (which vectorises) before the one holding the mark is read.
  const char16_t* c = n->chars.data();
  long i = 0;
  for (long in = 0; (in = countMarks(c + i, std::min(64L, n->len - i))) < k; i += 64) k -= in;
  for (;; ++i)
    if (c[i] == CR && --k == 0) return base + i;
}

}  // namespace quillon
