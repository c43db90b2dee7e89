#include "transport/mpv/mpv_player.h"

#include <mpv/client.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <clocale>
#include <cmath>
#include <cstring>

#include "transport/mpv/quicktime_timecode.h"

namespace quillon {

namespace {

enum : uint64_t { kTimePos = 1, kEofReached, kDuration };

// Numbers go to mpv as text in its own notation, whatever the locale.
std::string number(double v) {
  char buf[64];
  auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::fixed, 6);
  return std::string(buf, r.ptr);
}

// Hundredths of a decibel, as volume and balance come, to a gain factor.
double gainOf(long hundredthsDb) { return std::pow(10.0, static_cast<double>(hundredthsDb) / 2000.0); }

}  // namespace

int MpvPicture::brightness(int x, int y) const {
  if (x < 0 || y < 0 || x >= width || y >= height) return 0;
  const uint8_t* p = bytes.data() + static_cast<size_t>(y) * stride + static_cast<size_t>(x) * 4;
  return p[0] + p[1] + p[2];
}

MpvPlayer::MpvPlayer(MpvOptions options) : options_(std::move(options)) {
  // mpv parses and prints numbers with the C library and refuses to start
  // under a locale whose decimal mark is not a period.
  std::setlocale(LC_NUMERIC, "C");
  handle_ = mpv_create();
  if (!handle_) return;
  auto set = [this](const char* name, const std::string& value) {
    mpv_set_option_string(handle_, name, value.c_str());
  };
  set("vo", options_.videoOutput);
  if (!options_.audioOutput.empty()) set("ao", options_.audioOutput);
  set("idle", "yes");
  set("pause", "yes");
  // A seek to a frame's time shows that frame, not the key frame before it.
  set("hr-seek", "yes");
  // At the end the last frame stays and the player pauses, as a media graph
  // does; the file is released only when the station says so.
  set("keep-open", "yes");
  set("terminal", "no");
  set("input-default-bindings", "no");
  set("input-vo-keyboard", "no");
  set("osc", "no");
  set("osd-level", "0");
  set("audio-display", "no");
  set("sub-auto", "no");
  set("load-scripts", "no");
  set("ytdl", "no");
  for (const auto& [name, value] : options_.extra) set(name.c_str(), value);
  if (mpv_initialize(handle_) < 0) {
    mpv_terminate_destroy(handle_);
    handle_ = nullptr;
    return;
  }
  mpv_observe_property(handle_, kTimePos, "time-pos", MPV_FORMAT_DOUBLE);
  mpv_observe_property(handle_, kEofReached, "eof-reached", MPV_FORMAT_FLAG);
  mpv_observe_property(handle_, kDuration, "duration", MPV_FORMAT_DOUBLE);
  events_ = std::thread([this] { eventLoop(); });
}

MpvPlayer::~MpvPlayer() {
  if (!handle_) return;
  {
    std::lock_guard lock(mutex_);
    quitting_ = true;
  }
  mpv_wakeup(handle_);
  events_.join();
  // A render context on the handle must go before the handle does.
  if (beforeDestroy_) beforeDestroy_();
  mpv_terminate_destroy(handle_);
}

void MpvPlayer::eventLoop() {
  for (;;) {
    mpv_event* ev = mpv_wait_event(handle_, -1);
    PositionListener notify;
    double position = 0;
    {
      std::lock_guard lock(mutex_);
      if (quitting_ || ev->event_id == MPV_EVENT_SHUTDOWN) return;
      switch (ev->event_id) {
        case MPV_EVENT_FILE_LOADED:
          if (load_ == Load::Loading) load_ = Load::Loaded;
          break;
        case MPV_EVENT_END_FILE: {
          auto* end = static_cast<mpv_event_end_file*>(ev->data);
          // A file that fails in the middle of play is as closed to the
          // station as one that never loaded: its waits end where it stood.
          if (load_ != Load::None && end->reason == MPV_END_FILE_REASON_ERROR) load_ = Load::Failed;
          break;
        }
        case MPV_EVENT_PLAYBACK_RESTART:
          ++restarts_;
          break;
        case MPV_EVENT_PROPERTY_CHANGE: {
          auto* prop = static_cast<mpv_event_property*>(ev->data);
          if (ev->reply_userdata == kTimePos && prop->format == MPV_FORMAT_DOUBLE) {
            lastPosition_ = position = *static_cast<double*>(prop->data);
            if (load_ == Load::Loaded) notify = listener_;
          } else if (ev->reply_userdata == kEofReached) {
            eofReached_ = prop->format == MPV_FORMAT_FLAG && *static_cast<int*>(prop->data) != 0;
          } else if (ev->reply_userdata == kDuration && prop->format == MPV_FORMAT_DOUBLE) {
            duration_ = *static_cast<double*>(prop->data);
          }
          break;
        }
        default:
          break;
      }
    }
    changed_.notify_all();
    if (notify) notify(position);
  }
}

