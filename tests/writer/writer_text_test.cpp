// The kept copy of a Writer document's text: how Writer's readings become
// the service's text, and how offsets turn into Writer's cursor steps.
#include <gtest/gtest.h>

#include <random>

#include "script/writer/writer_text.h"

namespace quillon {
namespace {

const std::u16string kPair = u"\U0001F600";  // one step, two code units

WriterText reading(const std::u16string& plain) {
  WriterText t;
  t.appendPlain(plain);
  t.finish();
  return t;
}

TEST(WriterText, OnlyAParagraphBreakBecomesALineBreakAndNeverTheFinalMark) {
  WriterText t = reading(u"ab\ncd");
  EXPECT_FALSE(t.markLineBreak(0));
  EXPECT_FALSE(t.markLineBreak(5));
  EXPECT_TRUE(t.markLineBreak(2));
  EXPECT_EQ(t.paragraphsCount(), 1);
  EXPECT_EQ(t.paragraph(1), (TextRange{0, 6}));
  EXPECT_EQ(toWriterText(u"a\vb\rc"), u"a\nb\rc");
}

TEST(WriterText, StepsCountASurrogatePairOnceAndComeBackToTheSameOffsets) {
  const WriterText t = reading(u"ab" + kPair + u"\tc\n" + kPair + kPair + u"d");
  // a b [pair] TAB c CR [pair] [pair] d CR
  const long offsets[] = {0, 1, 2, 4, 5, 6, 7, 9, 11, 12};
  for (long step = 0; step < 10; ++step) {
    EXPECT_EQ(t.offsetOfStep(step), offsets[step]) << step;
    EXPECT_EQ(t.stepsTo(offsets[step]), step) << step;
  }
  EXPECT_EQ(t.stepsTo(3), 2);  // inside a pair: at its start
  EXPECT_EQ(t.steps(), 9);
  EXPECT_EQ(writerSteps(u"x" + kPair + u"\n"), 3);
}

// After any run of edits the kept text, its paragraphs and its steps are
// those of the same text read afresh.
TEST(WriterText, EditsKeepParagraphsAndStepsAsAFreshReadingWouldHaveThem) {
  std::mt19937 rng(7);
  const std::u16string pieces[] = {u"SUB[", u"\r", u"text", kPair, u"\v", u"\t", u"\r\r", u"x"};
  const auto lowHalf = [](char16_t c) { return (c & 0xFC00) == 0xDC00; };
  WriterText t = reading(u"Start\nmiddle " + kPair + u"\nend");
  for (int i = 0; i < 400; ++i) {
    const long len = t.length();
    const long a = std::uniform_int_distribution<long>(0, len - 1)(rng);
    if (lowHalf(t.text()[a])) continue;  // never through the middle of a pair
    if (rng() % 3 == 0) {
      long b = std::min(len - 1, a + static_cast<long>(rng() % 6));
      if (lowHalf(t.text()[b])) ++b;
      t.erase({a, b});
    } else {
      t.insert(a, pieces[rng() % std::size(pieces)]);
    }
    std::u16string body = t.text().substr(0, t.text().size() - 1);
    for (auto& c : body)
      if (c == u'\r' || c == u'\v') c = u'\n';
    WriterText fresh = reading(body);
    for (long p = 0; p < t.length(); ++p)
      if (t.text()[p] == u'\v') fresh.markLineBreak(p);
    ASSERT_EQ(t.text(), fresh.text()) << i;
    ASSERT_EQ(t.paragraphsCount(), fresh.paragraphsCount()) << i;
    for (long n = 1; n <= t.paragraphsCount(); ++n) ASSERT_EQ(t.paragraph(n), fresh.paragraph(n)) << i;
    for (long p = 0; p <= t.length(); ++p) ASSERT_EQ(t.stepsTo(p), fresh.stepsTo(p)) << i << " at " << p;
  }
}

}  // namespace
}  // namespace quillon
