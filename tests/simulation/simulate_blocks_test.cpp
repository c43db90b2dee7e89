#include <gtest/gtest.h>

#include <tuple>

#include "script/tag_grammar.h"
#include "simulation/sim_rig.h"
#include "simulation/overlay_windows.h"
#include "simulation/simulate_blocks.h"
#include "simulation/simulation_menus.h"

namespace quillon::testing {
namespace {

// What the subtitle overlay showed, seen from inside the event pump.
struct Showing {
  double from = -1, to = -1;
  FormaSubState overlay;
};

// Records every span of pumps during which the overlay was up.
void watchSubtitles(SimRig& rig, std::vector<Showing>& shown) {
  rig.each = [&rig, &shown, wasVisible = false]() mutable {
    const FormaSubState& f = rig.ov().FormaSub;
    if (f.Visible && !wasVisible) shown.push_back({rig.now(), rig.now(), f});
    if (f.Visible) shown.back().to = rig.now();
    wasVisible = f.Visible;
  };
}

TEST(SubtitleSimulation, ShowsEachSubtitleFromCueInToCueOutWithLayoutAndReadingSpeedColours) {
  SimRig rig;
  rig.t.open(subTag(u'2', u' ', u'1', 1.0, 2.0) + u"First line\nSecond\n\n" + subTag(u'0', u'L', u'N', 4.0, 5.0) +
             u"Short\n\n" + u"\n\n");  // the last text stops two characters short of the end
  rig.s().colourFeedback = true;
  rig.s().readingSpeed = 7.7;  // "Short" and its two CRs over one second read at 1.1 times the speed
  std::vector<Showing> shown;
  watchSubtitles(rig, shown);
  mnu_sim_d(rig.st());

  ASSERT_EQ(shown.size(), 2u);
  // On at the first pump at or past the cue-in, off at the first one past the cue-out.
  for (auto [k, in] : {std::pair{0, 1.0}, {1, 4.0}}) {
    EXPECT_NEAR(shown[k].from, in, 0.025);
    EXPECT_NEAR(shown[k].to, in + 1, 0.025);
  }
  // Two lines at position 2, the first italic, 19 characters in one second:
  // far too fast. One line at the bottom, left-aligned, a little fast.
  const FormaSubState &two = shown[0].overlay, &one = shown[1].overlay;
  EXPECT_EQ(two.Line1.caption + u"|" + two.Line2.caption + u"|" + one.Line1.caption, u"First line\r|Second\r\r|Short\r\r");
  EXPECT_EQ(std::tuple(two.Line1.italic, two.Left, two.Height, two.Top, two.Line1.foreColor),
            std::tuple(true, 1060, 700, 2000 + 4000 - 2 * 350, 0x0000FFu));
  EXPECT_EQ(std::tuple(one.Line2.alignment, one.Height, one.Top, one.Line1.foreColor),
            std::tuple(kAlignLeft, 350, 2000 + 4000 + 250, 0xFFFFC0u));

  // The video ran on a tenth of a second after the last cue-out and stopped there.
  EXPECT_FALSE(rig.player.running());
  EXPECT_NEAR(rig.now(), 5.1, 0.03);
  expectMainWindowBack(rig.st());
}

TEST(SubtitleSimulation, JumpOptionSkipsGapsOfOverTenSecondsWithTwoSecondsOfRunIn) {
  for (bool jump : {false, true}) {
    SimRig rig;
    rig.t.open(subTag(u'0', u' ', u'N', 10.0, 11.0) + u"Exactly ten\n\n" + subTag(u'0', u' ', u'N', 30.0, 31.0) +
               u"Far away\n\n\n\n");
    rig.s().jumpToNextBlock = jump;
    std::vector<Showing> shown;
    watchSubtitles(rig, shown);
    mnu_sim_d(rig.st());
    EXPECT_NEAR(shown.at(1).from, 30.0, 0.025);
    // From the start a gap of exactly ten seconds is waited out; after the
    // first subtitle the video stands at 11 and the next is 19 seconds away.
    const double waited = rig.t.ui.pumps * rig.t.ui.pumpStep;
    EXPECT_NEAR(waited, jump ? 10.0 + 1.0 + 2.0 + 1.0 + 0.1 : 31.1, 0.1);
    if (jump) EXPECT_EQ(rig.player.seeks, 2);  // the start, then the jump
  }
}

TEST(SubtitleSimulation, FromCurrentTimecodeStartsAtTheFirstSubtitleHalfASecondAhead) {
  SimRig rig;
  rig.t.open(subTag(u'0', u' ', u'N', 1.0, 2.0) + u"One\n\n" + subTag(u'0', u' ', u'N', 4.3, 5.0) + u"Two\n\n" +
             subTag(u'0', u' ', u'N', 6.0, 7.0) + u"Three\n\n\n\n");
  ira(rig.st(), 4.0);
  std::vector<Showing> shown;
  watchSubtitles(rig, shown);
  mnu_sim_q(rig.st());
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].overlay.Line1.caption, u"Three\r\r");
}

