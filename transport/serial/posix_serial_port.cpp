#include "transport/serial/posix_serial_port.h"

#include <fcntl.h>
#include <linux/serial.h>
#include <pthread.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <mutex>
#include <thread>

namespace quillon {

namespace {

// TIOCMIWAIT has no timeout and ignores the descriptor being closed, so a
// signal ends it. SIGURG is ignored by default: a stray one harms nothing.
const int kWakeSignal = SIGURG;

void installWakeHandler() {
  static std::once_flag once;
  std::call_once(once, [] {
    struct sigaction sa {};
    sa.sa_handler = [](int) {};
    sigemptyset(&sa.sa_mask);
    sa.sa_flags = 0;  // no SA_RESTART: the ioctl must return EINTR
    sigaction(kWakeSignal, &sa, nullptr);
  });
}

}  // namespace

struct PosixModemLines::Waiter {
  std::atomic<bool> interrupted{false};
  std::atomic<bool> inWait{false};
  std::atomic<pthread_t> thread{};
};

PosixModemLines::PosixModemLines(int fd) : fd_(fd), waiter_(std::make_shared<Waiter>()) { installWakeHandler(); }

bool PosixModemLines::counts(LineCounts& c) {
  serial_icounter_struct ic{};
  if (ioctl(fd_, TIOCGICOUNT, &ic) < 0) return false;
  c.cts = static_cast<uint32_t>(ic.cts);
  c.dsr = static_cast<uint32_t>(ic.dsr);
  c.cd = static_cast<uint32_t>(ic.dcd);
  return true;
}

bool PosixModemLines::levels(LineLevels& l) {
  int status = 0;
  if (ioctl(fd_, TIOCMGET, &status) < 0) return false;
  l.cts = status & TIOCM_CTS;
  l.dsr = status & TIOCM_DSR;
  l.cd = status & TIOCM_CD;
  return true;
}

ModemLineSource::Wait PosixModemLines::waitForChange() {
  waiter_->thread = pthread_self();
  waiter_->inWait = true;
  if (waiter_->interrupted) {
    waiter_->inWait = false;
    return Wait::Interrupted;
  }
  const int r = ioctl(fd_, TIOCMIWAIT, TIOCM_CTS | TIOCM_DSR | TIOCM_CD);
  const int err = errno;
  waiter_->inWait = false;
  if (r == 0) return Wait::Changed;
  return err == EINTR ? Wait::Interrupted : Wait::Unsupported;
}

void PosixModemLines::interrupt() {
  waiter_->interrupted = true;
  // The signal may land just before the ioctl begins; it is sent again
  // until the wait is seen to be over.
  while (waiter_->inWait) {
    pthread_kill(waiter_->thread, kWakeSignal);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

PosixSerialPort::PosixSerialPort(LineSourceFactory factory) : factory_(std::move(factory)) {}

PosixSerialPort::~PosixSerialPort() { close(); }

std::string PosixSerialPort::devicePath(int port) {
  if (port < 1) return "";
  const std::string var = "QUILLON_COM" + std::to_string(port);
  if (const char* path = std::getenv(var.c_str()); path && *path) return path;
  return "/dev/ttyS" + std::to_string(port - 1);
}

bool PosixSerialPort::open(int port) {
  if (isOpen()) return false;  // an open port is never reopened, not even the same one
  close();                     // what is left of a device that went away
  const std::string path = devicePath(port);
  if (path.empty()) return false;
  int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return false;
  // A serial device, and not one another program holds.
  if (!isatty(fd) || flock(fd, LOCK_EX | LOCK_NB) < 0) {
    ::close(fd);
    return false;
  }
  ioctl(fd, TIOCEXCL);
  // CLOCAL: the rewind pedal on CD must not hang the line up.
  termios tio{};
  if (tcgetattr(fd, &tio) == 0) {
    tio.c_cflag |= CLOCAL | CREAD;
    tcsetattr(fd, TCSANOW, &tio);
  }
  // The pedal draws its power from DTR and RTS.
  int bits = TIOCM_DTR | TIOCM_RTS;
  ioctl(fd, TIOCMBIS, &bits);

  fd_ = fd;
  std::unique_ptr<ModemLineSource> source = factory_ ? factory_(fd) : std::make_unique<PosixModemLines>(fd);
  watcher_ = std::make_unique<ModemWatcher>(std::move(source), [this](CommEvent ev) { events_.push(ev); });
  return true;
}

void PosixSerialPort::close() {
  if (fd_ < 0) return;
  watcher_.reset();  // the thread has ended when this returns
  ::close(fd_);
  fd_ = -1;
  events_.clear();
}

}  // namespace quillon
