// Exports without a settings form: SAMI, SBV and SSA files, and QuickTime
// text and Unicode text as new documents. Their times, but for the Unicode
// layout, are player positions (`transformadainversa`).
#pragma once

#include "core/atomic_file.h"
#include "core/station.h"
#include "formats/export_frame.h"

namespace quillon {

// `mnu_sub_sami`, `mnu_sub_sbv`, `mnu_sub_ssa`: the export frame, the file,
// then "... file created.", or the box of a failed write instead.
WriteResult mnuSubSami(Station& st, TextEncoding enc = TextEncoding::Windows1252);
WriteResult mnuSubSbv(Station& st, TextEncoding enc = TextEncoding::Windows1252);
WriteResult mnuSubSsa(Station& st, TextEncoding enc = TextEncoding::Windows1252);

// The file texts as the three exports write them, from the scan table.
u16 samiText(const Station& st);
u16 sbvText(const Station& st);
u16 ssaText(const Station& st);

// `mnu_sub_qt`, `mnu_sub_unitext`: the scan, then a new document. False when
// the scan stopped them.
bool mnuSubQt(Station& st);
bool mnuSubUnitext(Station& st);

}  // namespace quillon
