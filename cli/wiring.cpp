#include "cli/wiring.h"

namespace quillon::cli {

void wireStation(Station& st) {
  (void)st;
  // One line per folder that installs behaviour into the station.
}

}  // namespace quillon::cli