TEST(SubtitleSimulation, NothingToSimulateNeverStartsTheVideo) {
  SimRig rig;
  rig.s().scan.subtitleCount = 0;
  rig.s().g_fVideoRun = true;
  simulateBlocks(rig.st(), SimulationStart::Top);
  EXPECT_EQ(std::tuple(rig.player.seeks, rig.s().g_fVideoRun), std::tuple(0, false));
}

TEST(SubtitleSimulation, EscOnTheOverlayStopsAtTheNextPumpAndGivesEverythingBack) {
  SimRig rig;
  rig.t.open(subTag(u'0', u' ', u'N', 1.0, 3.0) + u"Line\n\n" + subTag(u'0', u' ', u'N', 4.0, 5.0) + u"Next\n\n\n\n");
  rig.st().view.menu("mnu_hlp").enabled = false;  // given back as it was, not forced on
  rig.s().saveedittiming = true;
  rig.at(2.0, [&] {
    ASSERT_EQ(rig.ov().focus, "FormaSub");
    formaSubKeyDown(rig.st(), vk::Esc, 0);
  });
  mnu_sim_d(rig.st());
  EXPECT_NEAR(rig.now(), 2.1, 0.03);
  EXPECT_FALSE(rig.s().saveedittiming || rig.st().view.menu("mnu_hlp").enabled);
}

TEST(DubbingSimulation, HighlightSweepsThroughTheDialogueInStepWithTheVideo) {
  SimRig rig;
  rig.t.open(u"DUB[0 N 00:00:01:00>00:00:03:00] MARIA\nHola, que tal estas hoy\n\n"
             u"DUB[0 N 00:00:04:00>00:00:04:00] PEDRO\nNada\n\n\n\n");
  const u16 text = u"Hola, que tal estas hoy\r\r";
  std::vector<std::pair<double, int>> sweep;
  u16 name;
  rig.each = [&] {
    const Text1State& box = rig.ov().Text1;
    if (box.Text == text) sweep.emplace_back(rig.now(), box.SelLength);
    if (box.Text == text && rig.now() > 1.5 && rig.now() < 2.5) name = rig.st().view.panels[3].text;
  };
  mnu_sim_d(rig.st());
  EXPECT_EQ(name, u"MARIA");
  ASSERT_FALSE(sweep.empty());
  // Each pump sees the selection the engine set from the previous pump's position.
  for (size_t k = 1; k < sweep.size(); ++k) {
    const double at = sweep[k - 1].first;
    if (at < 1.0 || at > 3.0) continue;
    EXPECT_EQ(sweep[k].second, static_cast<int>(text.size() * (at - 1.0) / 2.0)) << at;
  }
  EXPECT_GE(sweep.back().second, static_cast<int>(text.size()) - 1);
  // A block without length keeps its selection and ends.
  EXPECT_NEAR(rig.now(), 4.1, 0.03);
}

}  // namespace
}  // namespace quillon::testing
