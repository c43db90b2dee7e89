// quillon: the desktop station. The command line is the video to open, or
// nothing to choose one.
//
// Environment: QUILLON_SCRIPT, a script file to open in the station's
// document; QUILLON_AUDIO, mpv's audio output ("null" for none);
// QUILLON_SCREENSHOT with QUILLON_RUN_SECONDS, for a run without an
// operator: after that many seconds the screen is saved to the file and
// the station closes.
#include <cstdio>
#include <cstdlib>

#include <QApplication>
#include <QScreen>
#include <QTimer>

#include "app/desktop_station.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("quillon");

  quillon::DesktopOptions options;
  if (const char* script = std::getenv("QUILLON_SCRIPT")) options.scriptPath = script;
  if (const char* audio = std::getenv("QUILLON_AUDIO")) options.audioOutput = audio;
  // Without OpenGL (the offscreen platform) mpv decodes without drawing.
  options.picture = QGuiApplication::platformName() != "offscreen";

  // The shell has taken off any quotation marks; a path with blanks that
  // came in pieces is joined again.
  QStringList args = QApplication::arguments();
  args.removeFirst();
  const QString path = args.join(' ');

  quillon::DesktopStation station(options);
  if (!station.start(quillon::fromQString(path)) || station.ended()) return 0;

  const char* shot = std::getenv("QUILLON_SCREENSHOT");
  const char* seconds = std::getenv("QUILLON_RUN_SECONDS");
  if (shot && seconds) {
    QTimer::singleShot(std::atoi(seconds) * 1000, &station, [&station, file = QString(shot)] {
      if (QScreen* screen = QGuiApplication::primaryScreen()) {
        if (screen->grabWindow(0).save(file)) {
          std::printf("screenshot saved: %s\n", file.toUtf8().constData());
          std::fflush(stdout);
        }
      }
      station.close();
    });
  }
  return app.exec();
}
