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

// `mnu_sub_imp_EBU`: asks for the file, then reads it. False when the
// operator cancelled or the word processor was not there.
bool mnuSubImpEBU(Station& st);
// Reads the file image into a new document. False when the bytes could not
// be read (the new document stays empty).
bool readEbuStl(Station& st, const std::string& path);
// The tagged script text of an STL image, as `readEbuStl` writes it.
u16 ebuStlToScript(std::string_view image, int fps);

}  // namespace quillon
