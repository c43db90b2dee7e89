#include "cli/export_support.h"

#include <filesystem>

#include "cli/script_output.h"
#include "core/atomic_file.h"
#include "script/document_files.h"

namespace quillon::cli {

int parseFormatArgs(Invocation& inv, FormatArgs& a, bool withFields, bool withEncoding, FormatIo io) {
  std::string error, value;
  if (inv.takeOption("-o", a.output, error) && a.output.empty()) return inv.fail("-o wants a file name");
  if (!error.empty()) return inv.fail(error);
  while (withFields && inv.takeOption("--field", value, error)) {
    auto eq = value.find('=');
    if (eq == std::string::npos || eq == 0) return inv.fail("--field wants NAME=VALUE, got '" + value + "'");
    a.fields.emplace_back(value.substr(0, eq), value.substr(eq + 1));
  }
  if (!error.empty()) return inv.fail(error);
  if (withEncoding && inv.takeOption("--encoding", value, error)) {
    if (value == "utf-8" || value == "UTF-8" || value == "utf8") a.encoding = TextEncoding::Utf8;
    else if (value == "windows-1252" || value == "cp1252") a.encoding = TextEncoding::Windows1252;
    else return inv.fail("--encoding takes utf-8 or windows-1252, got '" + value + "'");
  }
  if (!error.empty()) return inv.fail(error);
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  const bool outputStaysInWriter = inv.inWriter() && io != FormatIo::FileExport;
  if (a.output.empty() && !outputStaysInWriter) return inv.fail("-o OUT is missing");
  const bool haveInput = io == FormatIo::Import ? inv.args.size() == 1 : inv.scriptArgs(1);
  if (!haveInput) return inv.fail("wants one input file and -o OUT (see --help)");
  a.input = inv.args[0];
  return 0;
}

int checkFields(Invocation& inv, const FormModel& form, const FormatArgs& a) {
  for (const auto& [name, value] : a.fields) {
    (void)value;
    if (!form.find(name)) {
      std::string names;
      for (const auto& c : form.controls) names += (names.empty() ? "" : " ") + c.name;
      return inv.fail("no field '" + name + "' on this form; fields: " + names);
    }
  }
  return 0;
}

void applyFields(FormModel& form, const FormatArgs& a) {
  for (const auto& [name, value] : a.fields) {
    u16 v = fromUtf8(value);
    if (form.find(name)->multiLine) v = replaceAll(v, u"\\n", u"\r\n");
    form.setByOperator(name, v);
  }
}

void answerSaveDialog(Invocation& inv, const FormatArgs& a) { inv.ui.savePaths.push_back(a.output); }

int runDocumentCommand(Invocation& inv, bool (*make)(Station&), const char* nothingFound) {
  FormatArgs a;
  if (int rc = parseFormatArgs(inv, a, false, false, FormatIo::DocumentExport)) return rc;
  if (!inv.loadScript(a.input)) return kExitUsage;
  if (!make(inv.st)) {
    if (nothingFound && inv.ui.boxesShown == 0) return inv.fail(nothingFound + a.input);
    return inv.exitFor(false);
  }
  return saveActiveDocument(inv, a.output);
}

int beginFileImport(Invocation& inv, FormatArgs& a) {
  if (int rc = parseFormatArgs(inv, a, false, false, FormatIo::Import)) return rc;
  // The station stops silently on a file it cannot read; here the reason is
  // told (missing, not a file, far too large).
  std::string bytes, error;
  if (!readWholeFile(a.input, bytes, &error)) return inv.fail(error);
  if (inv.inWriter()) {
    if (!inv.loadScript("")) return kExitUsage;
    if (inv.st.doc->documentsCount() < 1) inv.st.doc->documentsAdd();
  } else {
    inv.docs.documentsAdd();
  }
  inv.ui.openPaths.push_back(a.input);
  return 0;
}

int saveActiveDocument(Invocation& inv, const std::string& path) {
  if (inv.inWriter()) return saveScriptTo(inv, path) ? 0 : kExitUsage;
  MemoryDocument* d = inv.docs.active();
  if (!d) return inv.fail("no document to save");
  std::string error;
  if (!saveDocumentFile(*d, path, error)) return inv.fail(error.empty() ? "cannot write " + path : error);
  return 0;
}

int exportExit(Invocation& inv, const WriteResult& result) {
  if (result.written) return kExitOk;
  if (result.failed()) return inv.fail(result.message());
  return kExitStopped;
}

}  // namespace quillon::cli
