// Line-oriented imports into a new tagged script: the {SUB} list, the DOS 850
// list, SRT and the .SUB list from files, and the Unicode text layout from
// the open document.
//
// The readers test for the end of the file before each pass, so a last
// subtitle with no line behind it is dropped, as the station always did.
#pragma once

#include <string>

#include "core/station.h"

namespace quillon {

// Menu handlers: attach, ask for the file, read it. False when they stopped
// before a new document was opened; a file in which not one entry carries
// the format's timing is named in a box and opens none.
bool mnuSubImpSUBL(Station& st);
bool mnuSubImp850(Station& st);
bool mnuSubImpSRT(Station& st);
bool mnuSubImpSUB(Station& st);
// `mnu_sub_impunitxt`: the open document's Unicode text layout into a new
// document. False when no numbered entry was found.
bool mnuSubImpunitxt(Station& st);

// The readers on a file's bytes, writing into the active (new) document.
// They return the number of subtitles written.
int readSubList(Station& st, std::string_view bytes);
int readDos850List(Station& st, std::string_view bytes);
int readSrt(Station& st, std::string_view bytes);
// The .SUB list: -1 after "Format Error 001" or "Format error 002".
int readDotSubList(Station& st, std::string_view bytes);

}  // namespace quillon
