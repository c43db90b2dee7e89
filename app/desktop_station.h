// The desktop station put together: the Qt user interface, the document
// service, the player and its picture, the pedal's port, the station's
// logic with its hooks, the main window and the timers that drive it.
#pragma once

#include <memory>
#include <string>

#include <QObject>
#include <QTimer>

#include "app/main_window.h"
#include "app/qt_ui.h"
#include "core/station.h"
#include "script/memory_document.h"

namespace quillon {

class WriterMode;

struct DesktopOptions {
  // mpv draws the picture into the window (OpenGL); off, it decodes
  // without drawing, for desktops that have no OpenGL.
  bool picture = true;
  // How the picture is drawn: through OpenGL, or scaled by mpv into an image
  // the window paints. Automatic takes the image path where OpenGL is a
  // software rasteriser; QUILLON_RENDERER=gl or sw overrides it.
  enum class Renderer { Automatic, OpenGl, Software };
  Renderer renderer = Renderer::Automatic;
  // mpv's audio output; empty for its own choice, "null" for silence.
  std::string audioOutput;
  // Open the pedal's serial port and look for USB pedals at the start.
  bool pedal = true;
  // The end of the program quits the application's event loop.
  bool quitApplication = true;
  // A script file opened in the document service before the start.
  std::string scriptPath;
  // The script window as the document service, when the desktop has it;
  // off, a plain memory document serves.
  bool scriptWindow = true;
};

class DesktopStation : public QObject {
  Q_OBJECT

 public:
  explicit DesktopStation(DesktopOptions options = {});
  ~DesktopStation() override;

  // The entry procedure with the command line's video path as the shell
  // hands it over (quotation marks already removed), or empty to ask. False
  // when no video was opened: the station has closed again.
  bool start(const u16& videoPath);

  // The closing path, as the close box runs it.
  void close();
  // True once the closing path has ended the program.
  bool ended() const { return ended_; }

  Station& station() { return *station_; }
  MainWindow& window() { return *window_; }
  QtUi& ui() { return ui_; }
  // The document service the station drives.
  MemoryDocumentService& documents() { return *service_; }
  MediaPlayer* player() { return player_.get(); }

  // Renders the view state and re-arms the timers; after every command.
  void refresh();

 private:
  void armTimers();
  void installWriterMode();
  void tick();
  void freshPosition();
  void endProgram();
  bool prepareForPicture();
  void arrangeWindows();

  DesktopOptions options_;
  QtUi ui_;
  MemoryDocumentService docs_;
  MemoryDocumentService* service_ = &docs_;
  std::unique_ptr<MediaPlayer> player_;
  std::unique_ptr<MediaPlayer> playerSeam_;  // the player as the logic sees it
  std::unique_ptr<SerialPort> port_;
  std::unique_ptr<PedalInput> pedalInput_;
  std::unique_ptr<Station> station_;
  // "Script in LibreOffice Writer", where the build has LibreOffice's SDK.
  std::unique_ptr<WriterMode> writerMode_;
  QWidget* video_ = nullptr;
  QWidget* scriptWindow_ = nullptr;
  std::unique_ptr<MainWindow> window_;
  QTimer timer_;
  bool ended_ = false;
  bool refreshing_ = false;
};

}  // namespace quillon
