#include "cli/script_output.h"

#include "script/document_files.h"

namespace quillon::cli {

bool saveScriptTo(Invocation& inv, const std::string& path) {
  MemoryDocument* doc = inv.docs.active();
  std::string error;
  if (!doc || !saveDocumentFile(*doc, path, error)) {
    inv.fail(error.empty() ? "cannot write " + path : error);
    return false;
  }
  return true;
}

}  // namespace quillon::cli
