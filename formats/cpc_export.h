// CPC caption list out: a version line, for CPCC6.78 a comment head, then one
// line per subtitle and a clear line ("^N") wherever the screen goes empty.
#pragma once

#include <string>

#include "core/atomic_file.h"
#include "core/station.h"
#include "core/form_model.h"

namespace quillon {

class FormCPC : public FormModel {
 public:
  FormCPC();
  std::string strarchivoCPC;  // bytes: code page 850 text, 0xB3 separators
  // `cancelarCPC` is the model's `cancelRequested`.
};

// `mnu_sub_cpc`: the export frame, then the form filled and shown.
bool mnuSubCpc(Station& st, FormCPC& form);
void fillFormCPC(Station& st, FormCPC& form);
// `CommandProximo`; written when this press wrote the file, failed after
// the operator was told.
WriteResult commandProximoCPC(Station& st, FormCPC& form);
WriteResult generateCPC(Station& st, FormCPC& form);
void llenarCPC(Station& st, FormCPC& form);
// "0C", the row letter of the position ("E" for one line at position 0,
// otherwise the `Text_vpos` box of the digit), and the style mark.
u16 cpcStyleCode(const FormCPC& form, bool oneLine, char16_t position, char16_t mark);

}  // namespace quillon
