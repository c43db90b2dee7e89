// What the .docx and .odt writers share: the characters a file can carry, and
// where each paragraph of the station's text goes in the body as loaded.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "script/files/paragraph_match.h"

namespace quillon::docfiles {

// Drops what no file may carry (unpaired surrogates, U+FFFE, U+FFFF) and
// control characters; `control` gives what a control character (below 0x20)
// becomes, 0 to drop it. Italics follow their characters.
std::vector<ParagraphText> fileSafe(std::vector<ParagraphText> paragraphs, char16_t (*control)(char16_t));

// Where `old` sits inside `now` when `now` is `old` with text added at either
// end, italics alike: text put in front (as a tag is) first, then text added
// behind, then anywhere. npos when `now` does not hold it.
size_t keptWithin(const ParagraphText& old, const ParagraphText& now);

// Puts each paragraph of `after` into a body whose paragraph elements, as
// loaded, are `nodes`, holding `source`. A paragraph kept from the source
// stays in its element, edited when it changed; a new one goes in front of
// the next kept paragraph, formatted like it, else behind the last one placed,
// else into the element `firstNew()` adds. `placed` gets the element of each
// paragraph of `after`, `used` marks the elements kept: the others are the
// caller's to remove. False when `nodes` no longer match `source`.
//
// Writer: formattingOf(index, element), edit(element, was, now, formatting),
// fill(element, now, formatting or nullptr, whether to take the last run's).
template <class Writer, class FirstNew>
bool placeParagraphs(const std::vector<pugi::xml_node>& nodes, const std::vector<ParagraphText>& source,
                     const std::vector<ParagraphText>& after, Writer& writer, const std::string& paragraphName,
                     FirstNew firstNew, std::vector<pugi::xml_node>& placed, std::vector<char>& used,
                     std::string& problem) {
  if (nodes.size() != source.size()) {
    problem = "the kept copy of the document no longer matches it";
    return false;
  }
  const std::vector<ParagraphOrigin> origins = matchParagraphs(source, after);
  const size_t n = after.size();
  // The index in `after` of the next paragraph kept from the source, or -1.
  std::vector<long> nextKept(n + 1, -1);
  for (size_t j = n; j-- > 0;) nextKept[j] = origins[j].source >= 0 ? static_cast<long>(j) : nextKept[j + 1];

  used.assign(nodes.size(), 0);
  placed.assign(n, pugi::xml_node());
  pugi::xml_node previous;   // the last paragraph placed, in document order
  long previousSource = -1;  // and the source paragraph it came from, if any
  for (size_t j = 0; j < n; ++j) {
    const ParagraphOrigin& o = origins[j];
    const ParagraphText& now = after[j];
    pugi::xml_node p;
    if (o.source >= 0) {
      const auto s = static_cast<size_t>(o.source);
      p = nodes[s];
      used[s] = 1;
      if (!o.same) writer.edit(p, source[s], now, writer.formattingOf(o.source, p));
      previousSource = o.source;
    } else if (long k = nextKept[j]; k >= 0) {
      // In front of the next kept paragraph, formatted like it.
      const long s = origins[static_cast<size_t>(k)].source;
      pugi::xml_node anchor = nodes[static_cast<size_t>(s)];
      const auto& f = writer.formattingOf(s, anchor);
      p = anchor.parent().insert_child_before(paragraphName.c_str(), anchor);
      writer.fill(p, now, &f, false);
    } else if (previous) {
      const auto* f = previousSource >= 0
                          ? &writer.formattingOf(previousSource, nodes[static_cast<size_t>(previousSource)])
                          : nullptr;
      p = previous.parent().insert_child_after(paragraphName.c_str(), previous);
      writer.fill(p, now, f, true);
    } else {
      p = firstNew();
      writer.fill(p, now, nullptr, false);
    }
    placed[j] = p;
    previous = p;
  }
  return true;
}

}  // namespace quillon::docfiles
