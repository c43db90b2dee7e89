#include <gtest/gtest.h>

#include "subtitling/parameters.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

struct Parameters : ::testing::Test {
  SubtitlingStation t;
  void answer(const char16_t* a) { t.ui.inputs = {u16(a)}; }
};

TEST_F(Parameters, ReadingSpeedIsAskedWithItsValueAndShownInPanelThree) {
  t.st.s.readingSpeed = 14;
  answer(u"30");
  mnu_tex_par_vel(t.st);
  EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter reading speed (Characters per second, 1-30)");
  EXPECT_EQ(t.st.s.readingSpeed, 30);
  EXPECT_EQ(t.st.view.panel(3).text, u"30");
  EXPECT_EQ(t.st.view.panel(3).toolTip, u"Reading speed = 30 characters per second.");
  answer(u"30.5");
  mnu_tex_par_vel(t.st);
  EXPECT_EQ(t.st.s.readingSpeed, 12);
  EXPECT_EQ(t.st.view.panel(3).text, u"12");
  answer(u"9.5");
  mnu_tex_par_vel(t.st);
  answer(u"");
  mnu_tex_par_vel(t.st);
  answer(u"fast");
  mnu_tex_par_vel(t.st);
  EXPECT_EQ(t.st.s.readingSpeed, 9.5);
  EXPECT_EQ(t.st.view.panel(3).text, u"10");
}

TEST_F(Parameters, DurationsAcceptTheirRangesAndResetOutsideThem) {
  answer(u"0");
  mnu_sub_par_min(t.st);
  EXPECT_EQ(t.st.s.minOnAir1, 0);
  answer(u"10.5");
  mnu_sub_par_min(t.st);
  EXPECT_EQ(t.st.s.minOnAir1, 1);
  answer(u"11");
  mnu_sub_par_min2(t.st);
  EXPECT_EQ(t.st.s.minOnAir2, 2);
  answer(u"60");
  mnu_sub_par_max(t.st);
  EXPECT_EQ(t.st.s.maxOnAir, 60);
  answer(u"0.5");
  mnu_sub_par_max(t.st);
  EXPECT_EQ(t.st.s.maxOnAir, 10);
  EXPECT_EQ(t.ui.inputPrompts, (std::vector<u16>{
                                   u"Enter minimun on-air duration of 1-line subtitles (in seconds)",
                                   u"Enter minimun on-air duration of 1-line subtitles (in seconds)",
                                   u"Enter minimun on-air duration of 2-line subtitles (in seconds)",
                                   u"Enter maximum on-air duration of subtitle (in seconds)",
                                   u"Enter maximum on-air duration of subtitle (in seconds)"}));
}

TEST_F(Parameters, InterleaveOfThirtyIsKeptAndThirtyOneResets) {
  answer(u"30");
  mnu_sub_par_ilv(t.st);
  EXPECT_EQ(t.st.s.minInterleave, 30);
  answer(u"abc");  // refused by the number field: the value stays
  mnu_sub_par_ilv(t.st);
  EXPECT_EQ(t.st.s.minInterleave, 30);
  answer(u"31");
  mnu_sub_par_ilv(t.st);
  EXPECT_EQ(t.st.s.minInterleave, 0);
  EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter minimum interleave between subtitles (frames)");
}

TEST_F(Parameters, ThresholdsResetOnAnUnreadableAnswer) {
  answer(u"0");
  mnu_sub_par_fast(t.st);
  EXPECT_EQ(t.st.s.fastThreshold, 10);
  answer(u"100");
  mnu_sub_par_fast(t.st);
  EXPECT_EQ(t.st.s.fastThreshold, 100);
  answer(u"lots");
  mnu_sub_par_fast(t.st);
  EXPECT_EQ(t.st.s.fastThreshold, 10);

  answer(u"40");
  mnu_sub_par_slow(t.st);
  EXPECT_EQ(t.st.s.slowThreshold, 40);
  answer(u"0");
  mnu_sub_par_slow(t.st);
  EXPECT_EQ(t.st.s.slowThreshold, 0);
  answer(u"40");
  mnu_sub_par_slow(t.st);
  answer(u"some");
  mnu_sub_par_slow(t.st);
  EXPECT_EQ(t.st.s.slowThreshold, 0);
  EXPECT_EQ(t.ui.inputPrompts[0], u"Enter threshold for acceptable fast subtitle");
  EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter threshold for acceptable slow subtitle");
}

