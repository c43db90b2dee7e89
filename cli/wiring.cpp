#include "cli/wiring.h"

#include "captions/caption_checks.h"
#include "script/files/office_formats.h"
#include "subtitling/rule_checks.h"

namespace quillon::cli {

void wireStation(Station& st) {
  (void)st;
  // One line per folder that installs behaviour into the station.
  registerOfficeDocumentFormats();
  installCaptionChecks(st);
  installSubtitleChecks(st);
}

}  // namespace quillon::cli
