#include <gtest/gtest.h>

#include "script/files/paragraph_match.h"

namespace quillon::testing {
namespace {

using docfiles::ParagraphText;

std::vector<ParagraphText> paragraphs(std::initializer_list<const char16_t*> texts) {
  std::vector<ParagraphText> out;
  for (const char16_t* t : texts) out.push_back({t, std::vector<uint8_t>(std::u16string_view(t).size(), 0)});
  return out;
}

// "s3" for the unchanged source 3, "e3" for source 3 edited, "n" for new.
std::string origins(const std::vector<ParagraphText>& before, const std::vector<ParagraphText>& after) {
  std::string out;
  for (const auto& o : docfiles::matchParagraphs(before, after)) {
    if (!out.empty()) out += ' ';
    out += o.source < 0 ? "n" : (o.same ? "s" : "e") + std::to_string(o.source);
  }
  return out;
}

TEST(ParagraphMatch, EditedParagraphsKeepTheirOriginsBesideNewAndMovedOnes) {
  const auto three = paragraphs({u"First", u"Second line", u"Third"});
  auto italic = paragraphs({u"First", u"Third"});
  italic[1].italic[0] = 1;
  struct Case {
    const char* what;
    std::vector<ParagraphText> before, after;
    std::string expected;
  } cases[] = {
      {"tags in front of repeated lines shift nothing",
       paragraphs({u"JOHN", u"Hello.", u"", u"JOHN", u"Hello.", u"", u"MARY", u"Bye."}),
       paragraphs({u"DUB[0 1 00:00:01:00>00:00:02:00] JOHN", u"JOHN", u"Hello.", u"",
                   u"DUB[0 1 00:00:03:00>00:00:04:00] JOHN", u"JOHN", u"Hello.", u"", u"MARY", u"Bye."}),
       "n s0 s1 s2 n s3 s4 s5 s6 s7"},
      {"an edit beside a new paragraph", three,
       paragraphs({u"First", u"SUB[0 N 00:00:01:00>00:00:02:00]", u"Second line, longer", u"Third"}), "s0 n e1 s2"},
      {"deleted paragraphs go unused; italics alone make an edit", three, italic, "s0 e2"},
      {"a move keeps the longest ordered run", paragraphs({u"a", u"b", u"c", u"d"}),
       paragraphs({u"a", u"d", u"b", u"c"}), "s0 n s1 s2"},
  };
  for (const Case& c : cases) EXPECT_EQ(origins(c.before, c.after), c.expected) << c.what;
}

}  // namespace
}  // namespace quillon::testing
