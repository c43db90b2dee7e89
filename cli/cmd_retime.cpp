// quillon-cli retime: the whole script moved by an offset or carried between
// 25 and 30 frames per second, in place or into a new document.
#include <ostream>

#include "cli/command.h"
#include "cli/script_output.h"
#include "subtitling/retiming.h"

namespace quillon::cli {

namespace {

int runRetime(Invocation& inv) {
  std::string offset, out, error;
  const bool hasOffset = inv.takeOption("--offset", offset, error);
  if (!error.empty()) return inv.fail(error);
  const bool hasOut = inv.takeOption("-o", out, error);
  if (!error.empty()) return inv.fail(error);
  const bool palToNtsc = inv.takeFlag("--pal-to-ntsc");
  const bool ntscToPal = inv.takeFlag("--ntsc-to-pal");
  const bool newDocument = inv.takeFlag("--new-document");
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (hasOffset + palToNtsc + ntscToPal != 1)
    return inv.fail("retime wants one of --offset TIMECODE, --pal-to-ntsc, --ntsc-to-pal");
  if ((!hasOut || out.empty()) && !inv.inWriter()) return inv.fail("retime wants -o OUT");
  if (!inv.scriptArgs(1)) return inv.fail("retime wants one SCRIPT (see retime --help)");
  if (!inv.loadScript(inv.args[0])) return kExitUsage;
  Station& st = inv.st;
  st.s.inSituOffset = !newDocument;
  if (hasOffset) {
    // The offset command asks for the new cue-in of the first entry.
    inv.ui.inputs.push_back(fromUtf8(offset));
    mnu_tex_off(st);
  } else if (palToNtsc) {
    mnu_tex_PALtoNTSC(st);
  } else {
    mnu_tex_NTSCtoPAL(st);
  }
  if (inv.ui.answeredNo) return kExitStopped;
  if (st.s.scan.subtitleCount <= 0) {
    if (inv.ui.boxesShown == 0) inv.err << "quillon-cli: no timing tags to move in " << inv.args[0] << '\n';
    return kExitStopped;
  }
  if (!saveScriptTo(inv, out)) return kExitUsage;
  return inv.exitFor(true);
}

const CommandRegistrar reg(
    {"retime",
     "retime [common options] (--offset TIMECODE | --pal-to-ntsc | --ntsc-to-pal) [--new-document] SCRIPT -o OUT",
     "Move every tag so that the first entry starts at TIMECODE, or carry the tags from 25 to 30 fps\n"
     "(or back). In place by default; --new-document writes the tags anew into a fresh document.",
     runRetime});

}  // namespace
}  // namespace quillon::cli
