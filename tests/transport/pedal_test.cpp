#include "transport/pedal.h"

#include <gtest/gtest.h>

#include <tuple>

#include "transport/transport_fixture.h"

namespace quillon {
namespace {

using testing::TransportStation;

struct PedalStation : TransportStation {
  PedalStation() {
    port.open(1);
    openTaggedVideo();
    ira(st, 50);
    ui.pumpStep = 0.01;
  }
  // A change on the pedal's line, then `seconds` of the clock; where the video stands after.
  double pedal(CommEvent line, double seconds) {
    port.lineChange(line);
    run(seconds);
    return st.s.g_dblPosActual;
  }
};

TEST(Pedal, TwoPedalsWithinHalfASecondActOnceByTheLater) {
  PedalStation t;
  t.pedal(CommEvent::comEvCTS, 0.2);
  EXPECT_DOUBLE_EQ(t.pedal(CommEvent::comEvCD, 0.25), 50);  // still settling
  t.run(0.1);
  EXPECT_DOUBLE_EQ(t.st.s.g_dblPosActual, 45);  // rewind only, once
  EXPECT_FALSE(t.st.view.Timer2.enabled);
  t.run(2);
  EXPECT_DOUBLE_EQ(t.st.s.g_dblPosActual, 45);
}

TEST(Pedal, PressAndReleaseActOnceAndALateReleaseActsAgain) {
  PedalStation t;
  t.pedal(CommEvent::comEvCTS, 0.3);
  EXPECT_DOUBLE_EQ(t.pedal(CommEvent::comEvCTS, 1), 55);  // released within the half second
  t.pedal(CommEvent::comEvCTS, 1);
  EXPECT_DOUBLE_EQ(t.pedal(CommEvent::comEvCTS, 1), 65);  // released after it
}

TEST(Pedal, MiddlePedalTogglesPlayAndJumpsStopAtTheEnd) {
  PedalStation t;
  t.ui.pointer = Pointer::Hourglass;
  t.pedal(CommEvent::comEvDSR, 0.6);
  EXPECT_EQ(std::tuple(t.st.s.g_fVideoRun, t.st.view.toolbarButton(6).caption, t.ui.pointer),
            std::tuple(true, u16(u"Stop"), Pointer::Default));
  t.pedal(CommEvent::comEvDSR, 0.6);
  EXPECT_FALSE(t.st.s.g_fVideoRun);

  t.st.s.footpedaljump = 30;
  ira(t.st, 100);
  EXPECT_DOUBLE_EQ(t.pedal(CommEvent::comEvCTS, 0.6), 120);
  EXPECT_DOUBLE_EQ(t.pedal(CommEvent::comEvRing, 0.6), 120);  // no pedal on that line
}

TEST(PedalPort, MenuOpensOnlyWhenNoPortIsOpen) {
  TransportStation t;
  t.port.presentPorts = {1, 2};
  auto box = [&] { return std::tuple(t.ui.lastBox().text, t.ui.lastBox().icon); };
  mnu_footpedalcom(t.st, 3);  // the machine has no COM3
  EXPECT_EQ(box(), std::tuple(u16(u"An error occured trying to open serial port COM3."), Icon::Critical));
  mnu_footpedalcom(t.st, 2);
  EXPECT_EQ(box(), std::tuple(u16(u"Serial Port COM2 opened for foot pedal communications."), Icon::Information));
  EXPECT_TRUE(t.st.view.menu("mnu_footpedalcom2").checked);
  // Any port, the same one too, fails while one is open; the marks stay.
  mnu_footpedalcom(t.st, 2);
  EXPECT_EQ(t.ui.lastBox().text, u"An error occured trying to open serial port COM2.");
  mnu_footpedalcom(t.st, 1);
  EXPECT_TRUE(t.st.view.menu("mnu_footpedalcom2").checked);
  EXPECT_FALSE(t.st.view.menu("mnu_footpedalcom1").checked);
  EXPECT_EQ(t.st.s.commPort, 1);  // the setting is not changed
  // Without a video a pedal is only noted.
  t.port.lineChange(CommEvent::comEvDSR);
  t.run(1);
  EXPECT_FALSE(t.st.s.g_fVideoRun);
  EXPECT_EQ(t.st.s.lastfootpedalevent, 4);
}

TEST(PedalPort, JumpTimeIsKeptBetweenZeroAndThirty) {
  TransportStation t;
  // Out of range resets it to five seconds; no answer keeps it.
  for (auto [answer, jump] : {std::pair{u"31", 5.0}, {u"12", 12.0}, {u"", 12.0}, {u"0", 0.0}}) {
    t.ui.inputs = {answer};
    mnu_footpedaljump(t.st);
    EXPECT_DOUBLE_EQ(t.st.s.footpedaljump, jump) << toUtf8(answer);
  }
  EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter jump time when pressing FWD and REW pedals");
}

}  // namespace
}  // namespace quillon
