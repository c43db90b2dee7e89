#include <gtest/gtest.h>

#include <functional>

#include "subtitling/parameters.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

struct Parameters : ::testing::Test {
  SubtitlingStation t;
  void answer(const char16_t* a) { t.ui.inputs = {u16(a)}; }
};

// Each parameter: what it accepts at its edges, what an answer out of range
// or unreadable leaves, and that an empty answer keeps the value.
TEST_F(Parameters, EachParameterKeepsItsRangeAndResetValue) {
  using Get = std::function<double(const Session&)>;
  struct Case {
    void (*command)(Station&);
    const char* prompt;
    Get value;
    const char16_t* typed;
    double expected;
  };
  const Get speed = [](const Session& s) { return s.readingSpeed; };
  const Get min1 = [](const Session& s) { return s.minOnAir1; };
  const Get min2 = [](const Session& s) { return s.minOnAir2; };
  const Get max = [](const Session& s) { return s.maxOnAir; };
  const Get ilv = [](const Session& s) { return s.minInterleave; };
  const Get fast = [](const Session& s) { return s.fastThreshold; };
  const Get slow = [](const Session& s) { return s.slowThreshold; };
  const Get seq = [](const Session& s) { return s.nextSeqNumber; };
  const Get chars = [](const Session& s) { return s.maxCharsRow; };
  const Get font = [](const Session& s) { return s.overlayFontSize; };  // the overlay's, from the row length
  const Case cases[] = {
      {mnu_tex_par_vel, "Enter reading speed (Characters per second, 1-30)", speed, u"30", 30},
      {mnu_tex_par_vel, nullptr, speed, u"", 30},
      {mnu_tex_par_vel, nullptr, speed, u"quick", 30},
      {mnu_tex_par_vel, nullptr, speed, u"30.5", 12},
      {mnu_sub_par_min, "Enter minimun on-air duration of 1-line subtitles (in seconds)", min1, u"0", 0},
      {mnu_sub_par_min, nullptr, min1, u"10.5", 1},
      {mnu_sub_par_min2, "Enter minimun on-air duration of 2-line subtitles (in seconds)", min2, u"11", 2},
      {mnu_sub_par_max, "Enter maximum on-air duration of subtitle (in seconds)", max, u"60", 60},
      {mnu_sub_par_max, nullptr, max, u"0.5", 10},
      {mnu_sub_par_ilv, "Enter minimum interleave between subtitles (frames)", ilv, u"30", 30},
      {mnu_sub_par_ilv, nullptr, ilv, u"abc", 30},  // refused by the number field: the value stays
      {mnu_sub_par_ilv, nullptr, ilv, u"31", 0},
      {mnu_sub_par_fast, "Enter threshold for acceptable fast subtitle", fast, u"0", 10},
      {mnu_sub_par_fast, nullptr, fast, u"100", 100},
      {mnu_sub_par_fast, nullptr, fast, u"lots", 10},  // a refused number counts as bad here
      {mnu_sub_par_slow, "Enter threshold for acceptable slow subtitle", slow, u"40", 40},
      {mnu_sub_par_slow, nullptr, slow, u"some", 0},
      {mnu_sub_par_slow, nullptr, slow, u"0", 0},
      {mnu_sub_par_seq, "Enter next sequential number for subtitle", seq, u"200", 200},
      {mnu_sub_par_seq, nullptr, seq, u"0", 1},
      {mnu_sub_par_cxl, "Enter max number of displayable characters per row", chars, u"39", 39},
      {mnu_sub_par_cxl, nullptr, font, u"39", 10},
      {mnu_sub_par_cxl, nullptr, font, u"38", 11},
      {mnu_sub_par_cxl, nullptr, font, u"33", 11},
      {mnu_sub_par_cxl, nullptr, font, u"32", 12},
      {mnu_sub_par_cxl, nullptr, chars, u"101", 32},
  };
  for (const auto& c : cases) {
    answer(c.typed);
    c.command(t.st);
    EXPECT_EQ(c.value(t.st.s), c.expected) << toUtf8(c.typed);
    if (c.prompt) { EXPECT_EQ(t.ui.inputPrompts.back(), fromLatin1(c.prompt)); }
  }
  EXPECT_EQ(t.st.view.panel(4).toolTip, u"Max chars per line = 32");
}

}  // namespace
}  // namespace quillon::testing
