// quillon-cli check: the subtitle rule checks over the whole script, or the
// caption checks and the SCC timing of the captions.
#include <ostream>

#include "captions/scc_preflight.h"
#include "cli/command.h"
#include "script/tag_grammar.h"

namespace quillon::cli {

namespace {

int runCheck(Invocation& inv) {
  const bool captions = inv.takeFlag("--captions");
  if (int rc = inv.loadOneScript("check")) return rc;
  Station& st = inv.st;
  st.s.checksDisabled = false;
  const bool ok = captions ? scanCaptions(st, ScanMode::WholeScript) : scanSubtitles(st, ScanMode::WholeScript);
  const int boxes = inv.ui.boxesShown;
  // Late captions are warnings: they do not make the check fail.
  const std::vector<LateCaption> late = captions && ok ? lateSccCaptions(st) : std::vector<LateCaption>{};
  for (const LateCaption& c : late)
    inv.out << "warning: caption at " << toUtf8(c.cueIn) << " comes on " << c.frames
            << (c.frames == 1 ? " frame" : " frames") << " late on an SCC encoder\n";
  inv.out << "checked " << (ok ? st.s.scan.count() : 0) << (captions ? " captions: " : " entries: ")
          << (boxes == 0 ? std::string("no rule broken") : std::to_string(boxes) + (boxes == 1 ? " box" : " boxes"));
  if (!late.empty()) inv.out << ", " << late.size() << " late on an SCC encoder";
  inv.out << '\n';
  return boxes == 0 ? kExitOk : kExitStopped;
}

const CommandRegistrar reg({"check", "check [common options] [--captions] SCRIPT",
                            "Scan the script with the subtitle rule checks on; each broken rule prints its box.\n"
                            "--captions: the caption checks, then a warning for each caption an SCC encoder,\n"
                            "sending one word a frame, would show late.\n"
                            "Exit 0 when no box fired, 1 when any did (--answer no stops at the first).",
                            runCheck});

}  // namespace
}  // namespace quillon::cli
