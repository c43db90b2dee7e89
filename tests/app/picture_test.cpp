// The station with its picture, on an X display (the test suite starts
// these under Xvfb). A screenshot of a simulation is left in the build
// folder for people to look at.
#include <QDir>
#include <QImage>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

#include "app/overlay_windows.h"
#include "app_fixture.h"
#include "core/timecode.h"
#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

// Mean brightness of a rectangle of an image, 0 to 765.
int brightness(const QImage& img, QRect r) {
  long sum = 0, n = 0;
  for (int y = r.top(); y <= r.bottom(); y += 3)
    for (int x = r.left(); x <= r.right(); x += 3) {
      const QRgb p = img.pixel(x, y);
      sum += qRed(p) + qGreen(p) + qBlue(p);
      ++n;
    }
  return n ? static_cast<int>(sum / n) : 0;
}

TEST(Picture, ScreenshotOfASimulationWithTheSubtitleOverThePicture) {
  if (!pictureTests()) GTEST_SKIP() << "run under an X display with QUILLON_PICTURE set";
  const std::string video = sampleVideo();
  if (video.empty()) GTEST_SKIP() << "no sample media";
  RunningStation r(u"SUB[0 N 00:00:02:00>00:00:06:00]\nGood evening,\nladies and gentlemen.\n\n");
  ASSERT_TRUE(r.desk->start(fromUtf8(video)));
  QObject guard;
  Station& st = r.st();
  MainWindow& w = r.window();
  w.move(20, 20);

  QImage shot;
  every(guard, 10, [&] {
    if (!w.formaSub()->isVisible() || transformadaTCactual(st.s) < 3.0) return st.s.g_fsim || shot.isNull();
    const QRect area = w.frameGeometry().united(w.formaSub()->geometry()).adjusted(-10, -10, 10, 10);
    shot = w.screen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
    const QPoint off = area.topLeft();
    // The test pattern is bright; the overlay's black band holds white text.
    EXPECT_GT(brightness(shot, QRect(w.videoArea()->mapToGlobal(QPoint(20, 20)) - off, QSize(100, 100))), 150);
    const QRect sub(w.formaSub()->geometry().topLeft() - off, w.formaSub()->size());
    EXPECT_LT(brightness(shot, sub), 200);
    EXPECT_GT(brightness(shot, sub), 5);

    QTest::keyClick(w.formaSub(), Qt::Key_Escape);
    return false;
  });
  w.action("mnu_sim_d")->trigger();

  ASSERT_FALSE(shot.isNull());
  const char* dir = std::getenv("QUILLON_SHOT_DIR");
  const QString path = QDir(dir ? dir : ".").filePath("station-simulation.png");
  ASSERT_TRUE(shot.save(path));
  std::printf("screenshot: %s\n", path.toUtf8().constData());
}

}  // namespace
}  // namespace quillon::testing
