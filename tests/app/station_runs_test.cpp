// Timing and simulation runs driven through the real window by real key
// events, on the generated test pattern.
#include <QSlider>
#include <QTest>

#include <gtest/gtest.h>

#include "app/overlay_windows.h"
#include "app_fixture.h"
#include "core/media_player.h"
#include "core/timecode.h"
#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

// Sends a key to whichever widget has the keyboard focus, as the
// operator's keyboard does.
void press(Qt::Key key, Qt::KeyboardModifiers mods = Qt::NoModifier) {
  QWidget* w = QApplication::focusWidget();
  if (!w) w = QApplication::activeWindow();
  if (w) QTest::keyClick(w, key, mods);
}

TEST(StationRuns, TimingByKeysWritesTheTagsIntoTheScript) {
  const std::string video = sampleVideo();
  if (video.empty()) GTEST_SKIP() << "no sample media";
  RunningStation r(u"Good evening.\n\nThis is the first line\nand this the second.\n\nBye.\n");
  ASSERT_TRUE(r.desk->start(fromUtf8(video)));
  QObject guard;
  Station& st = r.st();
  st.s.delay = 0;
  press(Qt::Key_Home);

  // Two presses per subtitle, a second and a half apart, from one second in.
  // The presses wait for the overlay to hold the keys; where each one
  // fell is what its tag must say.
  std::vector<double> marks = {1.0, 2.6, 3.2, 5.0, 5.6, 7.2};
  std::vector<double> pressedAt;
  size_t next = 0;
  every(guard, 5, [&] {
    if (next >= marks.size()) return false;
    const bool ready = st.s.g_fsim && QApplication::focusWidget() == r.window().formaSub();
    if (!ready || transformadaTCactual(st.s) < marks[next]) return true;
    // A key takes the player's position as it arrives, not the copy the
    // last timer tick left.
    const double sinceTick = r.desk->player()->currentPosition() - st.s.g_dblPosActual;
    pressedAt.push_back(transformadaTCactual(st.s) + sinceTick);
    press(Qt::Key_Space);
    ++next;
    return true;
  });
  // The run ends by itself at the end of the script; Esc only if it did not.
  every(guard, 20, [&] {
    if (transformadaTCactual(st.s) < 9.0) return true;
    if (st.s.g_fsim) press(Qt::Key_Escape);
    return false;
  });
  r.window().action("mnu_temp")->trigger();

  ASSERT_EQ(pressedAt.size(), marks.size());
  const u16 text = r.content();
  // Each tag holds its two marks to the frame (30 frames a second).
  const auto expectTag = [&](u16v paragraphStart, double in, double out) {
    const long at = instr(text, paragraphStart);
    ASSERT_GT(at, 0) << toUtf8(text);
    const long tag = static_cast<long>(text.rfind(u"SUB[", static_cast<size_t>(at)));
    ASSERT_GE(tag, 0) << toUtf8(text);
    const u16 times = text.substr(static_cast<size_t>(tag), static_cast<size_t>(at - tag));
    const long gt = instr(times, u">");
    ASSERT_GT(gt, 0) << toUtf8(times);
    EXPECT_NEAR(TCaSEG(mid(times, gt - 11, 11), 30, st.ui), in, 0.034) << toUtf8(times);
    EXPECT_NEAR(TCaSEG(mid(times, gt + 1, 11), 30, st.ui), out, 0.034) << toUtf8(times);
  };
  expectTag(u"Good evening.", pressedAt[0], pressedAt[1]);
  expectTag(u"This is the first line", pressedAt[2], pressedAt[3]);
  expectTag(u"Bye.", pressedAt[4], pressedAt[5]);
  EXPECT_LT(transformadaTCactual(st.s), 9.0);
  EXPECT_TRUE(r.waitUntil([&] { return QApplication::focusWidget() == static_cast<QWidget*>(r.window().slVideo()); }, 2));
}

// Where the overlay lands on the screen is for the desktop scenarios
// (tests/desktop) to judge; here, when and what.
TEST(StationRuns, SimulationShowsEachSubtitleAtItsCueIn) {
  const std::string video = sampleVideo();
  if (video.empty()) GTEST_SKIP() << "no sample media";
  RunningStation r(
      u"SUB[0 N 00:00:01:00>00:00:02:15]\nGood evening.\n\n"
      u"SUB[3 I 00:00:03:00>00:00:04:00]\nThis is the first line\nand this the second.\n\n");
  ASSERT_TRUE(r.desk->start(fromUtf8(video)));
  QObject guard;
  Station& st = r.st();
  MainWindow& w = r.window();

  struct Seen {
    double at = -1;
    QString line1, line2;
    bool italic = false;
  };
  std::vector<Seen> seen;
  bool wasVisible = false;
  every(guard, 5, [&] {
    const bool visible = w.formaSub()->isVisible();
    if (visible && !wasVisible)
      seen.push_back({transformadaTCactual(st.s), w.formaSub()->line1()->text(), w.formaSub()->line2()->text(),
                      w.formaSub()->line1()->font().italic()});
    wasVisible = visible;
    if (seen.size() == 2 && !visible) {
      press(Qt::Key_Escape);
      return false;
    }
    return st.s.g_fsim || seen.empty();
  });
  w.action("mnu_sim_d")->trigger();

  ASSERT_EQ(seen.size(), 2u);
  EXPECT_GE(seen[0].at, 1.0);
  EXPECT_LT(seen[0].at, 1.15);
  EXPECT_GE(seen[1].at, 3.0);
  EXPECT_LT(seen[1].at, 3.15);
  EXPECT_EQ(seen[0].line1, "Good evening.");
  EXPECT_EQ(seen[1].line1, "This is the first line");
  EXPECT_EQ(seen[1].line2, "and this the second.");
  EXPECT_TRUE(seen[1].italic);
  EXPECT_FALSE(st.s.g_fsim);
  EXPECT_TRUE(w.slVideo()->isVisible());
  EXPECT_TRUE(w.action("mnu_sub")->isEnabled());
}

}  // namespace
}  // namespace quillon::testing
