// quillon-cli's commands and the contract they share: --fps, --settings,
// --param, --answer and --help on every command; exit 0 when the work was
// done, 1 when it stopped at a box or a conversion gave -1, 2 for usage and
// file errors.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "cli/console_ui.h"
#include "core/station.h"
#include "script/memory_document.h"

namespace quillon::cli {

inline constexpr int kExitOk = 0;
inline constexpr int kExitStopped = 1;
inline constexpr int kExitUsage = 2;

struct Invocation {
  Invocation(std::ostream& out_, std::ostream& err_);

  std::vector<std::string> args;  // the command's own words, common options taken out
  // --writer: the UNO connection of the LibreOffice Writer holding the script.
  std::string writerConnection;
  std::shared_ptr<DocumentService> writer;
  bool help = false;
  std::ostream& out;
  std::ostream& err;
  ConsoleUi ui;
  MemoryDocumentService docs;
  Station st;

  // "quillon-cli: " + message on one line; returns 2.
  int fail(const std::string& message);
  // Loads SCRIPT as the active document (with --writer: the document open
  // in Writer whose file it is, Writer's own when empty); false after the
  // message.
  bool loadScript(const std::string& path);
  bool inWriter() const { return !writerConnection.empty(); }
  // Whether the command got its `n` positional words; with --writer the
  // last SCRIPT may be left out, for Writer's document in front.
  bool scriptArgs(size_t n);
  // A command that takes no other option and one SCRIPT: that SCRIPT loaded.
  // 0, or the exit code after the message.
  int loadOneScript(const char* command);
  // 0 when the work went through, 1 when a box stopped it.
  int exitFor(bool ok) const;
  // Takes "--name VALUE" or "--name=VALUE" out of args.
  bool takeOption(const std::string& name, std::string& value, std::string& error);
  bool takeFlag(const std::string& name);
  // Anything still starting with "--" is unknown to the command.
  bool rejectUnknownOptions(std::string& error) const;
};

struct CommandSpec {
  const char* name;
  const char* usage;    // lines after "usage: "
  const char* summary;  // one line
  int (*run)(Invocation&);
  bool ownHelp = false;  // run() answers --help itself (commands with sub-words)
};

// Commands register themselves from their own files.
struct CommandRegistrar {
  explicit CommandRegistrar(const CommandSpec& spec);
};
const std::vector<CommandSpec>& commands();

// Seconds as the CLI prints them: six decimals, -1 as "-1".
std::string secondsText(double seconds);
// A report of the station in UTF-8, its paragraph marks as line ends.
std::string reportText(const u16& text);

}  // namespace quillon::cli
