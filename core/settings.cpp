#include "core/settings.h"

#include <cstdlib>
#include <sys/stat.h>

#include "core/atomic_file.h"
#include "core/serial_port.h"
#include "core/station.h"

namespace quillon {

std::string configDir() {
  if (const char* d = std::getenv("QUILLON_CONFIG_DIR"); d && *d) return d;
  if (const char* x = std::getenv("XDG_CONFIG_HOME"); x && *x) return std::string(x) + "/quillon";
  const char* home = std::getenv("HOME");
  return std::string(home && *home ? home : ".") + "/.config/quillon";
}

std::string defaultsPath() { return configDir() + "/defaults.dat"; }

std::string readSettingsLine(const std::string& path) {
  std::string all;
  if (!readWholeFile(path, all)) return {};
  auto end = all.find_first_of("\r\n");
  return end == std::string::npos ? all : all.substr(0, end);
}

namespace {

std::string col(const std::string& line, size_t col1, size_t width) {
  if (col1 - 1 >= line.size()) return {};
  return line.substr(col1 - 1, width);
}

bool flagAt(const std::string& line, size_t col1) { return col(line, col1, 1) == "T"; }
double numberAt(const std::string& line, size_t col1, size_t width) { return leadingNumber(col(line, col1, width)); }

// The line's flags, "T" or "F" a column each, and the check mark that shows
// each one on the menus. Column 2, between the first two, is the audio track.
struct FlagSetting {
  bool Session::*field;
  size_t column;
  const char* menu;
};
constexpr FlagSetting kFlagSettings[] = {
    {&Session::muteOn, 1, nullptr},
    {&Session::dub_voz_on, 3, nullptr},
    {&Session::dub_dialogos, 4, "mnu_dub_opc_dia"},
    {&Session::actraGuidelines, 5, "mnu_herr_opt_ACTRA"},
    {&Session::cueInOnly, 6, "mnu_dub_opc_inonly"},
    {&Session::switchToWordProcessor, 7, "mnu_dub_opc_switch"},
    {&Session::characterWindow, 8, "mnu_dub_opc_chr"},
    {&Session::readingSpeedCheck, 9, "mnu_sub_opc_chk"},
    {&Session::colourFeedback, 10, "mnu_sub_opc_col"},
    {&Session::sequentialNumbering, 11, "mnu_sub_opc_seq"},
    {&Session::minimiseSubtitleWindow, 12, "mnu_sub_opc_mtx"},
    {&Session::jumpToNextBlock, 13, "mnu_sim_con"},
    {&Session::inSituOffset, 14, "mnu_situ_off"},
    {&Session::timecodeInClipboard, 15, "mnu_opc_tcclip"},
    {&Session::followSimulation, 16, "mnu_sim_follow"},
};

// The line of the defaults, which a line that cannot be trusted reads as.
const std::string kDefaultSettingsLine = "FRTFFFTTFFFFFTFT14002500320510.2501.0006.000.30";

// "00" followed by the number's text, last two characters.
std::string twoDigits(double v) {
  std::string t = "00" + toUtf8(numberText(v));
  return t.substr(t.size() - 2);
}

}  // namespace

void applySettingsLine(Session& s, const std::string& line) {
  if (line.empty() || (line[0] != 'T' && line[0] != 'F')) {
    applySettingsLine(s, kDefaultSettingsLine);
    return;
  }
  for (const FlagSetting& f : kFlagSettings) s.*f.field = flagAt(line, f.column);
  std::string track = col(line, 2, 1);
  // "T"/"F" in column 2 is a line of the earlier layout.
  if (track == "T" || track == "F" || track.empty())
    s.audioTrack = u'R';
  else
    s.audioTrack = static_cast<unsigned char>(track[0]);
  s.readingSpeed = numberAt(line, 17, 2);
  s.minInterleave = static_cast<int16_t>(numberAt(line, 19, 2));
  s.fastThreshold = numberAt(line, 21, 2);
  s.slowThreshold = numberAt(line, 23, 2);
  s.maxCharsRow = static_cast<int16_t>(numberAt(line, 25, 2));
  s.footpedaljump = numberAt(line, 27, 2);
  s.commPort = static_cast<int16_t>(numberAt(line, 29, 1));
  s.slowRate = numberAt(line, 30, 4);
  s.minOnAir1 = numberAt(line, 34, 5);
  s.maxOnAir = numberAt(line, 39, 5);
  s.delay = numberAt(line, 44, 4);
}

std::string buildSettingsLine(const Session& s) {
  std::string l;
  for (const FlagSetting& f : kFlagSettings) l += s.*f.field ? 'T' : 'F';
  // The audio track goes between the first two flags.
  l.insert(1, 1, s.audioTrack > 0 && s.audioTrack < 128 ? static_cast<char>(s.audioTrack) : 'R');
  l += twoDigits(s.readingSpeed);
  l += twoDigits(s.minInterleave);
  l += twoDigits(s.fastThreshold);
  l += twoDigits(s.slowThreshold);
  l += twoDigits(s.maxCharsRow);
  l += twoDigits(s.footpedaljump);
  l += toUtf8(numberText(s.commPort));
  l += formatNumber8(s.slowRate, "0.00");
  l += formatNumber8(s.minOnAir1, "00.00");
  l += formatNumber8(s.maxOnAir, "00.00");
  l += formatNumber8(s.delay, "0.00");
  return l;
}

void iniciarvariables(Station& st) {
  Session& s = st.s;
  ViewState& v = st.view;
  s.tcStart = s.tcEnd = 0;
  s.timer1Interval = 33;
  s.timer2Interval = 500;
  v.Timer1.interval = s.timer1Interval;
  v.Timer2.interval = s.timer2Interval;
  s.scan.subtitleCount = 0;
  s.characterCount = 0;

  applySettingsLine(s, s.g_settingsLine);
  s.minOnAir2 = 0;
  if (st.trackCommand) st.trackCommand(st, s.audioTrack);

  for (const FlagSetting& f : kFlagSettings)
    if (f.menu) v.menu(f.menu).checked = s.*f.field;
  v.menu("mnu_sub_opc_dis").checked = false;
  s.checksDisabled = false;

  showReadingSpeedCheckPanel(st);
  showJumpPanel(st);
  showReadingSpeedPanel(st);
  showMaxCharsPanel(st);

  v.menu("mnu_cc").enabled = true;
  v.menu("mnu_cc_conv").enabled = true;
  v.menu("mnu_sub_exp").enabled = true;

  s.outnextin = false;
  s.nextSeqNumber = 1;
  s.lastfootpedalevent = 0;

  // A missing pedal must not disturb the start: the error is ignored.
  if (st.port) st.port->open(s.commPort);

  s.sessionStartTime = st.ui.timeOfDay();
}

void showReadingSpeedPanel(Station& st) {
  const u16 v = formatNumber(st.s.readingSpeed, "00");
  st.view.setPanel(3, v, u"Reading speed = " + v + u" characters per second.");
}

void showMaxCharsPanel(Station& st) {
  const u16 v = formatNumber(st.s.maxCharsRow, "00");
  st.view.setPanel(4, v, u"Max chars per line = " + v);
}

void showJumpPanel(Station& st) {
  StatusPanelState& p = st.view.panel(5);
  p.enabled = st.s.jumpToNextBlock;
  p.toolTip = st.s.jumpToNextBlock ? u"Jump option enabled." : u"Jump option disabled.";
}

void showReadingSpeedCheckPanel(Station& st) {
  StatusPanelState& p = st.view.panel(7);
  p.enabled = st.s.readingSpeedCheck;
  p.toolTip = st.s.readingSpeedCheck ? u"Reading speed check enabled." : u"Reading speed check disabled.";
}

bool guardarDefaults(Station& st, const std::string& path, std::string* error) {
  st.s.g_settingsLine = buildSettingsLine(st.s);
  auto slash = path.rfind('/');
  if (slash != std::string::npos && slash > 0) {
    // Create the configuration folder on first use, parents included.
    std::string dir = path.substr(0, slash);
    for (size_t p = 1; p <= dir.size(); ++p)
      if (p == dir.size() || dir[p] == '/') ::mkdir(dir.substr(0, p).c_str(), 0755);
  }
  return writeFile(path, st.s.g_settingsLine + "\n").asFlag(error);
}

}  // namespace quillon
