// EBU STL in: every TTI block that is a whole subtitle becomes a tagged block
// of a new script document.
#pragma once

#include <string>
#include <string_view>

#include "core/station.h"

namespace quillon {

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
