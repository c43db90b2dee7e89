#include <QFileDialog>
#include <QMenu>
#include <QMenuBar>
#include <QSlider>
#include <QTest>

#include <gtest/gtest.h>

#include "app/overlay_windows.h"
#include "app_fixture.h"
#include "core/menu_table.h"
#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

TEST(MainWindow, MenusFollowTheTableAndTheViewStateWithItemsGainedAtRunTime) {
  RunningStation r;
  r.desk->refresh();
  MainWindow& w = r.window();
  for (const MenuEntry& e : menuTable()) {
    QAction* a = w.action(e.name);
    ASSERT_NE(a, nullptr) << e.name;
    EXPECT_EQ(a->text(), toQString(u16(e.caption))) << e.name;
    EXPECT_EQ(a->isCheckable(), e.checkable) << e.name;
    EXPECT_TRUE(e.parent.empty() || w.menu(e.parent)->actions().contains(a)) << e.name;
  }
  EXPECT_EQ(w.menuBar()->actions().size(), 7);
  ViewState& v = r.st().view;
  v.menu("mnu_sub_edit").enabled = false;
  v.menu("mnu_sim_con").checked = true;
  v.menu("mnu_WYS_font").visible = false;
  v.setGainedItems("mnu_footpedalport", {{"mnu_footpedalusb1", u"USB pedal: VEC USB Footpedal"},
                                         {"mnu_footpedalusb2", u"USB pedal: Philips ACC2330"}});
  v.menu("mnu_footpedalusb2").checked = true;
  r.desk->refresh();
  EXPECT_FALSE(w.action("mnu_sub_edit")->isEnabled());
  EXPECT_TRUE(w.action("mnu_sim_con")->isChecked());
  EXPECT_FALSE(w.action("mnu_WYS_font")->isVisible());
  QAction* a = w.action("mnu_footpedalusb2");
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(a->text(), "USB pedal: Philips ACC2330");
  EXPECT_TRUE(a->isChecked());
  EXPECT_TRUE(w.menu("mnu_footpedalport")->actions().contains(a));
  const qsizetype withPedals = w.menu("mnu_footpedalport")->actions().size();

  v.setGainedItems("mnu_footpedalport", {{"mnu_footpedalusb1", u"USB pedal: VEC USB Footpedal"}});
  r.desk->refresh();
  EXPECT_EQ(w.action("mnu_footpedalusb2"), nullptr);
  EXPECT_EQ(w.menu("mnu_footpedalport")->actions().size(), withPedals - 1);
}

TEST(MainWindow, StartsOnTheCommandLineVideoWithTheKeysAtWorkAndClosingKeepsTheSettings) {
  QUILLON_SAMPLE_OR_SKIP(video, "pattern.mp4");
  RunningStation r;
  ASSERT_TRUE(r.desk->start(fromUtf8(video)));
  MainWindow& w = r.window();
  EXPECT_EQ(std::make_tuple(w.isVisible(), w.splash()->isVisible(), w.windowTitle(), w.toolbarButton(6)->text(), w.slVideo()->maximum()),
            std::make_tuple(true, false, toQString(u"QUILLON: " + fromUtf8(video) + u" - 30FPS"), QString("Stop"), 10));
  ASSERT_TRUE(r.waitUntil([&] { return QApplication::focusWidget() == static_cast<QWidget*>(w.slVideo()); }, 2));

  // Keys reach the station at once: Enter pauses, Home goes to the start, a digit jumps.
  for (Qt::Key k : {Qt::Key_Return, Qt::Key_Home, Qt::Key_3}) QTest::keyClick(QApplication::focusWidget(), k);
  EXPECT_EQ(std::make_tuple(r.st().s.g_fVideoRun, w.toolbarButton(6)->text(), w.LabTimecode()->text(), w.slVideo()->value()),
            std::make_tuple(false, QString("Play"), QString("00:00:03:00"), 3));

  r.st().s.readingSpeed = 9;
  w.close();
  EXPECT_TRUE(r.desk->ended());
  EXPECT_FALSE(w.isVisible());
  const std::string line = readFile(r.configDir + "/defaults.dat");
  ASSERT_GE(line.size(), 47u);
  EXPECT_EQ(line.substr(16, 2), "09");
}

TEST(MainWindow, CancellingTheOpeningDialogEndsTheStation) {
  RunningStation r;
  QString title, filter;
  QTimer poll;  // answers the dialog from inside its own loop
  QObject::connect(&poll, &QTimer::timeout, [&] {
    auto* d = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!d) return;
    poll.stop();
    title = d->windowTitle();
    filter = d->nameFilters().join(";;");
    d->reject();
  });
  poll.start(10);
  EXPECT_FALSE(r.desk->start(u""));
  EXPECT_TRUE(r.desk->ended());
  EXPECT_EQ(title + " | " + filter, "Open video file | Media files (*.avi *.wmv *.asf *.mov *.mpg *.mpeg);;All files (*.*)");
  EXPECT_FALSE(readFile(r.configDir + "/defaults.dat").empty());
}

}  // namespace
}  // namespace quillon::testing
