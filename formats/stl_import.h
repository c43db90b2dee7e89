// EBU STL in: every TTI block that is a whole subtitle becomes a tagged block
// of a new script document.
#pragma once

#include <string>
#include <string_view>

#include "core/station.h"

namespace quillon {

// Selection.Paragraphs(1).Range.InsertAfter, then the cursor right over the
// text: how every import writes into its new document.
void insertAtSelection(Station& st, const u16& text);

// The box for a file that is not of the format the operator chose: the
// file's name and what such a file holds.
void tellNotOfFormat(Station& st, const std::string& path, u16v what, u16v expected);

// At least the 1024 bytes of the header, whose disk format code is "STL",
// two digits of frame rate and ".01".
bool isEbuStlImage(std::string_view image);

// `mnu_sub_imp_EBU`: asks for the file, then reads it. False when the
// operator cancelled, the word processor was not there or the file is not
// an EBU STL file.
bool mnuSubImpEBU(Station& st);
// Reads the file image into a new document. False when the bytes could not
// be read (the new document stays empty) or are not an EBU STL file (a box
// names the file, and no document is opened).
bool readEbuStl(Station& st, const std::string& path);
// The tagged script text of an STL image, as `readEbuStl` writes it.
u16 ebuStlToScript(std::string_view image, int fps);

}  // namespace quillon
