// .SUB list out: code page 850 text lines, a timing line behind each
// subtitle, and the starred trailer sections of `FormSUB`.
#pragma once

#include <string>

#include "core/atomic_file.h"
#include "core/station.h"
#include "core/form_model.h"

namespace quillon {

class FormSUB : public FormModel {
 public:
  FormSUB();
  std::string strarchivoSUB;  // bytes in code page 850
  // `cancelarSUB` is the model's `cancelRequested`.

 private:
  static u16 formatSample();
};

// `mnu_sub_sub`: the export frame, then the form shown.
bool mnuSubSub(Station& st, FormSUB& form);
// `CommandProximo`; written when this press wrote the file, failed after
// the operator was told.
WriteResult commandProximoSUB(Station& st, FormSUB& form);
WriteResult generateSUB(Station& st, FormSUB& form);
// The subtitle blocks, "*END*" and its timing line.
void llenarSUB(Station& st, FormSUB& form);

}  // namespace quillon
