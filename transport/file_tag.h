// The 18-character tag at the end of a video that is not QuickTime: the
// video standard and the timecode window, written by whatever prepared the
// video and only ever read here.
//
//   1      "C" = 24 fps, "P" = 25, anything else 30
//   2      unused
//   3-10   start of the timecode window, HHMMSSFF
//   11-18  end of the timecode window, HHMMSSFF
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/text.h"

namespace quillon {

struct Session;
struct ViewState;

// One delimited text field as a sequential-file read takes it: blanks
// before it are skipped; a field opening with '"' runs to the next '"';
// any other runs to a comma or a line end, trailing blanks dropped.
std::string delimitedField(std::string_view bytes);

// The field read from byte position file length - 20 (1-based), first 18
// characters kept. nullopt when the file cannot be opened; empty when it is
// too short or holds nothing there.
std::optional<u16> readFileTag(const std::string& path);

// Frames per second of the tag's first character.
int16_t fileTagFps(u16v tag);

// The tag decides: TCInitial and TCFinal from characters 3-10 and 11-18,
// TCBase from TCInitial at the frame rate standing before, then g_fps and the
// check marks of mnu_CINE, mnu_PAL and mnu_NTSC from character 1. The window
// itself is set later, once the duration is known, from characters 3-18.
void applyFileTag(Session& s, ViewState& view, u16v tag);

}  // namespace quillon
