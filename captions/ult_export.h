// Ultech caption encoder files (.ult): a fixed header, then one record for
// each burst of caption bytes (no parity) with the timecode it goes out at.
#pragma once

#include <string>

#include "core/atomic_file.h"
#include "core/form_model.h"
#include "core/station.h"

namespace quillon {

// The settings form `FormCCult`. Only `ProgramInfo` bears on the file (its
// text goes out ahead of the records); the header is fixed whatever the
// other fields say. Its combos offer closed lists.
class FormCCult : public FormModel {
 public:
  FormCCult();  // fields at their defaults
  u16& programInfo() { return (*this)["ProgramInfo"]; }
};

// The 232 header bytes with the record count in place.
std::string ultHeader(uint32_t recordCount);

// Appends every record to `programInfo`, the program info's bytes, and
// gives the record count as four little-endian bytes.
std::string llenarULT(Station& st, std::string& programInfo);

// `mnu_cc_ult`: scans the captions, asks for the file (kept in
// g_ULTFileName) and shows the form. False when it stopped before the form.
bool mnu_cc_ult(Station& st, FormCCult& form);
// The form's `CommandProximo`: with "OK" it writes the file, with "Cancel"
// (pressed while writing) it stops the writing. Written when a file was
// written; a failed write has shown its box.
WriteResult formCCultProximo(Station& st, FormCCult& form);
// The run `CommandProximo` starts: the file, written in steps that each
// look at the cancel flag.
WriteResult writeUlt(Station& st, FormCCult& form);

}  // namespace quillon
