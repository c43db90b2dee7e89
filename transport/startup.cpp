#include "transport/startup.h"

#include "core/media_player.h"
#include "core/pedal_input.h"
#include "core/serial_port.h"
#include "transport/input_pedal.h"
#include "transport/video_commands.h"
#include "transport/video_open.h"

namespace quillon {

namespace {

// Disabled in the window's design until a video is open or a command
// enables them.
constexpr const char* kDisabledAtLoad[] = {
    "mnu_ctlVideo", "mnu_tex_par", "mnu_sub",       "mnu_dub",       "mnu_cc",          "mnu_cc_conv",
    "mnu_herr",     "mnu_pan",     "mnu_sub_exp",   "mnu_iraultblo", "mnu_iramarca1",   "mnu_iramarca2",
    "mnu_iramarca3", "mnu_iramarca4", "mnu_iramarca5", "mnu_iramarca6", "mnu_iramarca7", "mnu_iramarca8",
    "mnu_iramarca9", "mnu_iramarca10"};

constexpr int kSplashSeconds = 3;

}  // namespace

void loadMainForm(Station& st) {
  ViewState& v = st.view;
  v.visible = false;
  for (const char* m : kDisabledAtLoad) v.menu(m).enabled = false;
  v.slVideo.enabled = false;
  v.toolbarEnabled = false;
  v.Timer1.enabled = true;
  v.Timer2.enabled = false;
  v.Timer4.enabled = false;
}

bool startStation(Station& st, const u16& commandLine, const std::string& settingsFile) {
  installTransport(st);
  loadMainForm(st);
  st.s.g_settingsLine = readSettingsLine(settingsFile);
  st.s.options = readStationOptions(optionsPathBeside(settingsFile));
  st.s.cc = true;
  st.s.tctag = true;

  st.view.splashVisible = true;
  waitSeconds(st.ui, kSplashSeconds);
  st.view.splashVisible = false;

  iniciarvariables(st);
  startPedalInput(st);
  st.view.caption = g_appTitle;
  st.view.visible = true;

  abrirvideo(st, commandLine);
  if (st.s.videoFile.empty()) {
    unloadMainForm(st, settingsFile);
    return false;
  }
  return true;
}

void unloadMainForm(Station& st, const std::string& settingsFile) {
  pausevideo(st);
  if (st.player && st.player->isOpen()) {
    st.player->stop();
    st.player->release();
  }
  st.s.g_docAttached = false;
  if (st.port && st.port->isOpen()) st.port->close();
  if (st.pedalInput) st.pedalInput->close();
  // Errors are ignored on the way out: a settings file that cannot be
  // written leaves the old one.
  guardarDefaults(st, settingsFile);
  if (!st.s.options.empty()) writeStationOptions(optionsPathBeside(settingsFile), st.s.options);
  st.view.visible = false;
  if (st.endProgram) st.endProgram(st);
}

}  // namespace quillon
