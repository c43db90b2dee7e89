// quillon-cli export ult: the script's captions as an Ultech ULT file.
#include "captions/ult_export.h"
#include "cli/cmd_formats.h"

namespace quillon::cli {

namespace {

int runExportUlt(Invocation& inv) {
  FormCCult form;
  std::string out, field, error;
  inv.takeOption("-o", out, error);
  while (error.empty() && inv.takeOption("--field", field, error)) {
    auto eq = field.find('=');
    if (eq == std::string::npos || !form.setByOperator(field.substr(0, eq), fromUtf8(field.substr(eq + 1))))
      return inv.fail("--field wants NAME=TEXT with a field of the ULT form, got '" + field + "'");
  }
  if (!error.empty()) return inv.fail(error);
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (!inv.scriptArgs(1) || out.empty()) return inv.fail("export ult wants one SCRIPT and -o OUT.ult");
  if (!inv.loadScript(inv.args[0])) return kExitUsage;
  inv.ui.savePaths.push_back(out);
  if (!mnu_cc_ult(inv.st, form)) return inv.exitFor(false);
  const WriteResult r = formCCultProximo(inv.st, form);
  if (r.failed()) return inv.fail(r.message());
  return inv.exitFor(r.written);
}

const ExportRegistrar reg({"ult",
                           "export ult [common options] [--field ProgramInfo=TEXT]... SCRIPT -o OUT.ult\n"
                           "  (--field takes any field of the ULT form; only ProgramInfo reaches the file)",
                           runExportUlt});

}  // namespace
}  // namespace quillon::cli
