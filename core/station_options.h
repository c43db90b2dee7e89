// Choices the 47-column settings line has no room for (the pedal's device,
// where the script is held, ...), kept in `options.conf` beside
// `defaults.dat`, one `key=value` a line, so the settings line keeps its
// layout. Unknown keys are kept and written back as they were read.
#pragma once

#include <map>
#include <string>

namespace quillon {

using StationOptions = std::map<std::string, std::string>;

// `options.conf` in the folder of the settings file `settingsPath`.
std::string optionsPathBeside(const std::string& settingsPath);

// Missing or unreadable gives no options; lines without '=' and comment
// lines ('#') are skipped.
StationOptions readStationOptions(const std::string& path);

// Written whole and atomically; false with a reason when it could not be.
bool writeStationOptions(const std::string& path, const StationOptions& options,
                         std::string* error = nullptr);

}  // namespace quillon
