#include "transport/input_pedal.h"

#include <gtest/gtest.h>

#include <tuple>

#include "doubles/scripted_pedal_input.h"
#include "transport/transport_fixture.h"

namespace quillon {
namespace {

using testing::TransportStation;

const PedalDeviceInfo kVec{"/dev/input/event7", "VEC USB Footpedal", 0x05f3, 0x00ff, false};
const PedalDeviceInfo kRaw{"/dev/hidraw2", "Philips ACC2330", 0x0911, 0x091a, true};

struct UsbPedalStation : TransportStation {
  explicit UsbPedalStation(std::vector<PedalDeviceInfo> present = {kVec, kRaw}) {
    pedals.present = std::move(present);
    st.pedalInput = &pedals;
    openTaggedVideo();
    ira(st, 50);
    ui.pumpStep = 0.01;
  }
  // The pedal chosen before, opened as the station starts.
  void start(const PedalDeviceInfo* d = &kVec) {
    if (d) st.s.options["pedal.device"] = d->identity();
    startPedalInput(st);
  }
  // A switch's change, then `seconds` of the clock; where the video stands after.
  double press(int button, double seconds) {
    pedals.change(button);
    run(seconds);
    return st.s.g_dblPosActual;
  }
  bool checked(int n) const { return st.view.menu("mnu_footpedalusb" + std::to_string(n)).checked; }
  ScriptedPedalInput pedals;
};

TEST(UsbPedal, SwitchesFoldThroughTimer2AsTheSerialLinesDo) {
  UsbPedalStation t;
  t.start();
  ASSERT_TRUE(t.pedals.isOpen());
  t.press(0, 0.2);  // left pressed and released within the half second
  EXPECT_DOUBLE_EQ(t.press(0, 1), 45);
  t.press(2, 0.2);  // right, then the serial middle pedal: the later wins
  t.port.open(1);
  t.port.lineChange(CommEvent::comEvDSR);
  t.run(1);
  EXPECT_TRUE(t.st.s.g_fVideoRun);
  EXPECT_LT(t.st.s.g_dblPosActual, 47) << "the right switch did not go forward";
  pausevideo(t.st);
  ira(t.st, 50);

  // Reordered: the right switch rewinds, the left one does nothing.
  t.st.s.options["pedal.map"] = "0,4,5";
  EXPECT_DOUBLE_EQ(t.press(0, 1), 50);
  EXPECT_DOUBLE_EQ(t.press(2, 1), 45);
}

TEST(UsbPedal, PortMenuListsThePedalsAndAClickOpensOrForgetsOne) {
  UsbPedalStation t;
  t.start(nullptr);
  EXPECT_EQ(t.st.view.gainedItems.at("mnu_footpedalport"),
            std::vector<std::string>({"mnu_footpedalusb1", "mnu_footpedalusb2"}));
  EXPECT_EQ(t.st.view.menu("mnu_footpedalusb1").caption, u"USB pedal: VEC USB Footpedal");
  EXPECT_FALSE(t.pedals.isOpen());  // nothing chosen yet

  mnu_footpedalusb(t.st, 2);
  EXPECT_EQ(t.ui.lastBox().text, u"USB pedal Philips ACC2330 opened for foot pedal communications.");
  EXPECT_EQ(t.st.s.options["pedal.device"], "hidraw:0911:091a:Philips ACC2330");
  EXPECT_TRUE(t.checked(2));
  mnu_footpedalusb(t.st, 1);  // another one takes its place
  EXPECT_EQ(std::tuple(t.checked(1), t.checked(2)), std::tuple(true, false));
  mnu_footpedalusb(t.st, 1);  // the open one again: closed and forgotten
  EXPECT_EQ(std::tuple(t.pedals.isOpen(), t.checked(1), t.st.s.options["pedal.device"]),
            std::tuple(false, false, std::string()));
}

TEST(UsbPedal, UnpluggedPedalFallsSilentAndIsPickedUpAgainUnderItsNewNode) {
  UsbPedalStation t;
  t.start();
  t.pedals.unplug(kVec.path);
  EXPECT_DOUBLE_EQ(t.press(0, 1.5), 50);
  EXPECT_EQ(t.st.view.gainedItems.at("mnu_footpedalport"), std::vector<std::string>({"mnu_footpedalusb1"}));

  PedalDeviceInfo back = kVec;
  back.path = "/dev/input/event9";
  t.pedals.plug(back);
  t.run(1.1);
  EXPECT_EQ(t.pedals.openPath(), back.path);
  EXPECT_TRUE(t.checked(2));
  EXPECT_DOUBLE_EQ(t.press(0, 0.6), 45);
}

TEST(UsbPedal, PedalTheUserMayNotReadNamesTheGroupToJoin) {
  struct Case {
    std::string group;
    std::u16string advice;
  };
  for (const Case& c : {Case{"input", u" Join the group input (sudo usermod -aG input $USER), then log out and "
                                      u"in again."},
                        Case{"root", u" Only root may read it: give it a udev rule that lets the group input read it "
                                     u"(see the README), then plug it in again."}}) {
    UsbPedalStation t;
    t.start();
    t.pedals.unreadable = {kRaw.path};
    t.pedals.group = c.group;
    mnu_footpedalusb(t.st, 2);
    EXPECT_EQ(std::tuple(t.ui.lastBox().text, t.ui.lastBox().icon),
              std::tuple(u"You may not read the foot pedal Philips ACC2330 (/dev/hidraw2)." + c.advice, Icon::Critical));
    // The chosen pedal serves on.
    EXPECT_EQ(std::tuple(t.pedals.openPath(), t.checked(1)), std::tuple(kVec.path, true));
  }
}

TEST(UsbPedal, OrderTakesOneEventPerSwitch) {
  using E = CommEvent;
  EXPECT_EQ(parsePedalMap("5,4,3"), std::vector<E>({E::comEvCD, E::comEvDSR, E::comEvCTS}));
  EXPECT_EQ(parsePedalMap(" 3, 0 ,5 4"), std::vector<E>({E::comEvCTS, E{0}, E::comEvCD, E::comEvDSR}));
  for (const char* bad : {"", "6", "5,44", "a", "3,4,5,0,3,4,5,0,3"}) EXPECT_TRUE(parsePedalMap(bad).empty()) << bad;

  UsbPedalStation t;
  t.ui.inputs = {u"3, 4,5", u"9", u""};
  for (int i = 0; i < 3; ++i) mnu_footpedalmap(t.st);
  EXPECT_EQ(t.st.s.options["pedal.map"], "3,4,5") << "a bad order and no answer leave it";
  EXPECT_EQ(t.ui.lastBox().icon, Icon::Exclamation);
}

}  // namespace
}  // namespace quillon
