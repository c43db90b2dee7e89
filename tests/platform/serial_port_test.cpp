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

// Lines a test moves by hand. Each move counts a transition and wakes a
// waiting watcher, as the driver does.
class ScriptedLines : public ModemLineSource {
 public:
  bool canCount = true, canWait = true, canReadLevels = true;

  void toggle(CommEvent line, int times = 1) {
    {
      std::lock_guard lock(mutex_);
      for (int i = 0; i < times; ++i) {
        if (line == CommEvent::comEvCTS) ++counts_.cts, levels_.cts = !levels_.cts;
        if (line == CommEvent::comEvDSR) ++counts_.dsr, levels_.dsr = !levels_.dsr;
        if (line == CommEvent::comEvCD) ++counts_.cd, levels_.cd = !levels_.cd;
      }
      ++changes_;
      waitsAtLastChange_ = waits_;
    }
    cv_.notify_all();
  }

  // The adapter is pulled out: a wait in progress fails, and nothing can
  // be read any more, as the driver's calls fail with EIO.
  void vanish() {
    {
      std::lock_guard lock(mutex_);
      gone_ = true;
    }
    cv_.notify_all();
  }

  bool counts(LineCounts& c) override {
    std::lock_guard lock(mutex_);
    c = counts_;
    return canCount && !gone_;
  }
  bool levels(LineLevels& l) override {
    std::lock_guard lock(mutex_);
    l = levels_;
    return canReadLevels && !gone_;
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
  void interrupt() override {
    {
      std::lock_guard lock(mutex_);
      interrupted_ = true;
    }
    cv_.notify_all();
  }
  // Until the watcher waits again after the last change, all of it taken.
  void waitUntilWaiting() {
    std::unique_lock lock(mutex_);
    cv_.wait(lock, [&] { return waits_ > waitsAtLastChange_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable cv_;
  LineCounts counts_;
  LineLevels levels_;
  int changes_ = 0, waits_ = 0, waitsAtLastChange_ = 0;
  bool interrupted_ = false, gone_ = false;
};

// Collects the events a watcher delivers, from its thread.
struct Received {
  std::mutex mutex;
  std::condition_variable cv;
  std::vector<CommEvent> events;

  void operator()(CommEvent ev) {
    {
      std::lock_guard lock(mutex);
      events.push_back(ev);
    }
    cv.notify_all();
  }
  std::vector<CommEvent> waitFor(size_t n) {
    std::unique_lock lock(mutex);
    cv.wait_for(lock, std::chrono::seconds(5), [&] { return events.size() >= n; });
    return events;
  }
};

using Events = std::vector<CommEvent>;
constexpr CommEvent CTS = CommEvent::comEvCTS, DSR = CommEvent::comEvDSR, CD = CommEvent::comEvCD;

TEST(ModemWatcher, EachLineChangeIsOneEventAndATapBetweenTwoLooksGivesBothEdges) {
  auto lines = std::make_unique<ScriptedLines>();
  ScriptedLines& l = *lines;
  Received got;
  ModemWatcher watcher(std::move(lines), [&](CommEvent ev) { got(ev); });
  l.waitUntilWaiting();
  l.toggle(CTS);
  EXPECT_EQ(got.waitFor(1), Events({CTS}));
  l.waitUntilWaiting();
  l.toggle(DSR, 2);  // pressed and released before the thread looked
  l.waitUntilWaiting();
  l.toggle(CD);
  EXPECT_EQ(got.waitFor(4), Events({CTS, DSR, DSR, CD}));
  EXPECT_FALSE(watcher.polling());
}

TEST(ModemWatcher, DriverThatCannotWaitIsPolledForCounts) {
  auto lines = std::make_unique<ScriptedLines>();
  lines->canWait = false;
  ScriptedLines& l = *lines;
  Received got;
  ModemWatcher watcher(std::move(lines), [&](CommEvent ev) { got(ev); });
  l.toggle(CD, 2);
  l.toggle(CTS);
  Events events = got.waitFor(3);
  std::sort(events.begin(), events.end());  // one look or two
  EXPECT_EQ(events, Events({CTS, CD, CD}));
  EXPECT_TRUE(watcher.polling());
}

TEST(ModemWatcher, DriverWithoutCountsIsPolledForLevels) {
  auto lines = std::make_unique<ScriptedLines>();
  lines->canCount = false;
  ScriptedLines& l = *lines;
  Received got;
  ModemWatcher watcher(std::move(lines), [&](CommEvent ev) { got(ev); });
  EXPECT_TRUE(watcher.polling());
  l.toggle(DSR);
  EXPECT_EQ(got.waitFor(1), Events({DSR}));
  std::this_thread::sleep_for(std::chrono::milliseconds(5 * ModemWatcher::kPollMilliseconds));
  std::lock_guard lock(got.mutex);
  EXPECT_EQ(got.events, Events({DSR}));  // a level that stays is not a change
}

TEST(ModemWatcher, StopEndsABlockedWait) {
  auto lines = std::make_unique<ScriptedLines>();
  ScriptedLines& l = *lines;
  Received got;
  ModemWatcher watcher(std::move(lines), [&](CommEvent ev) { got(ev); });
  l.waitUntilWaiting();
  watcher.stop();  // returns only once the thread has ended
  l.toggle(CTS);
  std::lock_guard lock(got.mutex);
  EXPECT_TRUE(got.events.empty());
}

// A pseudo-terminal stands in for the device: it opens like one, though its
// lines are moved by the scripted source.
struct Pty {
  int master = posix_openpt(O_RDWR | O_NOCTTY);
  std::string slave() const { return master >= 0 ? ptsname(master) : ""; }
  Pty() {
    if (master >= 0) {
      grantpt(master);
      unlockpt(master);
    }
  }
  ~Pty() {
    if (master >= 0) close(master);
  }
};

TEST(PosixSerialPort, ComPortsMapToSerialDevicesUnlessTheEnvironmentSaysOtherwise) {
  unsetenv("QUILLON_COM2");
  EXPECT_EQ(PosixSerialPort::devicePath(1 + 0), getenv("QUILLON_COM1") ? getenv("QUILLON_COM1") : "/dev/ttyS0");
  EXPECT_EQ(PosixSerialPort::devicePath(2), "/dev/ttyS1");
  setenv("QUILLON_COM2", "/dev/ttyUSB0", 1);
  EXPECT_EQ(PosixSerialPort::devicePath(2), "/dev/ttyUSB0");
  unsetenv("QUILLON_COM2");
  EXPECT_EQ(PosixSerialPort::devicePath(0), "");
}

TEST(PosixSerialPort, MissingOrNonSerialDeviceFailsToOpen) {
  const std::string dir = testing::tempDir("serial_missing");
  setenv("QUILLON_COM3", (dir + "/ttyNone").c_str(), 1);
  PosixSerialPort port;
  EXPECT_FALSE(port.open(3));
  EXPECT_FALSE(port.isOpen());
  std::ofstream(dir + "/plain") << "not a terminal";
  setenv("QUILLON_COM3", (dir + "/plain").c_str(), 1);
  EXPECT_FALSE(port.open(3));
  EXPECT_FALSE(port.open(0));
  unsetenv("QUILLON_COM3");
}

TEST(PosixSerialPort, OpenPortQueuesPedalEventsForTheWindowThread) {
  Pty pty;
  ASSERT_FALSE(pty.slave().empty());
  setenv("QUILLON_COM1", pty.slave().c_str(), 1);
  ScriptedLines* lines = nullptr;
  PosixSerialPort port([&](int) {
    auto l = std::make_unique<ScriptedLines>();
    lines = l.get();
    return l;
  });
  std::atomic<int> wakeUps{0};
  port.setEventNotifier([&] { ++wakeUps; });
  ASSERT_TRUE(port.open(1));
  EXPECT_TRUE(port.isOpen());
  // An open port is not opened again, whichever is asked for.
  EXPECT_FALSE(port.open(1));
  EXPECT_FALSE(port.open(2));

  lines->waitUntilWaiting();
  lines->toggle(DSR);
  lines->waitUntilWaiting();
  lines->toggle(CTS);
  lines->waitUntilWaiting();
  std::vector<CommEvent> taken;
  CommEvent ev;
  while (port.takeEvent(ev)) taken.push_back(ev);
  EXPECT_EQ(taken, Events({DSR, CTS}));
  EXPECT_EQ(wakeUps.load(), 2);

  port.close();
  EXPECT_FALSE(port.isOpen());
  EXPECT_FALSE(port.takeEvent(ev));
  EXPECT_TRUE(port.open(1));  // closed, it opens again
  unsetenv("QUILLON_COM1");
}

TEST(PosixSerialPort, PseudoTerminalWithoutModemLinesStaysQuietAndCloses) {
  Pty pty;
  ASSERT_FALSE(pty.slave().empty());
  setenv("QUILLON_COM4", pty.slave().c_str(), 1);
  PosixSerialPort port;  // the real ioctls, which a pseudo-terminal refuses
  ASSERT_TRUE(port.open(4));
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  CommEvent ev;
  EXPECT_FALSE(port.takeEvent(ev));
  port.close();
  EXPECT_FALSE(port.isOpen());
  unsetenv("QUILLON_COM4");
}

TEST(PosixSerialPort, AnAdapterPulledOutCountsAsClosedAndOpensAgainWhenBack) {
  for (bool canCount : {true, false}) {
    Pty pty;
    ASSERT_FALSE(pty.slave().empty());
    setenv("QUILLON_COM2", pty.slave().c_str(), 1);
    ScriptedLines* lines = nullptr;
    PosixSerialPort port([&](int) {
      auto l = std::make_unique<ScriptedLines>();
      l->canCount = canCount;  // watched by counts, or polled for levels
      lines = l.get();
      return l;
    });
    ASSERT_TRUE(port.open(2));
    lines->vanish();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (port.isOpen() && std::chrono::steady_clock::now() < deadline)
      std::this_thread::sleep_for(std::chrono::milliseconds(ModemWatcher::kPollMilliseconds));
    EXPECT_FALSE(port.isOpen()) << "counts " << canCount;
    // Plugged in again (the same device here), the port menu opens it.
    EXPECT_TRUE(port.open(2)) << "counts " << canCount;
    EXPECT_TRUE(port.isOpen());
    port.close();
    unsetenv("QUILLON_COM2");
  }
}

}  // namespace
}  // namespace quillon
