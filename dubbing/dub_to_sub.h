// `mnu_DUB_SUB`: a dubbing script becomes a subtitle script in place. Each
// long DUB[ tag is rewritten as a SUB[ tag of the same times without the
// character name; the roster is cleared.
#pragma once

#include "core/station.h"

namespace quillon {

// The number of tags converted with both times readable.
int mnu_DUB_SUB(Station& st);

}  // namespace quillon
