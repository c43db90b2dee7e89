#include "cli/writer_option.h"

#ifdef QUILLON_HAVE_WRITER
#include "script/writer/writer_document_service.h"
#endif

namespace quillon::cli {

#ifdef QUILLON_HAVE_WRITER

namespace {

WriterDocumentService& writerOf(Invocation& inv) {
  if (!inv.writer) {
    WriterOptions o;
    o.connection = inv.writerConnection;
    o.followFrontDocument = false;  // the document chosen stays the command's
    inv.writer = std::make_shared<WriterDocumentService>(o);
  }
  inv.st.doc = inv.writer.get();
  return static_cast<WriterDocumentService&>(*inv.writer);
}

}  // namespace

bool useWriterScript(Invocation& inv, const std::string& path) {
  WriterDocumentService& w = writerOf(inv);
  std::string error;
  if (!path.empty()) {
    if (!w.useOpenFile(path, error)) return inv.fail(error), false;
    return true;
  }
  if (!w.connect()) return inv.fail(w.lastError()), false;
  return true;
}

bool storeWriterCopy(Invocation& inv, const std::string& path) {
  std::string error;
  if (!writerOf(inv).storeCopy(path, error)) return inv.fail(error), false;
  return true;
}

#else

bool useWriterScript(Invocation& inv, const std::string&) {
  inv.fail("--writer: this quillon-cli was built without LibreOffice's SDK");
  return false;
}

bool storeWriterCopy(Invocation& inv, const std::string& path) { return useWriterScript(inv, path); }

#endif

}  // namespace quillon::cli
