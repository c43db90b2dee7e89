// The media-player seam: what the station needs of a video. Times are
// seconds of the player's clock, 0 at the file's first frame.
#pragma once

#include <functional>
#include <string>

namespace quillon {

class MediaPlayer {
 public:
  virtual ~MediaPlayer() = default;

  // Builds the playback for a file; false when it cannot be played.
  virtual bool renderFile(const std::string& path) = 0;
  virtual bool isOpen() const = 0;
  virtual void run() = 0;
  virtual void pause() = 0;
  virtual void stop() = 0;
  // Releases the file and everything built for it.
  virtual void release() = 0;

  virtual double duration() = 0;
  virtual double currentPosition() = 0;
  // Exact: a seek to a frame's time shows that frame.
  virtual void setCurrentPosition(double seconds) = 0;
  virtual void setRate(double rate) = 0;
  // 0 full volume, -10000 silent.
  virtual void setVolume(long volume) = 0;
  // -10000 full left, 0 both, +10000 full right.
  virtual void setBalance(long balance) = 0;
  // The video's place in the main window, in pixels.
  virtual void setWindow(int left, int top, int width, int height, bool visible) = 0;

  // The embedded starting timecode of a QuickTime file in seconds at `fps`;
  // 0 when the file has none.
  virtual double quickTimeStartTimecode(const std::string& path, int fps) = 0;

  // Position changes as the player shows them, one call per frame shown or
  // seek landed. The listener runs on the player's own thread: the owner
  // carries the value to its window thread before touching the session.
  // Players without such reports keep the default and are polled instead.
  using PositionListener = std::function<void(double seconds)>;
  virtual void setPositionListener(PositionListener listener) { (void)listener; }
};

}  // namespace quillon
