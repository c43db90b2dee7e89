#include <gtest/gtest.h>

#include <random>

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/tag_grammar.h"
#include "subtitling/times_replacer.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

// The indexed replacement must leave the document and the selection exactly
// as the plain search from the top does, whatever was rewritten before.
struct Twin {
  SubtitlingStation plain, indexed;
  explicit Twin(const u16& text) {
    plain.open(text);
    indexed.open(text);
  }
  void replaceBoth(TimesReplacer& r, const u16& find, const u16& with) {
    const bool a = replaceInDocument(plain.st, find, with);
    const bool b = r.replace(find, with);
    EXPECT_EQ(a, b);
    ASSERT_EQ(plain.content(), indexed.content());
    ASSERT_EQ(plain.docs.selectionRange(), indexed.docs.selectionRange());
  }
};

u16 times(double in, double out) { return SEGaTC(in, 30) + u">" + SEGaTC(out, 30) + u"]"; }
u16 pattern(double in, double out) { return timesPattern(SEGaTC(in, 30), SEGaTC(out, 30)); }

TEST(TimesReplacer, TheIndexAnswersForTimesPatternsOnly) {
  EXPECT_TRUE(TimesReplacer::isTimesPattern(pattern(1, 2)));
  EXPECT_TRUE(TimesReplacer::isTimesPattern(pattern(80000, 80001)));
  EXPECT_FALSE(TimesReplacer::isTimesPattern(u"SUB[^?^?^? " + pattern(1, 2)));
  EXPECT_FALSE(TimesReplacer::isTimesPattern(u"00:00:01^^00>00:00:02^?00]"));
  EXPECT_FALSE(TimesReplacer::isTimesPattern(u"00:00:01:00>00:00:02:00]"));
}

TEST(TimesReplacer, ARewrittenTagThatMatchesALaterPatternIsFoundFirst) {
  // Moving every tag by one second makes the first tag read as the second
  // did; the second replacement then finds the first tag again.
  Twin t(block("00:00:01:00", "00:00:02:00", "A") + block("00:00:02:00", "00:00:03:00", "B"));
  TimesReplacer r(t.indexed.st);
  t.replaceBoth(r, pattern(1, 2), times(2, 3));
  t.replaceBoth(r, pattern(2, 3), times(3, 4));
  EXPECT_EQ(t.indexed.content(), script(u"SUB[0 N 00:00:03:00>00:00:04:00]\nA\n\nSUB[0 N 00:00:02:00>00:00:03:00]\nB\n\n"));
}

TEST(TimesReplacer, FindsTagsWrittenWithAnyFrameSeparatorAndMissesQuietly) {
  Twin t(u"SUB[0 N 00:00:01;10>00:00:02.20]\rA\r\r" + block("00:00:05:00", "00:00:06:00", "B"));
  TimesReplacer r(t.indexed.st);
  t.replaceBoth(r, pattern(1 + 10.0 / 30, 2 + 20.0 / 30), times(7, 8));
  t.replaceBoth(r, pattern(30, 31), times(1, 2));
  EXPECT_EQ(t.indexed.docs.selectionRange(), t.indexed.docs.documentRange());
}

TEST(TimesReplacer, ReplacementsOfAnotherLengthAndOtherFindTextsStayExact) {
  Twin t(block("00:00:01:00", "00:00:02:00", "A") + block("00:00:03:00", "00:00:04:00", "B") +
         block("00:00:05:00", "00:00:06:00", "C"));
  TimesReplacer r(t.indexed.st);
  t.replaceBoth(r, pattern(1, 2), u"X]");
  t.replaceBoth(r, pattern(5, 6), times(9, 10));
  t.replaceBoth(r, u"B\r", u"Bee\r");
  t.replaceBoth(r, pattern(3, 4), times(1, 2) + u" and more");
  t.replaceBoth(r, pattern(1, 2), times(11, 12));
}

TEST(TimesReplacer, RandomRewritesOfAScriptWithRepeatedTimes) {
  std::mt19937 rng(7);
  std::uniform_int_distribution<int> second(1, 12);
  u16 text;
  for (int i = 0; i < 60; ++i) {
    double in = second(rng);
    text += block(toUtf8(SEGaTC(in, 30)).c_str(), toUtf8(SEGaTC(in + 1, 30)).c_str(), "Text");
  }
  Twin t(text);
  TimesReplacer r(t.indexed.st);
  for (int k = 0; k < 200; ++k) {
    double from = second(rng), to = second(rng);
    t.replaceBoth(r, pattern(from, from + 1), times(to, to + 1));
  }
}

TEST(TimesReplacer, UndoAfterAnInPlaceRewriteRestoresTheText) {
  SubtitlingStation t;
  MemoryDocument& d = t.open(block("00:00:01:00", "00:00:02:00", "A"));
  const u16 before = d.text();
  d.replace({8, 32}, u"00:00:05:00>00:00:06:00]", true);
  EXPECT_TRUE(d.italic({8, 32}));
  EXPECT_TRUE(d.undo());
  EXPECT_TRUE(d.undo());
  EXPECT_EQ(d.text(), before);
  EXPECT_FALSE(d.italic({8, 32}));
}

}  // namespace
}  // namespace quillon::testing
