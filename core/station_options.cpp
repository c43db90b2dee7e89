#include "core/station_options.h"

#include "core/atomic_file.h"

namespace quillon {

std::string optionsPathBeside(const std::string& settingsPath) {
  auto slash = settingsPath.rfind('/');
  std::string dir = slash == std::string::npos ? std::string(".") : settingsPath.substr(0, slash);
  return dir + "/options.conf";
}

StationOptions readStationOptions(const std::string& path) {
  StationOptions out;
  std::string all;
  if (!readWholeFile(path, all)) return out;
  size_t at = 0;
  while (at < all.size()) {
    size_t end = all.find('\n', at);
    if (end == std::string::npos) end = all.size();
    std::string line = all.substr(at, end - at);
    at = end + 1;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    auto eq = line.find('=');
    if (eq == std::string::npos || eq == 0) continue;
    out[line.substr(0, eq)] = line.substr(eq + 1);
  }
  return out;
}

bool writeStationOptions(const std::string& path, const StationOptions& options, std::string* error) {
  std::string body;
  for (const auto& [key, value] : options) body += key + "=" + value + "\n";
  return writeFile(path, body).asFlag(error);
}

}  // namespace quillon
