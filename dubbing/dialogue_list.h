// The dialogue list (`mnu_dub_out`): one row per DUB[ entry with its
// character, times, duration and text, then each character's count.
#pragma once

#include <optional>

#include "core/station.h"

namespace quillon {

// The report from the selection's tags, or the whole script's when the
// selection holds none; nullopt when neither scan succeeds.
std::optional<u16> dialogueList(Station& st);

// `mnu_dub_out`: the report in a box and on the clipboard.
void mnu_dub_out(Station& st);

}  // namespace quillon
