#include "formats/import_frame.h"

#include <filesystem>

#include "script/document_ops.h"
#include "script/document_service.h"

namespace quillon {

std::optional<std::string> importFrame(Station& st, u16v title, u16v filter) {
  if (!attachDocument(st)) return std::nullopt;
  FileDialogRequest req;
  req.title = u16(title);
  req.filter = u16(filter);
  req.initialDir = fromUtf8(st.s.dialogInitDir);
  auto chosen = st.ui.openFileDialog(req);
  if (!chosen || chosen->empty()) return std::nullopt;
  st.s.dialogInitDir = std::filesystem::path(*chosen).parent_path().string();
  return chosen;
}

void openNewDocument(Station& st, u16v font) {
  st.doc->documentsAdd();
  st.doc->setFontName(u16(font));
}

void insertAtSelection(Station& st, const u16& text) {
  DocumentService& d = *st.doc;
  TextRange p = d.selectionParagraph(1);
  d.insertAfter(p, text);
  d.moveRight(wdCharacter, static_cast<long>(text.size()));
}

void tellNotOfFormat(Station& st, const std::string& path, u16v what, u16v expected) {
  critical(st.ui, u"Error: " + fromUtf8(path) + u" is not " + u16(what) + u"." + CR + u"Expected " + u16(expected) + u".");
}

}  // namespace quillon
