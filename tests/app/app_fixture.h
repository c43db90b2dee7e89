// A real desktop station for the GUI tests: the Qt window on the offscreen
// platform, the mpv player without a picture, a memory document, and a
// settings folder of the test's own.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <QApplication>
#include <QTimer>

#include "app/desktop_station.h"
#include "platform/sample_media.h"

namespace quillon::testing {

// The one application of the test program.
QApplication& application();

struct RunningStation {
  RunningStation();
  ~RunningStation();

  std::string configDir;
  std::unique_ptr<DesktopStation> desk;

  Station& st() { return desk->station(); }
  MainWindow& window() { return desk->window(); }
  // Runs the event loop until `done` holds or `seconds` pass; false on time-out.
  bool waitUntil(const std::function<bool()>& done, double seconds);
};

}  // namespace quillon::testing
