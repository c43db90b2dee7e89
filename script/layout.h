// The layout rule by which the embedded document counts laid-out lines: a
// fixed line width in characters with word wrap. The script window wraps its
// text by the same rule, so the count matches what the operator sees.
#pragma once

#include "core/text.h"

namespace quillon {

inline constexpr long kLayoutLineWidth = 60;     // characters per line
inline constexpr long kLayoutLinesPerPage = 46;

// Lines a text takes: each paragraph at least one line; words wrap whole to
// the next line; a word longer than the width is broken at the width.
long countLayoutLines(u16v text, long width);
// Words as the word-count statistic counts them: runs of characters between
// blanks, tabs and paragraph marks.
long countStatisticWords(u16v text);

}  // namespace quillon
