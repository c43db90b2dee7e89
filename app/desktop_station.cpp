#include "app/desktop_station.h"

#include <algorithm>
#include <cmath>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QOpenGLWidget>
#include <QScreen>
#include <QWindow>

#include "app/menu_commands.h"
#include "captions/caption_checks.h"
#include "core/pedal_input.h"
#include "core/serial_port.h"
#include "script/document_files.h"
#include "simulation/frame_table.h"
#include "subtitling/rule_checks.h"
#include "subtitling/timing_loop.h"
#include "transport/mpv/mpv_player.h"
#include "transport/startup.h"
#include "transport/timers.h"
#include "transport/video_commands.h"

#ifdef HAVE_QUILLON_MPV_WIDGET
#include "transport/mpv/mpv_software_video_widget.h"
#include "transport/mpv/mpv_video_widget.h"
#endif
#ifdef HAVE_QUILLON_SERIAL
#include "transport/serial/posix_serial_port.h"
#endif
#ifdef HAVE_QUILLON_INPUT
#include "transport/input/linux_pedal_input.h"
#endif
#ifdef HAVE_QUILLON_DOCFILES
#include "script/files/office_formats.h"
#endif
#ifdef HAVE_QUILLON_SCRIPTWIN
#include "app/scriptwin/script_window.h"
#endif
#ifdef HAVE_QUILLON_FORMS
#include "app/forms/station_forms.h"
#endif
#ifdef HAVE_QUILLON_WRITER
#include "script/writer/writer_mode.h"
#endif

namespace quillon {

namespace {

// The player as the logic sees it. Before a file is loaded the picture's
// drawing surface must exist, so the window is shown and its OpenGL
// prepared first.
class PictureFirstPlayer : public MediaPlayer {
 public:
  PictureFirstPlayer(MediaPlayer& inner, std::function<void()> beforeLoad)
      : inner_(inner), beforeLoad_(std::move(beforeLoad)) {}

  bool renderFile(const std::string& path) override {
    beforeLoad_();
    return inner_.renderFile(path);
  }
  bool isOpen() const override { return inner_.isOpen(); }
  void run() override { inner_.run(); }
  void pause() override { inner_.pause(); }
  void stop() override { inner_.stop(); }
  void release() override { inner_.release(); }
  double duration() override { return inner_.duration(); }
  double currentPosition() override { return inner_.currentPosition(); }
  void setCurrentPosition(double seconds) override { inner_.setCurrentPosition(seconds); }
  void setRate(double rate) override { inner_.setRate(rate); }
  void setVolume(long volume) override { inner_.setVolume(volume); }
  void setBalance(long balance) override { inner_.setBalance(balance); }
  void setWindow(int left, int top, int width, int height, bool visible) override {
    inner_.setWindow(left, top, width, height, visible);
  }
  double quickTimeStartTimecode(const std::string& path, int fps) override {
    return inner_.quickTimeStartTimecode(path, fps);
  }