TEST_F(Parameters, CharactersPerRowSetPanelFourAndTheOverlayFont) {
  struct Case {
    const char16_t* typed;
    int16_t value, font;
    const char16_t* panel;
  } cases[] = {{u"39", 39, 10, u"39"}, {u"38", 38, 11, u"38"}, {u"33", 33, 11, u"33"},
               {u"32", 32, 12, u"32"}, {u"5", 5, 12, u"05"},   {u"101", 32, 12, u"32"}};
  for (const auto& c : cases) {
    answer(c.typed);
    mnu_sub_par_cxl(t.st);
    EXPECT_EQ(t.st.s.maxCharsRow, c.value) << toUtf8(c.typed);
    EXPECT_EQ(t.st.s.overlayFontSize, c.font) << toUtf8(c.typed);
    EXPECT_EQ(t.st.view.panel(4).text, c.panel);
    EXPECT_EQ(t.st.view.panel(4).toolTip, u16(u"Max chars per line = ") + c.panel);
  }
  EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter max number of displayable characters per row");
}

TEST_F(Parameters, SequenceNumberStartsAtOne) {
  answer(u"200");
  mnu_sub_par_seq(t.st);
  EXPECT_EQ(t.st.s.nextSeqNumber, 200);
  answer(u"0");
  mnu_sub_par_seq(t.st);
  EXPECT_EQ(t.st.s.nextSeqNumber, 1);
  EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter next sequential number for subtitle");
}

TEST_F(Parameters, TheCurrentValueIsOffered) {
  t.st.s.maxOnAir = 6.5;
  mnu_sub_par_max(t.st);  // no answer queued: the offered value comes back
  EXPECT_EQ(t.st.s.maxOnAir, 6.5);
}

TEST_F(Parameters, OptionItemsToggleTheirMarkAndFlag) {
  mnu_sub_opc_chk(t.st);
  EXPECT_TRUE(t.st.s.readingSpeedCheck);
  EXPECT_TRUE(t.st.view.menu("mnu_sub_opc_chk").checked);
  EXPECT_TRUE(t.st.view.panel(7).enabled);
  EXPECT_EQ(t.st.view.panel(7).toolTip, u"Reading speed check enabled.");
  mnu_sub_opc_chk(t.st);
  EXPECT_FALSE(t.st.view.panel(7).enabled);
  EXPECT_EQ(t.st.view.panel(7).toolTip, u"Reading speed check disabled.");

  mnu_sub_opc_dis(t.st);
  EXPECT_TRUE(t.st.s.checksDisabled);
  mnu_situ_off(t.st);
  EXPECT_EQ(t.st.s.inSituOffset, t.st.view.menu("mnu_situ_off").checked);

  t.st.view.menu("mnu_dub_opc_sim").checked = true;
  mnu_sub_opc_sim(t.st);
  EXPECT_TRUE(t.st.view.menu("mnu_sub_opc_sim").checked);
  EXPECT_FALSE(t.st.view.menu("mnu_dub_opc_sim").checked);
  t.st.view.menu("mnu_dub_opc_sim").checked = true;
  mnu_sub_opc_sim(t.st);  // switching it off leaves the dubbing option alone
  EXPECT_TRUE(t.st.view.menu("mnu_dub_opc_sim").checked);
}

}  // namespace
}  // namespace quillon::testing
