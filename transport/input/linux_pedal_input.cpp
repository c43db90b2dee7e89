#include "transport/input/linux_pedal_input.h"

#include <fcntl.h>
#include <grp.h>
#include <linux/hidraw.h>
#include <linux/input.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>

#include "transport/input/pedal_catalog.h"

namespace quillon {

namespace {

constexpr uint32_t kWatchMask = IN_CREATE | IN_DELETE | IN_ATTRIB | IN_MOVED_FROM | IN_MOVED_TO;

bool isPedalNode(const char* name) {
  return std::strncmp(name, "event", 5) == 0 || std::strncmp(name, "hidraw", 6) == 0;
}

std::vector<int> deviceKeys(int fd) {
  constexpr size_t kWordBits = sizeof(unsigned long) * CHAR_BIT;
  unsigned long bits[(KEY_MAX + kWordBits) / kWordBits] = {};
  std::vector<int> keys;
  if (ioctl(fd, EVIOCGBIT(EV_KEY, sizeof bits), bits) < 0) return keys;
  for (int code = 0; code <= KEY_MAX; ++code)
    if (bits[code / kWordBits] >> (code % kWordBits) & 1UL) keys.push_back(code);
  return keys;
}

// How the node's bytes are read, from what its ioctls answer.
std::unique_ptr<SwitchDecoder> decoderFor(int fd, const std::string& path) {
  int version = 0;
  if (ioctl(fd, EVIOCGVERSION, &version) == 0) return std::make_unique<EventRecordDecoder>(deviceKeys(fd));
  hidraw_devinfo info{};
  if (ioctl(fd, HIDIOCGRAWINFO, &info) == 0) return std::make_unique<HidReportDecoder>(0);
  struct stat st {};
  if (fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) return nullptr;
  const std::string name = path.substr(path.rfind('/') + 1);
  if (name.find("hidraw") != std::string::npos) return std::make_unique<HidReportDecoder>(1);
  return std::make_unique<EventRecordDecoder>(std::vector<int>{});
}

}  // namespace

LinuxPedalInput::LinuxPedalInput(std::string sysRoot, std::string devRoot)
    : sysRoot_(std::move(sysRoot)), devRoot_(std::move(devRoot)) {
  inotify_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  watching_ = inotify_ >= 0 && inotify_add_watch(inotify_, (devRoot_ + "/input").c_str(), kWatchMask) >= 0 &&
              inotify_add_watch(inotify_, devRoot_.c_str(), kWatchMask) >= 0;
}

LinuxPedalInput::~LinuxPedalInput() {
  close();
  if (inotify_ >= 0) ::close(inotify_);
}

std::vector<PedalDeviceInfo> LinuxPedalInput::devices() { return findPedals(sysRoot_, devRoot_); }

bool LinuxPedalInput::devicesMayHaveChanged() {
  bool changed = !asked_ || !watching_;
  asked_ = true;
  if (inotify_ < 0) return changed;
  alignas(inotify_event) char buffer[4096];
  ssize_t n;
  while ((n = ::read(inotify_, buffer, sizeof buffer)) > 0) {
    for (ssize_t at = 0; at < n;) {
      const auto* ev = reinterpret_cast<const inotify_event*>(buffer + at);
      // A folder gone (no input device left) is watched no more: from
      // then on every look counts as a change.
      if (ev->mask & (IN_IGNORED | IN_Q_OVERFLOW)) {
        watching_ = watching_ && !(ev->mask & IN_IGNORED);
        changed = true;
      }
      if (ev->len > 0 && isPedalNode(ev->name)) changed = true;
      at += static_cast<ssize_t>(sizeof(inotify_event) + ev->len);
    }
  }
  return changed;
}

PedalOpen LinuxPedalInput::open(const std::string& path) {
  close();
  const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) {
    if (errno == EACCES || errno == EPERM) return PedalOpen::NotPermitted;
    if (errno == ENOENT || errno == ENODEV || errno == ENXIO) return PedalOpen::Missing;
    return PedalOpen::Failed;
  }
  std::unique_ptr<SwitchDecoder> decoder = decoderFor(fd, path);
  if (!decoder) {
    ::close(fd);
    return PedalOpen::Failed;
  }
  fd_ = fd;
  path_ = path;
  watcher_ = std::make_unique<InputWatcher>(fd, std::move(decoder), [this](int sw) { changes_.push(sw); });
  return PedalOpen::Opened;
}

void LinuxPedalInput::close() {
  if (fd_ < 0) return;
  watcher_.reset();  // the thread has ended when this returns
  ::close(fd_);
  fd_ = -1;
  path_.clear();
  changes_.clear();
}

std::string LinuxPedalInput::readerGroup(const std::string& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0 || !(st.st_mode & S_IRGRP) || st.st_gid == 0) return {};
  group entry{}, *result = nullptr;
  char names[4096];
  if (getgrgid_r(st.st_gid, &entry, names, sizeof names, &result) != 0 || !result) return {};
  return result->gr_name;
}

}  // namespace quillon
