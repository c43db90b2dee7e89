// quillon-cli dialogue: the dialogue list of a dubbing script.
#include <ostream>

#include "cli/command.h"
#include "dubbing/dialogue_list.h"

namespace quillon::cli {

namespace {

int runDialogue(Invocation& inv) {
  std::string error;
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (!inv.scriptArgs(1)) return inv.fail("dialogue wants one SCRIPT (see dialogue --help)");
  if (!inv.loadScript(inv.args[0])) return kExitUsage;
  auto report = dialogueList(inv.st);
  if (!report) {
    if (inv.ui.boxesShown == 0) inv.err << "quillon-cli: " << inv.args[0] << " holds no timed entries\n";
    return kExitStopped;
  }
  std::string text = toUtf8(*report);
  for (char& c : text)
    if (c == '\r') c = '\n';
  inv.out << text << '\n';
  return kExitOk;
}

const CommandRegistrar reg({"dialogue", "dialogue [common options] SCRIPT",
                            "Print the dialogue list: one row per DUB[ entry (number, character, cue-in,\n"
                            "cue-out, duration, dialog), then each character's count and the total.",
                            runDialogue});

}  // namespace
}  // namespace quillon::cli
