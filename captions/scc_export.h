// Scenarist Closed Caption files (.scc): pop-on captions, each loaded into
// the hidden memory ahead of its cue-in and flipped on screen at the cue-in.
#pragma once

#include <string>
#include <vector>

#include "core/atomic_file.h"
#include "core/station.h"

namespace quillon {

// One data line of the file: its timecode, its words of four hexadecimal
// digits, and the caption it loads (0 for a clearing line).
struct SccLine {
  u16 timecode;
  std::string words;
  int caption = 0;
};

// The data lines of the pop-on file from the scanned captions, in the
// file's order; `progress` shows it in status panel 3.
std::vector<SccLine> sccLines(Station& st, bool progress);

// The file's text from the scanned captions: "Scenarist_SCC V1.0", then a
// line for each burst of bytes, every line followed by an empty one, CR LF.
// Shows the progress in status panel 3.
std::string sccText(Station& st);

// A paint-on variant kept beside the pop-on writer: no clearing line ahead
// of the first caption, a clear for gaps above 0.2 s, loading at the cue-in
// itself. Nothing in the station calls it.
std::string sccWithPaintOn(Station& st);

// `mnu_cc_scc`: scans the captions, warns of captions an encoder will play
// late, asks for the file and writes it.
// Written when it did; a failed write has shown its box.
WriteResult mnu_cc_scc(Station& st);
// The same with the file already chosen, for callers that ask for it
// themselves; the scan has run.
WriteResult writeSccFile(Station& st, const std::string& path);

}  // namespace quillon
