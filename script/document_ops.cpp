#include "script/document_ops.h"

namespace quillon {

bool attachDocument(Station& st) {
  DocumentService* d = st.doc;
  auto showName = [&] {
    u16 n = d->name();
    st.view.setPanel(1, n, n);
  };
  if (d && st.s.g_docAttached && d->documentsCount() >= 1) {
    showName();
    return true;
  }
  if (!d || !d->connect() || d->documentsCount() < 1) {
    warning(st.ui, u"Error: No currently open Word document ");
    return false;
  }
  st.s.g_docAttached = true;
  d->setVisible(true);
  showName();
  return true;
}

namespace {

// One find from the selection on; true when it selected the text.
bool findAndSelect(DocumentService& d, const u16& findText) {
  FindRequest f;
  f.findText = findText;
  d.execute(f);
  return d.selection() == findText;
}

}  // namespace

bool replaceInDocument(Station& st, const u16& findText, const u16& replaceText) {
  DocumentService& d = *st.doc;
  d.selectAll();
  FindRequest f;
  f.findText = findText;
  f.replaceWith = replaceText;
  f.replace = ReplaceMode::One;
  d.execute(f);
  d.undoClear();
  return d.selection() == findText;
}

bool findNext(Station& st, const u16& findText) {
  st.doc->collapse();
  return findAndSelect(*st.doc, findText);
}

bool findFromTop(Station& st, const u16& findText) {
  st.doc->selectAll();
  return findAndSelect(*st.doc, findText);
}

u16 tcSearchPattern(const u16& tc) { return left(tc, 8) + u"^?" + right(tc, 2); }

bool findCueIn(Station& st, const u16& tc) { return findNext(st, tcSearchPattern(tc) + u">"); }
bool findCueOut(Station& st, const u16& tc) { return findNext(st, tcSearchPattern(tc) + u"]"); }

void insertCurrentTC(Station& st) {
  if (!attachDocument(st)) return;
  DocumentService& d = *st.doc;
  const u16 tc = st.view.LabTimecode.caption;
  d.selectionInsertAfter(tc);
  d.moveRight(wdCharacter, static_cast<long>(tc.size()), false);
  st.ui.setClipboard(tc);
}

}  // namespace quillon
