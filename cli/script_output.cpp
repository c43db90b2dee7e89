#include "cli/script_output.h"

#include "cli/writer_option.h"
#include "script/document_files.h"

namespace quillon::cli {

bool saveScriptTo(Invocation& inv, const std::string& path) {
  // With --writer the edits are in Writer's document; OUT, when named, gets a copy.
  if (inv.inWriter()) return path.empty() || storeWriterCopy(inv, path);
  MemoryDocument* doc = inv.docs.active();
  std::string error;
  if (!doc || !saveDocumentFile(*doc, path, error)) {
    inv.fail(error.empty() ? "cannot write " + path : error);
    return false;
  }
  return true;
}

}  // namespace quillon::cli
