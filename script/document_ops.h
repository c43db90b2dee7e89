// The station's own wrappers over the document service: attaching to the
// script, its four searches and its one replacement, the timecode insertion.
#pragma once

#include "core/station.h"
#include "script/document_service.h"

namespace quillon {

// Every command that touches the script starts here; false after the
// warning when there is no open document.
bool attachDocument(Station& st);

// Whole document searched from the top; one replacement; the word
// processor's undo list is emptied. True when the selection afterwards
// equals `findText`.
bool replaceInDocument(Station& st, const u16& findText, const u16& replaceText);
// From the selection's start on. True when the selection afterwards equals
// `findText` (so a wildcard search that finds its tag still reports false).
bool findNext(Station& st, const u16& findText);
bool findFromTop(Station& st, const u16& findText);
// Cursor to the tag holding this cue-in / cue-out, whatever frame separator
// it was written with. Callers use them only to move the cursor.
bool findCueIn(Station& st, const u16& tc);
bool findCueOut(Station& st, const u16& tc);
// Left(tc,8) & "^?" & Right(tc,2): a timecode matching any frame separator.
u16 tcSearchPattern(const u16& tc);

// LabTimecode's text behind the selection, the cursor over it, and the same
// text on the clipboard.
void insertCurrentTC(Station& st);

}  // namespace quillon
