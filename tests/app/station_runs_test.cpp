// A timing run driven through the real window by real key events, on the
// generated test pattern: each tag holds the frame its key fell on. Where
// things land on the screen is for the desktop scenarios (tests/desktop).
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
  QUILLON_SAMPLE_OR_SKIP(video, "pattern.mp4");
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

}  // namespace
}  // namespace quillon::testing
