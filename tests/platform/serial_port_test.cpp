#include <gtest/gtest.h>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <fstream>
#include <mutex>
#include <thread>
#include <vector>

#include "support/station_fixture.h"
#include "transport/serial/modem_watcher.h"
#include "transport/serial/posix_serial_port.h"

namespace quillon {
namespace {

using Events = std::vector<CommEvent>;
constexpr CommEvent CTS = CommEvent::comEvCTS, DSR = CommEvent::comEvDSR, CD = CommEvent::comEvCD;

// Lines a test moves by hand. Each move counts a transition and wakes a
// waiting watcher, as the driver does.
class ScriptedLines : public ModemLineSource {
 public:
  bool canCount = true, canWait = true;

  void toggle(CommEvent line, int times = 1) {
    {
      std::lock_guard lock(mutex_);
      for (int i = 0; i < times; ++i) {
        if (line == CTS) ++counts_.cts, levels_.cts = !levels_.cts;
        if (line == DSR) ++counts_.dsr, levels_.dsr = !levels_.dsr;
        if (line == CD) ++counts_.cd, levels_.cd = !levels_.cd;
      }
      ++changes_;
      waitsAtLastChange_ = waits_;
    }
    cv_.notify_all();
  }
  // The adapter is pulled out: a wait in progress fails, and nothing can
  // be read any more, as the driver's calls fail with EIO.
  void vanish() { set(gone_); }

  bool counts(LineCounts& c) override {
    std::lock_guard lock(mutex_);
    c = counts_;
    return canCount && !gone_;
  }
  bool levels(LineLevels& l) override {
    std::lock_guard lock(mutex_);
    l = levels_;
    return !gone_;
  }
  Wait waitForChange() override {
    if (!canWait) return Wait::Unsupported;
    std::unique_lock lock(mutex_);
    const int seen = changes_;
    ++waits_;
    cv_.notify_all();
    cv_.wait(lock, [&] { return interrupted_ || gone_ || changes_ != seen; });
    if (interrupted_) return Wait::Interrupted;
    return gone_ ? Wait::Unsupported : Wait::Changed;
  }
  void interrupt() override { set(interrupted_); }
  // Until the watcher waits again after the last change, all of it taken.
  void waitUntilWaiting() {
    std::unique_lock lock(mutex_);
    cv_.wait(lock, [&] { return waits_ > waitsAtLastChange_; });
  }

