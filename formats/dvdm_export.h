// DVD Maestro subtitle list out: a key head from `FormDVDMaestro`, then one
// line per subtitle with its times and its text on one line.
#pragma once

#include <string>

#include "core/atomic_file.h"
#include "core/station.h"
#include "formats/export_frame.h"
#include "core/form_model.h"

namespace quillon {

class FormDVDMaestro : public FormModel {
 public:
  FormDVDMaestro();
  u16 strarchivo;
  // `cancelarDVDM` is the model's `cancelRequested`.
  TextEncoding encoding = TextEncoding::Windows1252;  // of the written file
};

// `mnu_sub_dvdm`: the export frame, then the form shown. False when the frame
// stopped.
bool mnuSubDvdm(Station& st, FormDVDMaestro& form);
// `CommandProximo`; written when this press wrote the file, failed after
// the operator was told.
WriteResult commandProximoDVDM(Station& st, FormDVDMaestro& form);
WriteResult generateDVDM(Station& st, FormDVDMaestro& form);
void llenarDVDM(Station& st, FormDVDMaestro& form);

}  // namespace quillon
