#include <gtest/gtest.h>

#include "subtitling/statistics.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

// Minute 0 holds a whole subtitle, minute 1 only one that crosses into
// minute 2, minute 2 another whole one.
const char16_t* kScript =
    u"SUB[0 N 00:00:10:00>00:00:12:00]\nOne\n\n"
    u"SUB[0 N 00:01:58:00>00:02:01:00]\nAcross\nthe edge\n\n"
    u"SUB[0 N 00:02:10:00>00:02:12:00]\nThree\n\n"
    u"DUB[0 N 00:02:20:00>00:02:22:00] ANNA\nSpoken\n\nDUB[\n";

// One subtitle in each minute of a 90-second window: the part minute counts.
const char16_t* kEachMinute =
    u"SUB[0 N 00:00:10:00>00:00:12:00]\nOne\n\nSUB[0 N 00:01:10:00>00:01:12:00]\nTwo\n\nSUB[\n";

// Counts lines, characters and whole subtitled minutes; the percentage
// counts the minutes of the window walked, none without a window; a
// selection holding tags limits the count.
TEST(Statistics, WindowAndSelectionShapeTheCounts) {
  SubtitlingStation t;
  const u16 whole =
      u"Subtitling Statistics :\rFile: Script5.txt\r\rTotal subtitles: 3\r\r1-line: 2\r2-line: 1\r\r"
      u"Total characters: 23\rSubtitled minutes: 2 = 50%";
  const struct {
    double start, end;
    long selectionEnd;
    const char16_t* expected;
    const char16_t* script = kScript;
  } cases[] = {{0, 150, 0, u"Subtitled minutes: 2 = 80%"},
               {0, 0, 0, u"Subtitled minutes: 0 = 00%"},
               {0, 240, 39, u"Total subtitles: 1\r"},
               {0, 90, 0, u"Subtitled minutes: 2 = 133%", kEachMinute},
               {0, 240, 0, whole.c_str()}};
  for (const auto& c : cases) {
    SCOPED_TRACE(toUtf8(c.expected));
    t.open(c.script);
    t.st.s.tcStart = c.start;
    t.st.s.tcEnd = c.end;
    t.docs.select({0, c.selectionEnd});
    auto text = subtitleStatistics(t.st);
    ASSERT_TRUE(text);
    EXPECT_NE(text->find(c.expected), u16::npos) << toUtf8(*text);
  }
  mnu_sim_est(t.st);
  EXPECT_EQ(t.ui.boxTexts(), std::vector<u16>{whole});
  EXPECT_EQ(t.ui.lastBox().icon, Icon::None);
  t.open(u"Just text\n");
  mnu_sim_est(t.st);
  EXPECT_EQ(t.ui.boxTexts().size(), 1u);
}

}  // namespace
}  // namespace quillon::testing
