// The station's start and its one way out.
#pragma once

#include <string>

#include "core/settings.h"
#include "core/station.h"

namespace quillon {

// The main window as it is loaded, before anything is known: every
// command that needs a video disabled, the markers unset.
void loadMainForm(Station& st);

// The entry procedure: load the window, read the settings line, the splash
// for three seconds, iniciarvariables, show the window, open the video of
// the command line (or ask for one). Without a video the station closes at
// once through unloadMainForm and this returns false.
bool startStation(Station& st, const u16& commandLine, const std::string& settingsFile = defaultsPath());

// The closing path behind mnu_FileExit and the close box: pause, release
// the video, let go of the word processor (which lives on), close the
// pedal's port, rewrite the settings line, end.
void unloadMainForm(Station& st, const std::string& settingsFile = defaultsPath());

}  // namespace quillon
