// The timing tags in the script's text, SUB[, DUB[ and CAP[ (their layouts
// in script/timing_tag.h): the scanners that read them back into the scan
// table, and the writers of subtitle tags from seconds.
#pragma once

#include <cstdint>

#include "core/station.h"
#include "script/timing_tag.h"

namespace quillon {

// What a scan reads; the numbers are the scanners' own mode numbers.
enum class ScanMode : int {
  WholeScript = 0,          // the document's whole content
  Selection = 1,            // the selected text only
  FromCurrentPosition = 2,  // the whole content, entries whose cue-in lies before the position dropped
};

// Reads SUB[ and DUB[ tags into the scan table. True when at least one entry
// was read and no fault stopped the scan. The rule checks run inside through
// Station::checkSubtitle.
bool scanSubtitles(Station& st, ScanMode mode);

// Reads CAP[ tags with up to four rows each into the scan table and
// captionRows; the caption checks run through Station::checkCaption.
bool scanCaptions(Station& st, ScanMode mode);

// The roster place of a character name met in a dubbing tag: found, or
// stored at the first free place. 0 with the box when the roster is full.
int lookUpCharacter(Station& st, const u16& name);

// "SUB[" & last character of the position & alignment & style & " " & in &
// ">" & out & "]" & CR.
u16 subtitleTag(int position, char16_t alignment, char16_t style, double cueIn, double cueOut, int fps);
// The text-less form, style N and an empty paragraph behind.
u16 textlessSubtitleTag(int position, char16_t alignment, double cueIn, double cueOut, int fps);
// Writes a tag in front of the paragraph under the selection.
void insertSubtitleTag(Station& st, const u16& tag);

// "SUB[^?^?^? " & cue-in pattern & ">" & cue-out pattern & "]": a whole tag
// whatever its attributes and frame separators.
u16 wholeTagPattern(const u16& cueIn, const u16& cueOut);
// Cue-in pattern ">" cue-out pattern "]", the tag without its head.
u16 timesPattern(const u16& cueIn, const u16& cueOut);

}  // namespace quillon
