// What the interchange-format exports and imports of quillon-cli share: the
// output name standing in for the save dialog, form fields set by name, the
// text encoding option, and saving an import's new document.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "cli/command.h"
#include "core/atomic_file.h"
#include "formats/export_frame.h"
#include "core/form_model.h"

namespace quillon::cli {

struct FormatArgs {
  std::string input;   // SCRIPT of an export, IN of an import
  std::string output;  // -o
  std::vector<std::pair<std::string, std::string>> fields;  // --field NAME=VALUE
  TextEncoding encoding = TextEncoding::Windows1252;
};

// What a command reads and writes: a script into a file, a script into a
// new document, or a file into a new document. With --writer a script read
// may be Writer's document in front, and a new document stays in Writer
// unless -o names a file for a copy.
enum class FormatIo { FileExport, DocumentExport, Import };

// Takes -o, --field (when `withFields`) and --encoding (when `withEncoding`)
// and the one positional argument. 0 when fine, otherwise the exit code after
// the message.
int parseFormatArgs(Invocation& inv, FormatArgs& a, bool withFields, bool withEncoding,
                    FormatIo io = FormatIo::FileExport);

// Checks every --field against `form` before the work starts: 0 or 2.
int checkFields(Invocation& inv, const FormModel& form, const FormatArgs& a);
// Sets them as the operator would type them; "\n" in a multi-line box is a
// line break, held as CR LF.
void applyFields(FormModel& form, const FormatArgs& a);

// Runs an export whose frame asks for the file name: -o answers the dialog.
void answerSaveDialog(Invocation& inv, const FormatArgs& a);

// A list export with a settings form: --field (and --encoding where the
// form has one) taken and checked against the form before the work, the
// menu item's command `open` up to the form with -o answering its dialog,
// the fields set as the operator types them, then `press`, the form's
// `CommandProximo`.
template <typename Form>
int runFormExport(Invocation& inv, bool (*open)(Station&, Form&), WriteResult (*press)(Station&, Form&)) {
  constexpr bool withEncoding = requires(Form f) { f.encoding; };
  FormatArgs a;
  if (int rc = parseFormatArgs(inv, a, true, withEncoding)) return rc;
  Form form;
  if (int rc = checkFields(inv, form, a)) return rc;
  if (!inv.loadScript(a.input)) return kExitUsage;
  answerSaveDialog(inv, a);
  if (!open(inv.st, form)) return inv.exitFor(false);
  applyFields(form, a);
  if constexpr (withEncoding) form.encoding = a.encoding;
  return exportExit(inv, press(inv.st, form));
}
// The same as a format's own run, for its registrar.
template <auto open, auto press>
int formExport(Invocation& inv) {
  return runFormExport(inv, open, press);
}

// A command that reads SCRIPT and makes a new document with `make` (the qt
// and unitext exports, the Unicode text import); OUT receives it. When
// `make` made none without a box, `nothingFound` and SCRIPT are the message,
// if it is given.
int runDocumentCommand(Invocation& inv, bool (*make)(Station&), const char* nothingFound = nullptr);

// Readies an import of a file the station opens through its own dialog: takes
// the arguments, checks IN can be read, opens the empty document the import
// attaches to (it then opens its own) and queues IN for the open dialog.
// 0 when fine, otherwise the exit code after the message.
int beginFileImport(Invocation& inv, FormatArgs& a);
// Saves the active document to `path`: 0, or 2 after the message.
int saveActiveDocument(Invocation& inv, const std::string& path);

// Exit code of an export that writes its file itself: 0 when written, 2
// after "cannot write FILE: reason", 1 when it stopped at a box.
int exportExit(Invocation& inv, const WriteResult& result);

}  // namespace quillon::cli
