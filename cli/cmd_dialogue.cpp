// quillon-cli dialogue: the dialogue list of a dubbing script.
#include <ostream>

#include "cli/command.h"
#include "dubbing/dialogue_list.h"

namespace quillon::cli {

namespace {

int runDialogue(Invocation& inv) {
  if (int rc = inv.loadOneScript("dialogue")) return rc;
  auto report = dialogueList(inv.st);
  if (!report) {
    if (inv.ui.boxesShown == 0) inv.err << "quillon-cli: " << inv.args[0] << " holds no timed entries\n";
    return kExitStopped;
  }
  inv.out << reportText(*report) << '\n';
  return kExitOk;
}

const CommandRegistrar reg({"dialogue", "dialogue [common options] SCRIPT",
                            "Print the dialogue list: one row per DUB[ entry (number, character, cue-in,\n"
                            "cue-out, duration, dialog), then each character's count and the total.",
                            runDialogue});

}  // namespace
}  // namespace quillon::cli
