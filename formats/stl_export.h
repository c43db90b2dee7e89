// EBU STL (Tech 3264) out: the `FormaSTL` settings form, its code tables, the
// GSI block, page 0 and one TTI block per subtitle.
#pragma once

#include <string>

#include "core/atomic_file.h"
#include "core/station.h"
#include "core/form_model.h"

namespace quillon {

class FormaSTL : public FormModel {
 public:
  FormaSTL();
  std::string strarchivo;  // the file image, one char per byte
  u16 sublanguage;         // language of page 0, set only by three languages
  // `cancelarSTL` is the model's `cancelRequested`.
};

// GSI code tables: the combo's text to the field's characters.
u16 cpnCode(const u16& combo);
u16 dfcCode(const u16& combo);
u16 dscCode(const u16& combo);
u16 cctCode(const u16& combo);
// English, Portuguese and Spanish also set `sublanguage`.
u16 lcCode(const u16& combo, u16& sublanguage);
u16 coCode(const u16& combo);

// `mnu_sub_ebu`: the export frame, then the form filled and shown. False
// when the frame stopped.
bool mnuSubEbu(Station& st, FormaSTL& form);
// Fills the form from the scan, the main window and the document properties.
void fillFormaSTL(Station& st, FormaSTL& form);
// `CommandProximo`: "OK" runs the generator, "Cancel" stops a run. Written
// when this press wrote the file.
WriteResult commandProximoSTL(Station& st, FormaSTL& form);
// The generator: written, stopped, or failed after the operator's box.
WriteResult generateSTL(Station& st, FormaSTL& form);
// Appends page 0 and every subtitle's TTI block to `strarchivo`.
void llenarTTI(Station& st, FormaSTL& form);

// Document property text "YYYY-MM-DD ..." in a date picture of Y, M and D
// letters ("YYMMDD", "MMDDYYYY"); other text comes back unchanged.
u16 formatPropertyDate(const u16& value, std::string_view picture);

}  // namespace quillon
