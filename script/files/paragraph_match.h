// Which paragraph of a loaded file each paragraph of the edited document
// comes from, so a save can write untouched paragraphs back as they were
// and give edited or new ones the formatting of their origin or neighbour.
#pragma once

#include <cstdint>
#include <vector>

#include "core/text.h"
#include "script/memory_document.h"

namespace quillon::docfiles {

struct ParagraphText {
  u16 text;                     // without its paragraph mark
  std::vector<uint8_t> italic;  // one flag a character
  bool operator==(const ParagraphText&) const = default;
};

// The paragraphs of a memory document, marks left out.
std::vector<ParagraphText> documentParagraphs(const MemoryDocument& doc);

struct ParagraphOrigin {
  long source = -1;    // index into the loaded paragraphs, -1 for a new one
  bool same = false;   // text and italics unchanged
};

// One origin per paragraph of `after`. Sources are used at most once and in
// increasing order; unused sources were deleted. Unique unchanged paragraphs
// anchor the match (so a tag paragraph inserted anywhere shifts nothing);
// between anchors, equal paragraphs at both ends match and the rest pair up
// in order as edited paragraphs, extra ones being new or deleted.
std::vector<ParagraphOrigin> matchParagraphs(const std::vector<ParagraphText>& before,
                                             const std::vector<ParagraphText>& after);

}  // namespace quillon::docfiles
