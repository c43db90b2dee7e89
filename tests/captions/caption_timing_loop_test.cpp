#include <gtest/gtest.h>

#include "captions/caption_timing_loop.h"
#include "subtitling/playing_station.h"

namespace quillon {
namespace {

using testing::PlayingStation;
using testing::windowRestored;

TEST(CaptionTiming, WritesCaptionTagsAndShowsTheRowsSizedToTheText) {
  PlayingStation t;
  t.open(u"Row one\rRow two\r\rSingle\r\r");
  t.italicise(u"Single");
  t.cursorAt(u"Row one");
  FormaCCState first, second;
  t.when(1.0, [&] { first = t.st.view.overlays.FormaCC; });
  t.markAt(2.0);
  t.markAt(4.0);
  t.when(4.5, [&] { second = t.st.view.overlays.FormaCC; });
  t.markAt(5.0);
  t.markAt(5.5);  // held to the one-row floor of 6.0
  mnu_cc_temp(t.st);
  EXPECT_EQ(t.content(), u"CAP[0NC 00:00:01:20>00:00:03:20]\rRow one\rRow two\r\r"
                         u"CAP[0IC 00:00:04:20>00:00:05:20]\rSingle\r\r");
  EXPECT_TRUE(first.Visible);
  EXPECT_EQ(first.labline(2).caption, u"Row two");
  EXPECT_EQ(first.labline(3).caption, u"");
  // Seven characters wide, centred; two rows high.
  EXPECT_EQ((std::vector<int>{first.Width, first.Left, first.Height, first.Top}),
            (std::vector<int>{7 * 150, 60 + (5500 - 1050) / 2, 500, 4000}));
  EXPECT_EQ(second.labline(1).caption, u"Single");
  EXPECT_TRUE(second.labline(1).italic);
  EXPECT_TRUE(windowRestored(t.st));
}

// A row over 32 characters, Escape and text already timed end the run with
// the script untouched and the window restored.
TEST(CaptionTiming, RunsThatEndWithoutATag) {
  const u16 over(33, u'b');
  const struct {
    u16 text;
    bool escape;
    std::vector<u16> boxes;
  } cases[] = {
      {u16(32, u'a') + u"\r" + over + u"\r\r", false,
       {u"Error: Maximum number of characters per row (32) exceeded in line: \r\r" + over + u"\r\r"}},
      {u"Row one\r\r", true, {}},
      {u"SUB[0 N 00:00:01:00>00:00:02:00]\rRow\r\r", true, {}},
  };
  for (const auto& c : cases) {
    PlayingStation t;
    t.open(c.text);
    t.docs.select({0, 0});
    if (c.escape) t.escapeAt(1.0);
    mnu_cc_temp(t.st);
    EXPECT_EQ(t.ui.boxTexts(), c.boxes);
    EXPECT_EQ(t.content(), c.text);
    EXPECT_TRUE(windowRestored(t.st));
  }
}

}  // namespace
}  // namespace quillon