 private:
  MediaPlayer& inner_;
  std::function<void()> beforeLoad_;
};

// The script window goes to the right of the station, where the screen has
// room for it, so the operator sees the picture and the text side by side.
// Frames count: neither window may reach past the screen's usable area.
void placeBeside(QWidget* script, const QWidget* station) {
  if (!station->screen()) return;
  const QRect frame = station->frameGeometry();
  const QRect room = station->screen()->availableGeometry();
  const int left = frame.right() + 1;
  const int width = std::min(800, room.right() - left + 1);
  if (width < 320) return;
  const QRect scriptFrame = script->frameGeometry();
  const int frameWidth = scriptFrame.width() - script->width();
  const int frameHeight = scriptFrame.height() - script->height();
  const int top = std::max(frame.top(), room.top());
  script->move(left, top);
  script->resize(width - frameWidth, room.bottom() - top + 1 - frameHeight);
}

#ifdef HAVE_QUILLON_MPV_WIDGET
bool softwarePicture(DesktopOptions::Renderer r) {
  if (r == DesktopOptions::Renderer::Automatic) {
    const QByteArray env = qgetenv("QUILLON_RENDERER");
    if (env == "gl") r = DesktopOptions::Renderer::OpenGl;
    if (env == "sw") r = DesktopOptions::Renderer::Software;
  }
  if (r == DesktopOptions::Renderer::Automatic) return openGlRunsInSoftware();
  return r == DesktopOptions::Renderer::Software;
}
#endif

}  // namespace

DesktopStation::DesktopStation(DesktopOptions options) : options_(std::move(options)) {
  // The closing path alone ends the program; windows coming and going
  // (the splash, full screen) do not.
  QGuiApplication::setQuitOnLastWindowClosed(false);
#ifdef HAVE_QUILLON_DOCFILES
  registerOfficeDocumentFormats();
#endif
  MpvOptions mpv;
  mpv.videoOutput = options_.picture ? "libmpv" : "null";
  mpv.audioOutput = options_.audioOutput;
  auto mpvPlayer = std::make_unique<MpvPlayer>(mpv);
  if (mpvPlayer->created()) {
#ifdef HAVE_QUILLON_MPV_WIDGET
    if (options_.picture) {
      if (softwarePicture(options_.renderer))
        video_ = new MpvSoftwareVideoWidget(*mpvPlayer);
      else
        video_ = new MpvVideoWidget(*mpvPlayer);
    }
#endif
    player_ = std::move(mpvPlayer);
  }
#ifdef HAVE_QUILLON_SERIAL
  if (options_.pedal) port_ = std::make_unique<PosixSerialPort>();
#endif
#ifdef HAVE_QUILLON_INPUT
  if (options_.pedal) pedalInput_ = std::make_unique<LinuxPedalInput>();
#endif

  station_ = std::make_unique<Station>(ui_);
  Station& st = *station_;
  window_ = std::make_unique<MainWindow>(st, video_);
  if (player_) {
    playerSeam_ = std::make_unique<PictureFirstPlayer>(*player_, [this] { prepareForPicture(); });
    st.player = playerSeam_.get();
  }
  st.port = port_.get();
  st.pedalInput = pedalInput_.get();
  st.doc = &docs_;

  installTransport(st);
  installTimingCommands(st);
  installSubtitleChecks(st);
  installCaptionChecks(st);
  st.cleanSubtitlesArray = [](Station& s) { cleanSubtitlesArray(s.s); };
  st.clickMenu = [](Station& s, std::string_view item) { clickMenuItem(s, item); };
  st.endProgram = [this](Station&) { endProgram(); };

  ui_.beforePump = [this] { refresh(); };
  ui_.dialogParent = [this]() -> QWidget* { return window_ && window_->isVisible() ? window_.get() : nullptr; };
  ui_.beforeDialog = [this] {
    if (window_) window_->dismissSplash();
  };
  window_->afterCommand = [this] { refresh(); };
  window_->closeRequested = [this] { close(); };
  window_->beforeKey = [this] { freshPosition(); };

  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &DesktopStation::tick);
  // The pedals' changes are queued on their adapters' own threads; their
  // timers run here, on the window thread.
  auto wakeForPedal = [this] {
    QMetaObject::invokeMethod(
        this,
        [this] {
          freshPosition();
          tick();
        },
        Qt::QueuedConnection);
  };
  if (port_) port_->setEventNotifier(wakeForPedal);
  if (pedalInput_) pedalInput_->setEventNotifier(wakeForPedal);

#ifdef HAVE_QUILLON_FORMS
  installForms(st, window_.get(), [](std::string_view item, std::function<void(Station&)> command) {
    setMenuCommand(item, std::move(command));
  });
#endif
#ifdef HAVE_QUILLON_SCRIPTWIN
  if (options_.scriptWindow) {
    ScriptWindow* scripts = installScriptWindow(st, ui_, this);
    service_ = &scripts->service();
    scriptWindow_ = scripts;
    if (!options_.scriptPath.empty()) scripts->openFile(options_.scriptPath);
  }
#endif
  if (service_ == &docs_ && !options_.scriptPath.empty()) {
    std::string error;
    if (auto doc = loadDocumentFile(options_.scriptPath, error))
      docs_.addDocument(std::move(doc));
    else
      warning(ui_, fromUtf8(error));
  }
  installWriterMode();
  armTimers();
}

void DesktopStation::installWriterMode() {
#ifdef HAVE_QUILLON_WRITER
  WriterMode::Hooks hooks;
  // The window repaints while LibreOffice starts; clicks wait for the end.
  hooks.whileWaiting = [] { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 50); };
  hooks.embeddedScriptFile = [this]() -> std::string {
    MemoryDocument* d = service_->active();
    if (!d || d->path.empty()) return {};
    if (d->modified) {
#ifdef HAVE_QUILLON_SCRIPTWIN
      if (auto* scripts = qobject_cast<ScriptWindow*>(scriptWindow_)) {
        if (!scripts->save()) return {};
        return d->path;
      }
#endif
      std::string error;
      if (!saveDocumentFile(*d, d->path, error)) return {};
    }
    return d->path;
  };
  hooks.showEmbedded = [this](bool on) {
    if (scriptWindow_) scriptWindow_->setVisible(on);
  };
  writerMode_ = std::make_unique<WriterMode>(*station_, *service_, hooks);
  setMenuCommand(kWriterMenuItem, [this](Station&) { writerMode_->toggle(); });
