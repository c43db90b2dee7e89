// The station as the logic sees it: the session's data, the window's view
// state and the platform services behind their seams. Every command takes a
// Station& and reaches the outside world only through these members.
#pragma once

#include <functional>
#include <string_view>

#include "core/session.h"
#include "core/ui.h"
#include "core/view_state.h"

namespace quillon {

class DocumentService;
class MediaPlayer;
class PedalInput;
class SerialPort;

struct Station {
  explicit Station(UserInterface& ui_) : ui(ui_) {}

  Session s;
  ViewState view;

  UserInterface& ui;
  DocumentService* doc = nullptr;
  MediaPlayer* player = nullptr;
  SerialPort* port = nullptr;
  PedalInput* pedalInput = nullptr;  // USB foot pedals, beside the serial one

  // Seams between folders, filled by the layer that owns the behaviour so
  // that lower layers need not know it.
  //
  // Called at the start of every subtitle scan (running totals go to zero).
  std::function<void(Station&)> beginSubtitleScan;
  // Called for each subtitle entry the scan has just stored at `index`;
  // `kept` tells whether the entry stays in the table. Returning false stops
  // the scan, which then returns false.
  std::function<bool(Station&, int index, bool kept)> checkSubtitle;
  // Called for each caption the scan has just stored; false stops the scan.
  std::function<bool(Station&, int index)> checkCaption;
  // The audio track command, applied when the settings are read.
  std::function<void(Station&, char16_t track)> trackCommand;
  // Re-times one subtitle of the scan table interactively (`editSubtitle`).
  std::function<void(Station&, int index)> editSubtitle;
  // Seek of the player (`ira`), to seconds of the player's clock.
  std::function<void(Station&, double seconds)> ira;
  // Ends the program at once, without the closing path.
  std::function<void(Station&)> endProgram;
  // `resumevideo`: the video plays on after a dubbing block is tagged.
  std::function<void(Station&)> resumeVideo;
  // `pausevideo` (toolbar and menu labels follow), `videostart` and
  // `videostop` (run and pause alone), for the loops below transport.
  std::function<void(Station&)> pauseVideo;
  std::function<void(Station&)> videoStart;
  std::function<void(Station&)> videoStop;
  // The click of a menu item whose command lives above transport (the
  // exports, the simulation options); installed by the window that owns
  // the menus. Keys that stand for such a click call it by the item's name.
  std::function<void(Station&, std::string_view item)> clickMenu;
  // `cleanSubtitlesArray`: the per-frame subtitle table reset for the video
  // just opened; installed by the simulation.
  std::function<void(Station&)> cleanSubtitlesArray;

  int fps() const { return s.g_fps; }
};

}  // namespace quillon
