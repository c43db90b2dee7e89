// The one settings line that outlives a session, `defaults.dat`.
#pragma once

#include <string>

#include "core/session.h"

namespace quillon {

struct Station;

// $QUILLON_CONFIG_DIR, else $XDG_CONFIG_HOME/quillon, else ~/.config/quillon.
std::string configDir();
std::string defaultsPath();

// The first line of the file without its line end; empty when missing.
std::string readSettingsLine(const std::string& path);

// Fields from a settings line into the session. A line whose first column is
// neither "T" nor "F" is not trusted and every field takes its default.
void applySettingsLine(Session& s, const std::string& line);

// The 47 columns from the session's fields.
std::string buildSettingsLine(const Session& s);

// The session's start values, the settings applied, check marks and status
// panels set, the pedal port opened.
void iniciarvariables(Station& st);

// The status panels that show the options, with their tips: 3 the reading
// speed, 4 the characters per row, 5 the jump option, 7 the reading speed
// check.
void showReadingSpeedPanel(Station& st);
void showMaxCharsPanel(Station& st);
void showJumpPanel(Station& st);
void showReadingSpeedCheckPanel(Station& st);

// Rebuilds the settings line and writes it atomically; false when the file
// could not be written (the station says nothing then).
bool guardarDefaults(Station& st, const std::string& path, std::string* error = nullptr);

}  // namespace quillon
