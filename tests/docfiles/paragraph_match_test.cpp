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

TEST(ParagraphMatch, TagsInFrontOfRepeatedLinesShiftNothing) {
  auto before = paragraphs({u"JOHN", u"Hello.", u"", u"JOHN", u"Hello.", u"", u"MARY", u"Bye."});
  auto after = paragraphs({u"DUB[0 1 00:00:01:00>00:00:02:00] JOHN", u"JOHN", u"Hello.", u"",
                           u"DUB[0 1 00:00:03:00>00:00:04:00] JOHN", u"JOHN", u"Hello.", u"", u"MARY", u"Bye."});
  EXPECT_EQ(origins(before, after), "n s0 s1 s2 n s3 s4 s5 s6 s7");
}

TEST(ParagraphMatch, AnEditedParagraphKeepsItsOriginBesideANewOne) {
  auto before = paragraphs({u"First", u"Second line", u"Third"});
  auto after = paragraphs({u"First", u"SUB[0 N 00:00:01:00>00:00:02:00]", u"Second line, longer", u"Third"});
  EXPECT_EQ(origins(before, after), "s0 n e1 s2");
  // Deleted paragraphs are simply not used; italics alone make an edit.
  auto italic = paragraphs({u"First", u"Third"});
  italic[1].italic[0] = 1;
  EXPECT_EQ(origins(before, italic), "s0 e2");
}

TEST(ParagraphMatch, MovedParagraphsKeepTheLongestOrderedRun) {
  auto before = paragraphs({u"a", u"b", u"c", u"d"});
  auto after = paragraphs({u"a", u"d", u"b", u"c"});
  EXPECT_EQ(origins(before, after), "s0 n s1 s2");
}

}  // namespace
}  // namespace quillon::testing
