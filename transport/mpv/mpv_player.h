// The media player on libmpv.
//
// One mpv instance lives as long as the player; a file is loaded into it by
// renderFile and unloaded by release. Commands come from the window thread;
// mpv's events are read on a thread of the player's own, which keeps the
// state the window thread asks for and feeds the position listener.
//
// The picture: with the video output "libmpv" mpv draws only through a
// render context, which MpvVideoWidget (library quillon_mpv_widget) creates
// on the player's handle before the first file is loaded. "null" decodes
// without drawing, for tests and tools.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "core/media_player.h"

struct mpv_handle;

namespace quillon {

struct MpvOptions {
  std::string videoOutput = "libmpv";
  std::string audioOutput;  // empty: mpv's choice
  // Further mpv options, set before the instance starts.
  std::vector<std::pair<std::string, std::string>> extra;
  // How long renderFile and a seek wait for mpv before going on regardless.
  double loadTimeoutSeconds = 10;
  double seekTimeoutSeconds = 2;
};

// A copy of the picture on show, 4 bytes a pixel in the order B, G, R, 0.
struct MpvPicture {
  int width = 0, height = 0, stride = 0;
  std::vector<uint8_t> bytes;
  // Sum of the three colour bytes of pixel (x, y).
  int brightness(int x, int y) const;
};

class MpvPlayer : public MediaPlayer {
 public:
  explicit MpvPlayer(MpvOptions options = {});
  ~MpvPlayer() override;
  MpvPlayer(const MpvPlayer&) = delete;
  MpvPlayer& operator=(const MpvPlayer&) = delete;

  // False when mpv could not be started ("Cannot create video object").
  bool created() const { return handle_ != nullptr; }

  // Loads the file paused at its first frame and waits until it is shown.
  bool renderFile(const std::string& path) override;
  bool isOpen() const override;
  void run() override;
  void pause() override;
  // Playback halts where it is; the file stays loaded.
  void stop() override;
  void release() override;

  double duration() override;
  // The time of the frame on show; the duration once playback has run out.
  double currentPosition() override;
  // Seeks exactly and waits until the frame at `seconds` is shown.
  void setCurrentPosition(double seconds) override;
  void setRate(double rate) override;
  void setVolume(long volume) override;
  void setBalance(long balance) override;
  void setWindow(int left, int top, int width, int height, bool visible) override;
  double quickTimeStartTimecode(const std::string& path, int fps) override;
  void setPositionListener(PositionListener listener) override;

  // For the video widget: the handle to create a render context on, where
  // setWindow's rectangle goes, and what must happen before the handle dies
  // (the render context is freed first).
  mpv_handle* handle() const { return handle_; }
  using WindowHandler = std::function<void(int left, int top, int width, int height, bool visible)>;
  void setWindowHandler(WindowHandler handler);
  void setBeforeDestroy(std::function<void()> hook);

  // The picture on show; false without one.
  bool grabPicture(MpvPicture& picture);
  bool paused();
  double rate();

 private:
  void eventLoop();
  void setFlag(const char* name, bool value);
  void refreshAudio();
  // Waits until `done` holds under the state lock, or the timeout passes.
  bool waitFor(double seconds, const std::function<bool()>& done);

  MpvOptions options_;
  mpv_handle* handle_ = nullptr;
  std::thread events_;

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  bool quitting_ = false;
  enum class Load { None, Loading, Loaded, Failed } load_ = Load::None;
  uint64_t restarts_ = 0;  // playback restarts: a load or a seek has landed
  bool eofReached_ = false;
  double duration_ = 0;
  double lastPosition_ = 0;
  PositionListener listener_;

  WindowHandler windowHandler_;
  std::function<void()> beforeDestroy_;
};

}  // namespace quillon
