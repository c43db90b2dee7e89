#include "app_fixture.h"

#include <cstdlib>

#include <QElapsedTimer>

#include "support/station_fixture.h"

// The desktop libraries (fontconfig, Mesa, mpv) keep caches for the life of
// the process; they are not this program's leaks.
extern "C" const char* __asan_default_options() { return "detect_leaks=0"; }

namespace quillon::testing {

QApplication& application() {
  static QApplication* app = [] {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "test_app";
    static char* argv[] = {name, nullptr};
    return new QApplication(argc, argv);
  }();
  return *app;
}

RunningStation::RunningStation() {
  application();
  static int count = 0;
  configDir = tempDir("app-config-" + std::to_string(++count));
  setenv("QUILLON_CONFIG_DIR", configDir.c_str(), 1);
  DesktopOptions o;
  o.picture = false;
  o.audioOutput = "null";
  o.pedal = false;
  // The script window's own questions (save before leaving?) belong to its own tests.
  o.scriptWindow = false;
  // One application serves every test: ending a station must not end it.
  o.quitApplication = false;
  desk = std::make_unique<DesktopStation>(o);
}

RunningStation::~RunningStation() {
  if (!desk->ended()) desk->close();
  desk.reset();
  QCoreApplication::processEvents();
}

bool RunningStation::waitUntil(const std::function<bool()>& done, double seconds) {
  QElapsedTimer t;
  t.start();
  while (!done()) {
    if (t.elapsed() > seconds * 1000) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

}  // namespace quillon::testing
