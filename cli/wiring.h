// Connects the behaviour each logic folder owns (rule checks, caption
// checks, document formats) to a station before a command runs.
#pragma once

#include "core/station.h"

namespace quillon::cli {

void wireStation(Station& st);

}  // namespace quillon::cli
