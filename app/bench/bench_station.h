// The whole desktop station on the generated test pattern, for the
// benchmarks that measure it from the window down to libmpv. Without a
// display it runs offscreen, and mpv decodes without drawing.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>

#include <QApplication>

#include "app/desktop_station.h"
#include "script/document_files.h"

namespace quillon::bench {

inline const std::string kPatternVideo = std::string(QUILLON_SAMPLE_MEDIA_DIR) + "/pattern.mp4";

// The application for the whole run; true when there is a display to draw on.
inline bool startApplication() {
  const bool display = std::getenv("DISPLAY") != nullptr;
  if (!display) qputenv("QT_QPA_PLATFORM", "offscreen");
  static int argc = 1;
  static char name[] = "bench";
  static char* argv[] = {name, nullptr};
  static QApplication* app = new QApplication(argc, argv);
  (void)app;
  return display;
}

// The options of a measured station: the picture where there is a display,
// silence, no pedal, and the script in a plain memory document.
inline DesktopOptions benchOptions(bool display) {
  DesktopOptions o;
  o.picture = display;
  o.audioOutput = "null";
  o.pedal = false;
  o.scriptWindow = false;
  return o;
}

// The station with `script` as its document and the test pattern open; null
// when the video did not open.
inline std::unique_ptr<DesktopStation> stationOnPattern(const DesktopOptions& o, const std::string& script) {
  auto desk = std::make_unique<DesktopStation>(o);
  desk->documents().addDocument(plainTextDocument(script));
  if (!desk->start(fromUtf8(kPatternVideo))) return nullptr;
  return desk;
}

}  // namespace quillon::bench
