#include <gtest/gtest.h>

#include "core/text.h"

namespace quillon {
namespace {

TEST(NumberFormat, PicturesRoundHalvesAwayFromZero) {
  EXPECT_EQ(formatNumber(5, "00"), u"05");
  EXPECT_EQ(formatNumber(123, "00"), u"123");
  EXPECT_EQ(formatNumber(0.125, "0.00"), u"0.13");
  EXPECT_EQ(formatNumber(2.5, "0"), u"3");
  EXPECT_EQ(formatNumber(-2.5, "0"), u"-3");
  EXPECT_EQ(formatNumber(1.5, "##.###"), u"1.5");
  EXPECT_EQ(formatNumber(0.33333333, "##.###"), u".333");
  EXPECT_EQ(formatNumber(14, "##"), u"14");
  EXPECT_EQ(formatNumber(1, "00.00"), u"01.00");
}

TEST(Utf8, RoundTripsAndReplacesBrokenBytes) {
  u16 s = u"Caf\u00e9 \u2026 \U0001F600";
  EXPECT_EQ(fromUtf8(toUtf8(s)), s);
  EXPECT_EQ(fromUtf8("a\xC3"), u"a\uFFFD");
}

}  // namespace
}  // namespace quillon