#endif
}

DesktopStation::~DesktopStation() {
  timer_.stop();
  if (port_) {
    port_->setEventNotifier(nullptr);
    port_->close();
  }
  if (pedalInput_) {
    pedalInput_->setEventNotifier(nullptr);
    pedalInput_->close();
  }
  ui_.beforePump = nullptr;
  ui_.beforeDialog = nullptr;
  if (window_) {
    window_->afterCommand = nullptr;
    window_->closeRequested = nullptr;
    window_->beforeKey = nullptr;
  }
  // The picture goes before the player that feeds it.
  writerMode_.reset();
  window_.reset();
  station_.reset();
  playerSeam_.reset();
  player_.reset();
}

bool DesktopStation::start(const u16& videoPath) {
  // The entry procedure hands the video on as a command line carries it,
  // in quotation marks, which the opening takes off again.
  const u16 commandLine = videoPath.empty() ? u16() : u"\"" + videoPath + u"\"";
  const bool opened = startStation(*station_, commandLine);
#ifdef HAVE_QUILLON_WRITER
  // The setting is read with the others at the start.
  if (opened && !ended_) writerMode_->applySetting(options_.scriptPath);
#endif
  refresh();
  if (opened && scriptWindow_) arrangeWindows();
  return opened && !ended_;
}

void DesktopStation::arrangeWindows() {
  // A window manager puts its frame round the station some moments after
  // the station shows; the script window is placed once that frame is
  // known, or once it is clear that none comes (a bare X server).
  auto* poll = new QTimer(this);
  poll->setInterval(50);
  connect(poll, &QTimer::timeout, this, [this, poll, tries = 0]() mutable {
    QWindow* w = window_->windowHandle();
    const bool exposed = w && w->isExposed();
    const bool framed = window_->frameGeometry() != window_->geometry();
    if (++tries < 40 && !(exposed && (framed || tries >= 10))) return;
    poll->stop();
    poll->deleteLater();
    if (!ended_ && scriptWindow_) placeBeside(scriptWindow_, window_.get());
  });
  poll->start();
}

void DesktopStation::close() {
  if (ended_) return;
  window_->run([](Station& st) { unloadMainForm(st); });
}

void DesktopStation::endProgram() {
  ended_ = true;
  // Loops that pump find their flags down and unwind; nothing more runs.
  Session& s = station_->s;
  s.g_fsim = s.g_fspot = s.g_fedit = false;
  station_->view.visible = false;
  station_->view.splashVisible = false;
  station_->view.overlays.FormaSub.Visible = false;
  station_->view.overlays.FormaCC.Visible = false;
  station_->view.overlays.Text1.Visible = false;
  window_->refresh();
  timer_.stop();
  if (options_.quitApplication) QCoreApplication::exit(0);
}

void DesktopStation::refresh() {
  if (refreshing_ || !window_) return;
  refreshing_ = true;
  window_->refresh();
  refreshing_ = false;
  armTimers();
}

void DesktopStation::armTimers() {
  if (ended_) return;
  // The next timer due, and at the longest Timer1's interval, so that a
  // pump waiting for events always wakes within one tick.
  const ViewState& v = station_->view;
  const double now = ui_.timeOfDay();
  double next = now + v.Timer1.interval / 1000.0;
  for (const TimerState* t : {&v.Timer1, &v.Timer2, &v.Timer4})
    if (t->enabled) next = std::min(next, t->due);
  const int ms = std::max(0, static_cast<int>(std::ceil((next - now) * 1000.0)));
  timer_.start(ms);
}

void DesktopStation::tick() {
  if (ended_) return;
  fireDueTimers(*station_);
  refresh();
}

// A mark takes the player's position at the press, not the one the last
// tick of the position timer left, which may be most of a tick old (and
// older while the picture is being drawn). The timer would read the same.
void DesktopStation::freshPosition() {
  Session& s = station_->s;
  if (ended_ || !s.g_fVideoRun || !station_->player || !station_->player->isOpen()) return;
  if (s.videoDuration - 0.01 > s.g_dblPosActual)
    s.g_dblPosActual = std::min(station_->player->currentPosition(), s.videoDuration);
}

bool DesktopStation::prepareForPicture() {
  auto* gl = qobject_cast<QOpenGLWidget*>(video_);
  if (!gl) return true;
  window_->refresh();
  QElapsedTimer waited;
  waited.start();
  while (!gl->isValid() && waited.elapsed() < 3000) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  return gl->isValid();
}

}  // namespace quillon
