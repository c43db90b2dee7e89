#include <gtest/gtest.h>

#include <fcntl.h>
#include <linux/input.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "support/station_fixture.h"
#include "transport/input/linux_pedal_input.h"
#include "transport/input/pedal_catalog.h"
#include "transport/input/switch_decoders.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Changes = std::vector<int>;

std::string record(int type, int code, int value) {
  input_event ev{};
  ev.type = static_cast<uint16_t>(type);
  ev.code = static_cast<uint16_t>(code);
  ev.value = value;
  return std::string(reinterpret_cast<const char*>(&ev), sizeof ev);
}
std::string press(int code, int value = 1) { return record(EV_KEY, code, value) + record(EV_SYN, SYN_REPORT, 0); }

// A named pipe standing in for a pedal's node; writers open it once the
// adapter reads it.
struct Pipe {
  std::string path;
  int writer = -1;
  explicit Pipe(const std::string& name) : path(testing::tempDir("pedal-" + name) + "/" + name) {
    mkfifo(path.c_str(), 0600);
  }
  ~Pipe() { unplug(); }
  void plug() { writer = ::open(path.c_str(), O_WRONLY | O_CLOEXEC); }
  void write(const std::string& bytes) {
    ASSERT_EQ(::write(writer, bytes.data(), bytes.size()), ssize_t(bytes.size()));
  }
  void unplug() {
    if (writer >= 0) ::close(writer);
    writer = -1;
  }
};

// A pedal adapter on empty sysfs and device trees of its own.
struct Adapter {
  std::string root = testing::tempDir("pedal-roots");
  LinuxPedalInput in{root + "/sys", root + "/dev"};
  Changes waitFor(size_t n) {
    Changes got;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    for (int sw; got.size() < n && std::chrono::steady_clock::now() < end;)
      if (in.takeSwitchChange(sw)) got.push_back(sw);
      else std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return got;
  }
  bool waitGone() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (in.isOpen() && std::chrono::steady_clock::now() < end)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return !in.isOpen();
  }
};

TEST(InputPedal, EventRecordsThroughAPipeGiveOneChangePerPressAndRelease) {
  Adapter a;
  std::atomic<int> wakeUps{0};
  a.in.setEventNotifier([&] { ++wakeUps; });
  Pipe pipe("records");
  ASSERT_EQ(a.in.open(pipe.path), PedalOpen::Opened);
  pipe.plug();
  const std::string right = press(BTN_2);
  pipe.write(record(EV_MSC, MSC_SCAN, 0x90001) + press(BTN_0) + press(BTN_0, 2) + press(BTN_0, 0) + press(KEY_A) +
             right.substr(0, 10));
  pipe.write(right.substr(10));  // a record cut in two by the pipe
  EXPECT_EQ(a.waitFor(3), Changes({0, 0, 2}));
  EXPECT_GE(wakeUps.load(), 1);  // the window thread is woken to take them

  pipe.unplug();  // mid-run: the pedal falls silent
  EXPECT_TRUE(a.waitGone());
  ASSERT_EQ(a.in.open(pipe.path), PedalOpen::Opened) << "plugged in again";
  pipe.plug();
  pipe.write(press(BTN_1));
  EXPECT_EQ(a.waitFor(1), Changes({1}));

  // A node that is not an event device reads as HID reports: each switch bit that moved.
  Pipe hid("hidraw-feed");
  ASSERT_EQ(a.in.open(hid.path), PedalOpen::Opened);
  hid.plug();
  hid.write(std::string("\x01\x03\x02\x00", 4));
  EXPECT_EQ(a.waitFor(4), Changes({0, 1, 0, 1}));
}

TEST(InputPedal, AMissingUnreadableOrOddNodeIsNotOpened) {
  Adapter a;
  const std::string dir = testing::tempDir("pedal-nodes");
  EXPECT_EQ(a.in.open(dir + "/event99"), PedalOpen::Missing);
  EXPECT_EQ(a.in.open(dir), PedalOpen::Failed);
  std::ofstream(dir + "/locked") << "";
  chmod((dir + "/locked").c_str(), 0);
  if (geteuid() != 0) {
    EXPECT_EQ(a.in.open(dir + "/locked"), PedalOpen::NotPermitted);
  }
  EXPECT_FALSE(a.in.isOpen());
}

