// The embedded starting timecode of a QuickTime file, read with libavformat:
// the `timecode` tag of its tmcd track. The reader keeps the entry points and
// their fixed order of the library it stands in for: InitializePlayer, then
// GetTC, then StopPlayer and CleanPlayer.
#pragma once

#include <string>

namespace quillon {

class QuickTimeTimecodeReader {
 public:
  // Reads the file's starting timecode at `fps` frames per second. The
  // remaining arguments of the original entry (a second path, the host
  // window and its rectangle, two integers) drew nothing and are not taken.
  // 0 on success, -1 when the file cannot be read.
  int InitializePlayer(const std::string& path, int fps);
  // Seconds of the starting timecode; 0 when the file has none.
  double GetTC() const { return seconds_; }
  double StopPlayer() { return 0; }
  void CleanPlayer() { seconds_ = 0; }

 private:
  double seconds_ = 0;
};

// The tag's text as QuickTime writes it ("HH:MM:SS:FF", ";" before the
// frames when drop-frame) to seconds at `fps`; -1 when it is not one.
double quickTimeTimecodeSeconds(const std::string& text, int fps);

// InitializePlayer, GetTC, StopPlayer, CleanPlayer in that order.
double readQuickTimeStartTimecode(const std::string& path, int fps);

}  // namespace quillon
