#include <gtest/gtest.h>

#include "captions/cea608.h"
#include "doubles/scripted_ui.h"

namespace quillon {
namespace {

// The top bit is set only for an even count of one-bits; characters from
// code 128 on show as a blank.
TEST(Cea608, OddParityAndTheBlankBeyondTheTable) {
  const std::pair<char16_t, const char*> cases[] = {
      {0, "80"},    {1, "01"},    {u'A', "c1"},  {u'a', "61"},  {u' ', "20"},     {u'i', "e9"},
      {92, "dc"},   {0x7f, "7f"}, {0x80, "20"},  {221, "20"},   {u'\u0153', "20"},
  };
  for (const auto& [c, expected] : cases) EXPECT_EQ(ODDPARITY(c), expected) << static_cast<int>(c);
  EXPECT_EQ(ODD(captionCharacters(u"\u0153")), "20");
}

TEST(Cea608, PairsArePaddedWithANullByte) {
  EXPECT_EQ(GROUPIN2BYTESANDPAD(u"Hi!"), "c8e9 a180 ");
  EXPECT_EQ(GROUPIN2BYTESANDPAD(u"Hi"), "c8e9 ");
  EXPECT_EQ(GROUPIN2BYTESANDPAD(u""), "");
  EXPECT_EQ(GROUPBYTESANDPAD(u"Hi!"), "c8e9 a180");
  EXPECT_EQ(GROUPBYTESANDPAD(u"Hi"), "c8e9");
  EXPECT_EQ(ODD(u"\x14\x2c"), "942c");
  // "a°" splits the special character's two bytes across two words.
  EXPECT_EQ(GROUPIN2BYTESANDPAD(captionCharacters(u"a\u00b0")), "6191 3180 ");
}

TEST(Cea608, CaptionCharactersMapsEachCharacterOnce) {
  EXPECT_EQ(captionCharacters(u"caf\u00e9"), u16(u"caf") + char16_t{92});
  EXPECT_EQ(captionCharacters(u"_"), (u16{18, 42}));
  EXPECT_EQ(captionCharacters(u"'"), (u16{39}));
  // á becomes 42, the code of '*', which the walk does not map again.
  EXPECT_EQ(captionCharacters(u"\u00e1*"), (u16{42, 18, 40}));
  EXPECT_EQ(captionCharacters(u"\u00ae\u00bf\u00c1\u00fb"), (u16{17, 48, 17, 51, 18, 32, 17, 63}));
  EXPECT_EQ(captionCharacters(u"{|}~\\^"), (u16{19, 41, 19, 46, 19, 42, 19, 47, 19, 43, 19, 44}));
  EXPECT_EQ(captionCharacters(u"\u00c4\u00df\u00f8\u00d1\u00f1\u00e7\u00f7"),
            (u16{19, 48, 19, 52, 19, 59, 125, 126, 123, 124}));
  EXPECT_EQ(captionCharacters(u"plain text 123"), u"plain text 123");
}

TEST(Cea608, PacRowPlacesTheBlockFromTheBottom) {
  const int cases[][4] = {{0, 1, 1, 15}, {0, 2, 1, 14}, {0, 2, 2, 15}, {0, 4, 1, 12}, {14, 1, 1, 1},
                          {1, 4, 1, 11}, {1, 4, 4, 14}, {2, 2, 1, 13},  {15, 1, 1, 0}};
  for (const auto& c : cases) EXPECT_EQ(pacRow(c[0], c[1], c[2]), c[3]) << c[0] << " " << c[1] << " " << c[2];
}

// Left keeps the base; right and centre step by the longest row, up to 32.
TEST(Cea608, IndentFollowsTheLongestRow) {
  const struct {
    char16_t align;
    int longest;
    char16_t base;
    u16 expected;
  } cases[] = {
      {u'L', 0, u'P', u"P"},   {u'L', 40, u'p', u"p"},  {u'R', 1, u'P', {0x5E}}, {u'R', 4, u'P', {0x5E}},
      {u'R', 5, u'P', {0x5C}}, {u'R', 24, u'P', {0x54}}, {u'R', 32, u'P', u"P"}, {u'C', 4, u'p', {0x78}},
      {u'C', 5, u'p', {0x76}}, {u'C', 12, u'p', {0x76}}, {u' ', 13, u'p', {0x74}}, {u'C', 28, u'p', {0x72}},
      {u'C', 29, u'p', u"p"},  {u'C', 0, u'p', u""},     {u'R', 33, u'p', u""},
  };
  for (const auto& c : cases) EXPECT_EQ(pacIndent(c.align, c.longest, c.base), c.expected) << char(c.align) << c.longest;
}

TEST(Cea608, FirstByteGivesTheRowsPacAndRefusesRowsOutOfRange) {
  ScriptedUi ui;
  EXPECT_EQ(FIRSTBYTE(ui, 1, 1, 0, u'L', 10), (u16{20, u'p'}));
  EXPECT_EQ(FIRSTBYTE(ui, 1, 4, 1, u'L', 10), (u16{16, u'P'}));  // row 11
  EXPECT_EQ(FIRSTBYTE(ui, 2, 4, 1, u'L', 10), (u16{19, u'P'}));  // row 12
  EXPECT_EQ(FIRSTBYTE(ui, 1, 1, 14, u'R', 2), (u16{17, 0x50 + 14}));
  EXPECT_EQ(FIRSTBYTE(ui, 1, 2, 5, u'C', 20), (u16{23, 0x70 + 4}));  // row 10
  EXPECT_EQ(FIRSTBYTE(ui, 5, 4, 0, u'L', 3), (u16{221, 221}));
  EXPECT_EQ(FIRSTBYTE(ui, 1, 0, 0, u'L', 3), (u16{221, 221}));
  EXPECT_TRUE(ui.boxes.empty());
  EXPECT_EQ(FIRSTBYTE(ui, 1, 1, 15, u'L', 3), u"");
  EXPECT_EQ(ui.boxTexts(), std::vector<u16>{u"RANGE ERROR IN FIRSTBYTE"});
}

TEST(Cea608, CaptionBytesGoThroughTheWindowsCodePage) {
  EXPECT_EQ(captionBytes(u16{20, 44, 221}), std::string("\x14\x2c\xdd", 3));
  EXPECT_EQ(captionBytes(u"\u0153\u0416"), std::string("\x9c?", 2));
}

}  // namespace
}  // namespace quillon