TEST(InputPedal, SwitchesAreNumberedLeftToRight) {
  const EventRecordDecoder mouse({BTN_RIGHT, BTN_LEFT, BTN_MIDDLE}), pipe({});
  for (auto [code, sw] : {std::pair{BTN_LEFT, 0}, {BTN_MIDDLE, 1}, {BTN_RIGHT, 2}, {KEY_A, -1}})
    EXPECT_EQ(mouse.switchOf(code), sw) << code;
  for (auto [code, sw] : {std::pair{BTN_0, 0}, {BTN_2, 2}, {BTN_MIDDLE, 1}, {BTN_TRIGGER + 1, 1}, {KEY_A, -1}})
    EXPECT_EQ(pipe.switchOf(code), sw) << code;
}

// A sysfs tree with the devices a desk has, and pedals among them.
void device(const fs::path& sys, const std::string& node, const std::string& name, const std::string& id,
            const std::string& ev, const std::string& key) {
  const fs::path d = sys / "class/input" / node / "device";
  for (const char* sub : {"id", "capabilities"}) fs::create_directories(d / sub);
  for (auto [file, text] : {std::pair{"name", name}, {"id/vendor", id.substr(0, 4)}, {"id/product", id.substr(5)},
                            {"capabilities/ev", ev}, {"capabilities/key", key}})
    std::ofstream(d / file) << text << "\n";
}
void hidraw(const fs::path& sys, const std::string& node, const std::string& hidId, bool mapped) {
  const fs::path d = sys / "class/hidraw" / node / "device";
  fs::create_directories(mapped ? d / "input" : d);
  std::ofstream(d / "uevent") << "DRIVER=hid-generic\nHID_ID=" << hidId << "\nHID_NAME=Philips  Philips Foot\n";
}

TEST(InputPedal, SysfsTellsPedalsFromOtherDevices) {
  const fs::path sys = testing::tempDir("pedal-sysfs");
  const std::string buttons012 = "7 0 0 0 0";  // BTN_0 to BTN_2 in the fifth word
  device(sys, "event0", "Power Button", "0000:0001", "3", "10000000000000 0");
  device(sys, "event1", "AT Keyboard", "0001:0001", "120013", "ffffffff 0");
  device(sys, "event2", "USB Mouse", "046d:c077", "17", "1f0000 0 0 0 0");
  device(sys, "event3", "VEC  VEC USB Footpedal", "05f3:00ff", "13", buttons012);
  device(sys, "event11", "Generic  Foot  Switch", "1234:5678", "3", buttons012);
  hidraw(sys, "hidraw0", "0003:000005F3:000000FF", true);
  hidraw(sys, "hidraw1", "0003:00000911:0000091A", false);
  hidraw(sys, "hidraw2", "0003:0000046D:0000C077", false);
  std::vector<std::string> found;
  for (const PedalDeviceInfo& d : findPedals(sys.string(), "/dev")) found.push_back(d.identity() + " " + d.path);
  EXPECT_EQ(found, std::vector<std::string>({"event:05f3:00ff:VEC USB Footpedal /dev/input/event3",
                                             "event:1234:5678:Generic Foot Switch /dev/input/event11",
                                             "hidraw:0911:091a:Philips Foot /dev/hidraw1"}));
}

TEST(InputPedal, NoticesPedalNodesComingAndGoing) {
  const std::string dev = testing::tempDir("pedal-dev");
  fs::create_directories(dev + "/input");
  LinuxPedalInput in(dev + "/../sys", dev);
  EXPECT_TRUE(in.devicesMayHaveChanged());  // the first look
  EXPECT_FALSE(in.devicesMayHaveChanged());
  std::ofstream(dev + "/input/event5") << "";
  EXPECT_TRUE(in.devicesMayHaveChanged());
  std::ofstream(dev + "/ttyS9") << "";
  EXPECT_FALSE(in.devicesMayHaveChanged());
  fs::remove(dev + "/input/event5");
  EXPECT_TRUE(in.devicesMayHaveChanged());
}

}  // namespace
}  // namespace quillon
