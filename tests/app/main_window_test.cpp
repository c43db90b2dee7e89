#include <QAbstractButton>
#include <QFileDialog>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QToolBar>

#include <gtest/gtest.h>

#include "app/menu_commands.h"
#include "app/overlay_windows.h"
#include "app/vk_keys.h"
#include "app_fixture.h"
#include "core/menu_table.h"
#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

TEST(QtUi, KeysAndFiltersBecomeTheStationsOwn) {
  EXPECT_EQ(virtualKey(Qt::Key_5, false), 53);
  EXPECT_EQ(virtualKey(Qt::Key_5, true), 101);  // on the keypad
  EXPECT_EQ(virtualKey(Qt::Key_Minus, true), 109);
  EXPECT_EQ(virtualKey(Qt::Key_F12, false), 123);
  EXPECT_EQ(shiftMask(Qt::ControlModifier | Qt::ShiftModifier), 3);
  EXPECT_EQ(qtFileFilter(u"EBU (*.stl)|*.stl"), "EBU (*.stl) (*.stl)");
}

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

TEST(MainWindow, RendersLabelsPanelsToolbarAndCaption) {
  RunningStation r;
  ViewState& v = r.st().view;
  v.LabTimecode.caption = u"00:00:01:05";
  v.LabDur.visible = false;
  v.setPanel(3, u"14", u"Reading speed = 14 characters per second.");
  v.panel(7).enabled = false;
  v.toolbarButton(6).caption = u"Stop";
  v.toolbarButton(6).image = 2;
  v.caption = u"QUILLON: clip.avi - 25FPS";
  v.visible = true;
  r.desk->refresh();
  MainWindow& w = r.window();
  EXPECT_EQ(w.LabTimecode()->text(), "00:00:01:05");
  EXPECT_FALSE(w.LabDur()->isVisible());
  EXPECT_EQ(w.panel(3)->text(), "14");
  EXPECT_EQ(w.panel(3)->toolTip(), "Reading speed = 14 characters per second.");
  EXPECT_FALSE(w.panel(7)->isEnabled());
  EXPECT_EQ(w.toolbarButton(6)->text(), "Stop");
  EXPECT_EQ(w.toolbarButton(6)->toolTip(), "Play");
  EXPECT_EQ(w.windowTitle(), "QUILLON: clip.avi - 25FPS");
  // A fixed window: no resizing, no maximising.
  EXPECT_EQ(w.minimumSize(), w.maximumSize());
  EXPECT_FALSE(w.windowFlags() & Qt::WindowMaximizeButtonHint);
  EXPECT_EQ(w.videoArea()->geometry(), QRect(5, 0, 360, 270));
}

TEST(MainWindow, StartsOnTheCommandLineVideoWithTheKeysAtWorkAndClosingKeepsTheSettings) {
  QUILLON_SAMPLE_OR_SKIP(video, "pattern.mp4");
  RunningStation r;
  ASSERT_TRUE(r.desk->start(fromUtf8(video)));
  MainWindow& w = r.window();
  EXPECT_TRUE(w.isVisible());
  EXPECT_FALSE(w.splash()->isVisible());
  EXPECT_EQ(r.st().s.videoFile, fromUtf8(video));
  EXPECT_EQ(w.windowTitle(), toQString(u"QUILLON: " + fromUtf8(video) + u" - 30FPS"));
  EXPECT_EQ(w.toolbarButton(6)->text(), "Stop");
  EXPECT_EQ(w.slVideo()->maximum(), 10);
  ASSERT_TRUE(r.waitUntil([&] { return QApplication::focusWidget() == static_cast<QWidget*>(w.slVideo()); }, 2));

  // Keys work at once: Enter pauses, Home goes to the start, a digit jumps.
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_FALSE(r.st().s.g_fVideoRun);
  EXPECT_EQ(w.toolbarButton(6)->text(), "Play");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_3);
  EXPECT_NEAR(r.st().s.g_dblPosActual, 3.0, 0.05);
  EXPECT_EQ(w.LabTimecode()->text(), "00:00:03:00");
  EXPECT_EQ(w.slVideo()->value(), 3);
  // A marker set with F2 shows in its menu item.
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2);
  EXPECT_EQ(w.action("mnu_iramarca2")->text(), "Marker &2 = 00:00:03:00");
  EXPECT_TRUE(w.action("mnu_iramarca2")->isEnabled());

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
  EXPECT_EQ(title, "Open video file");
  EXPECT_EQ(filter, "Media files (*.avi *.wmv *.asf *.mov *.mpg *.mpeg);;All files (*.*)");
  EXPECT_FALSE(readFile(r.configDir + "/defaults.dat").empty());
}

}  // namespace
}  // namespace quillon::testing