bool MpvPlayer::waitFor(double seconds, const std::function<bool()>& done) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, std::chrono::duration<double>(seconds), done);
}

void MpvPlayer::setFlag(const char* name, bool value) {
  int flag = value ? 1 : 0;
  mpv_set_property(handle_, name, MPV_FORMAT_FLAG, &flag);
}

bool MpvPlayer::renderFile(const std::string& path) {
  if (!handle_) return false;
  if (isOpen()) release();
  uint64_t restartsBefore;
  {
    std::lock_guard lock(mutex_);
    load_ = Load::Loading;
    eofReached_ = false;
    lastPosition_ = duration_ = 0;
    restartsBefore = restarts_;
  }
  setFlag("pause", true);
  const char* cmd[] = {"loadfile", path.c_str(), "replace", nullptr};
  if (mpv_command(handle_, cmd) < 0) {
    std::lock_guard lock(mutex_);
    load_ = Load::Failed;
    return false;
  }
  waitFor(options_.loadTimeoutSeconds, [&] { return load_ != Load::Loading; });
  {
    std::lock_guard lock(mutex_);
    if (load_ != Load::Loaded) {
      load_ = Load::Failed;
      return false;
    }
  }
  // The first frame is on show once playback has restarted at the start.
  waitFor(options_.loadTimeoutSeconds, [&] { return restarts_ > restartsBefore; });
  double d = 0;
  if (mpv_get_property(handle_, "duration", MPV_FORMAT_DOUBLE, &d) >= 0) {
    std::lock_guard lock(mutex_);
    duration_ = d;
  }
  return true;
}

bool MpvPlayer::isOpen() const {
  std::lock_guard lock(mutex_);
  return load_ == Load::Loaded;
}

void MpvPlayer::run() {
  if (isOpen()) setFlag("pause", false);
}

void MpvPlayer::pause() {
  if (isOpen()) setFlag("pause", true);
}

void MpvPlayer::stop() { pause(); }

void MpvPlayer::release() {
  if (!handle_) return;
  {
    std::lock_guard lock(mutex_);
    if (load_ == Load::None) return;
    load_ = Load::None;
    duration_ = lastPosition_ = 0;
    eofReached_ = false;
  }
  setFlag("pause", true);
  const char* cmd[] = {"stop", nullptr};
  mpv_command(handle_, cmd);
}

double MpvPlayer::duration() {
  std::lock_guard lock(mutex_);
  return load_ == Load::Loaded ? duration_ : 0;
}

double MpvPlayer::currentPosition() {
  {
    std::lock_guard lock(mutex_);
    if (load_ != Load::Loaded) return 0;
    // The last frame's time is a frame short of the length; a run-out
    // video stands at its end.
    if (eofReached_) return duration_;
  }
  double pos = 0;
  if (mpv_get_property(handle_, "time-pos", MPV_FORMAT_DOUBLE, &pos) < 0) {
    std::lock_guard lock(mutex_);
    return lastPosition_;
  }
  return pos;
}

void MpvPlayer::setCurrentPosition(double seconds) {
  uint64_t restartsBefore;
  {
    std::lock_guard lock(mutex_);
    if (load_ != Load::Loaded) return;
    eofReached_ = false;
    restartsBefore = restarts_;
  }
  // mpv counts a negative absolute target from the end of the file.
  const std::string target = number(std::max(0.0, seconds));
  const char* cmd[] = {"seek", target.c_str(), "absolute+exact", nullptr};
  if (mpv_command(handle_, cmd) < 0) return;
  waitFor(options_.seekTimeoutSeconds, [&] { return restarts_ > restartsBefore; });
}

void MpvPlayer::setRate(double rate) {
  if (!handle_ || !(rate > 0)) return;
  double speed = std::clamp(rate, 0.01, 100.0);
  mpv_set_property(handle_, "speed", MPV_FORMAT_DOUBLE, &speed);
}