 private:
  void set(bool& flag) {
    {
      std::lock_guard lock(mutex_);
      flag = true;
    }
    cv_.notify_all();
  }
  std::mutex mutex_;
  std::condition_variable cv_;
  LineCounts counts_;
  LineLevels levels_;
  int changes_ = 0, waits_ = 0, waitsAtLastChange_ = 0;
  bool interrupted_ = false, gone_ = false;
};

// A pseudo-terminal stands in for the device: it opens like one, though its
// lines are moved by the scripted source.
struct Pty {
  int master = posix_openpt(O_RDWR | O_NOCTTY);
  std::string slave() const { return master >= 0 ? ptsname(master) : ""; }
  Pty() {
    if (master >= 0) grantpt(master), unlockpt(master);
  }
  ~Pty() {
    if (master >= 0) close(master);
  }
};

TEST(PosixSerialPort, ComPortsMapToSerialDevicesAndOnlyATerminalOpens) {
  unsetenv("QUILLON_COM2");
  EXPECT_EQ(PosixSerialPort::devicePath(2), "/dev/ttyS1");
  setenv("QUILLON_COM2", "/dev/ttyUSB0", 1);
  EXPECT_EQ(PosixSerialPort::devicePath(2), "/dev/ttyUSB0");
  unsetenv("QUILLON_COM2");
  EXPECT_EQ(PosixSerialPort::devicePath(0), "");

  const std::string dir = testing::tempDir("serial_missing");
  std::ofstream(dir + "/plain") << "not a terminal";
  PosixSerialPort port;
  for (const std::string device : {"/ttyNone", "/plain"}) {
    setenv("QUILLON_COM3", (dir + device).c_str(), 1);
    EXPECT_FALSE(port.open(3)) << device;
  }
  EXPECT_FALSE(port.open(0));
  EXPECT_FALSE(port.isOpen());
  unsetenv("QUILLON_COM3");

  // A pseudo-terminal opens, and its real lines, which it cannot report, stay quiet.
  Pty pty;
  setenv("QUILLON_COM4", pty.slave().c_str(), 1);
  ASSERT_TRUE(port.open(4));
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  CommEvent ev;
  EXPECT_FALSE(port.takeEvent(ev));
  port.close();
  EXPECT_FALSE(port.isOpen());
  unsetenv("QUILLON_COM4");
}

// A port on a pseudo-terminal whose lines the test moves.
struct ScriptedPort {
  explicit ScriptedPort(bool canCount = true, bool canWait = true)
      : port([this, canCount, canWait](int) {
          auto l = std::make_unique<ScriptedLines>();
          l->canCount = canCount;
          l->canWait = canWait;
          lines = l.get();
          return l;
        }) {
    setenv("QUILLON_COM2", pty.slave().c_str(), 1);
  }
  ~ScriptedPort() { unsetenv("QUILLON_COM2"); }
  Pty pty;
  ScriptedLines* lines = nullptr;
  PosixSerialPort port;
};

// Events leave the watcher's thread for the window thread through the
// port's queue. A driver that can wait is waited on; one that cannot is
// polled for its transition counts, or without counts for its levels.
TEST(PosixSerialPort, EachLineChangeIsOneEventForTheWindowThreadHoweverTheDriverIsWatched) {
  const struct {
    const char* what;
    bool canWait, canCount;
    Events expected;  // after CTS, DSR twice between two looks, CD
  } cases[] = {
      {"waited on", true, true, {CTS, DSR, DSR, CD}},
      {"polled for counts", false, true, {CTS, DSR, DSR, CD}},
      {"polled for levels", true, false, {CTS, CD}},  // a tap between two looks is not seen
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    ScriptedPort p(c.canCount, c.canWait);
    std::atomic<int> wakeUps{0};
    p.port.setEventNotifier([&] { ++wakeUps; });
    ASSERT_TRUE(p.port.open(2));
    // An open port is not opened again, whichever is asked for.
    EXPECT_FALSE(p.port.open(2));
    EXPECT_FALSE(p.port.open(1));
    Events taken;
    CommEvent ev;
    const auto take = [&](size_t n) {  // until n events, or 5 s
      for (auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
           taken.size() < n && std::chrono::steady_clock::now() < end;)
        if (p.port.takeEvent(ev)) taken.push_back(ev);
        else std::this_thread::sleep_for(std::chrono::milliseconds(1));
    };
    if (c.canWait && c.canCount) p.lines->waitUntilWaiting();
    p.lines->toggle(CTS);
    take(1);
    p.lines->toggle(DSR, 2);
    p.lines->toggle(CD);
    take(c.expected.size());
    std::this_thread::sleep_for(std::chrono::milliseconds(5 * ModemWatcher::kPollMilliseconds));
    while (p.port.takeEvent(ev)) taken.push_back(ev);  // nothing more comes
    EXPECT_EQ(taken, c.expected);
    EXPECT_GE(wakeUps.load(), 2);

    // Closed, the port hears nothing more and opens again.
    p.port.close();
    EXPECT_FALSE(p.port.isOpen());
    EXPECT_FALSE(p.port.takeEvent(ev));
    EXPECT_TRUE(p.port.open(2));
  }
}

TEST(PosixSerialPort, AnAdapterPulledOutCountsAsClosedAndOpensAgainWhenBack) {
  for (bool canCount : {true, false}) {
    SCOPED_TRACE(canCount ? "counted" : "polled for levels");
    ScriptedPort p(canCount);
    ASSERT_TRUE(p.port.open(2));
    p.lines->vanish();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (p.port.isOpen() && std::chrono::steady_clock::now() < deadline)
      std::this_thread::sleep_for(std::chrono::milliseconds(ModemWatcher::kPollMilliseconds));
    EXPECT_FALSE(p.port.isOpen());
    // Plugged in again (the same device here), the port menu opens it.
    EXPECT_TRUE(p.port.open(2));
  }
}

}  // namespace
}  // namespace quillon
