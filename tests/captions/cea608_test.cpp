#include <gtest/gtest.h>

#include "captions/cea608.h"
#include "doubles/scripted_ui.h"

namespace quillon {
namespace {

// The SCC golden file carries the parity and the character table; here the
// codes from 128 on, which show as a blank, and the unpadded grouping.
TEST(Cea608, BlankBeyondTheTableAndGrouping) {
  EXPECT_EQ(ODD(u16{0, 0x7f, 0x80, 221}), "807f2020");
  EXPECT_EQ(GROUPBYTESANDPAD(u"Hi!"), "c8e9 a180");
  EXPECT_EQ(GROUPBYTESANDPAD(u"Hi"), "c8e9");
  EXPECT_EQ(GROUPIN2BYTESANDPAD(u""), "");
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