void MpvPlayer::setVolume(long volume) {
  if (!handle_) return;
  if (volume <= -10000) {
    setFlag("mute", true);
    return;
  }
  // mpv's volume scale is cubic: 100 is unity gain.
  double v = std::clamp(100.0 * std::cbrt(gainOf(std::min(volume, 0L))), 0.0, 100.0);
  mpv_set_property(handle_, "volume", MPV_FORMAT_DOUBLE, &v);
  setFlag("mute", false);
}

void MpvPlayer::setBalance(long balance) {
  if (!handle_) return;
  balance = std::clamp(balance, -10000L, 10000L);
  if (balance == 0) {
    mpv_set_property_string(handle_, "af", "");
    refreshAudio();
    return;
  }
  // The far side is attenuated by |balance| hundredths of a decibel; the
  // full value silences it.
  double far = std::abs(balance) >= 10000 ? 0.0 : gainOf(-std::abs(balance));
  double leftGain = balance < 0 ? 1.0 : far;
  double rightGain = balance < 0 ? far : 1.0;
  std::string af = "@balance:lavfi=[aformat=channel_layouts=stereo,pan=stereo|c0=" + number(leftGain) +
                   "*c0|c1=" + number(rightGain) + "*c1]";
  mpv_set_property_string(handle_, "af", af.c_str());
  refreshAudio();
}

void MpvPlayer::refreshAudio() {
  // Sound decoded before the filter changed is already in the output
  // buffer. Paused (a file just opened, typically), the same frame is
  // sought again so that playback starts with the new balance; playing,
  // the change is heard once the buffer has run through.
  double pos = 0;
  {
    std::lock_guard lock(mutex_);
    if (load_ != Load::Loaded || eofReached_) return;
  }
  if (paused() && mpv_get_property(handle_, "time-pos", MPV_FORMAT_DOUBLE, &pos) >= 0) setCurrentPosition(pos);
}

void MpvPlayer::setWindow(int left, int top, int width, int height, bool visible) {
  WindowHandler handler;
  {
    std::lock_guard lock(mutex_);
    handler = windowHandler_;
  }
  if (handler) handler(left, top, width, height, visible);
}

double MpvPlayer::quickTimeStartTimecode(const std::string& path, int fps) {
  return readQuickTimeStartTimecode(path, fps);
}

void MpvPlayer::setPositionListener(PositionListener listener) {
  std::lock_guard lock(mutex_);
  listener_ = std::move(listener);
}

void MpvPlayer::setWindowHandler(WindowHandler handler) {
  std::lock_guard lock(mutex_);
  windowHandler_ = std::move(handler);
}

void MpvPlayer::setBeforeDestroy(std::function<void()> hook) { beforeDestroy_ = std::move(hook); }

bool MpvPlayer::grabPicture(MpvPicture& picture) {
  if (!isOpen()) return false;
  mpv_node result;
  const char* cmd[] = {"screenshot-raw", "video", nullptr};
  if (mpv_command_ret(handle_, cmd, &result) < 0) return false;
  bool ok = false;
  if (result.format == MPV_FORMAT_NODE_MAP) {
    const mpv_node_list* map = result.u.list;
    const mpv_byte_array* data = nullptr;
    for (int i = 0; i < map->num; ++i) {
      const char* key = map->keys[i];
      const mpv_node& v = map->values[i];
      if (!std::strcmp(key, "w")) picture.width = static_cast<int>(v.u.int64);
      if (!std::strcmp(key, "h")) picture.height = static_cast<int>(v.u.int64);
      if (!std::strcmp(key, "stride")) picture.stride = static_cast<int>(v.u.int64);
      if (!std::strcmp(key, "data") && v.format == MPV_FORMAT_BYTE_ARRAY) data = v.u.ba;
    }
    if (data && picture.stride > 0 && data->size >= static_cast<size_t>(picture.stride) * picture.height) {
      auto* bytes = static_cast<const uint8_t*>(data->data);
      picture.bytes.assign(bytes, bytes + data->size);
      ok = true;
    }
  }
  mpv_free_node_contents(&result);
  return ok;
}

bool MpvPlayer::paused() {
  int flag = 1;
  if (handle_) mpv_get_property(handle_, "pause", MPV_FORMAT_FLAG, &flag);
  return flag != 0;
}

double MpvPlayer::rate() {
  double speed = 1;
  if (handle_) mpv_get_property(handle_, "speed", MPV_FORMAT_DOUBLE, &speed);
  return speed;
}

}  // namespace quillon
