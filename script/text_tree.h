// The script document's text: UTF-16 characters, each with an italic flag,
// held in a balanced tree of short chunks (a B-tree rope).
//
// Every node knows how many characters and paragraph marks (CR) lie below
// it, so an insertion, an erasure, a read of a range and the paragraph
// lookups (the k-th mark, the marks before a place) each cost the tree's
// depth times its fan-out plus one chunk, whatever the script's size and
// wherever in it the edit falls.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "core/text.h"

namespace quillon {

class TextTree {
 public:
  TextTree();
  ~TextTree();
  TextTree(const TextTree&);
  TextTree& operator=(const TextTree&);
  TextTree(TextTree&&) noexcept;
  TextTree& operator=(TextTree&&) noexcept;

  // The whole text replaced; every character upright.
  void assign(u16v text);

  long length() const;
  long marks() const;  // paragraph marks in the whole text

  // Offsets are clamped to the text.
  u16 text(long a, long b) const;
  std::vector<uint8_t> italics(long a, long b) const;

  // `italic` holds one flag per inserted character.
  void insert(long pos, u16v text, const uint8_t* italic);
  void erase(long a, long b);
  void setItalic(long a, long b, bool on);

  // Paragraph marks in [0, pos).
  long marksBefore(long pos) const;
  // Offset of the k-th paragraph mark, from 1; -1 when there are fewer.
  long markAt(long k) const;

  // Called with the stored runs of [a, b) in order: their characters, their
  // flags, their length and the offset of the first; false stops the walk.
  using PieceVisitor = std::function<bool(const char16_t*, const uint8_t*, long, long)>;
  void forEachPiece(long a, long b, const PieceVisitor& f) const;

  struct Node;

 private:
  std::unique_ptr<Node> root_;
};

}  // namespace quillon
