#include "app/scriptwin/script_view.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>

namespace quillon {

namespace {

constexpr char16_t kParagraphSeparator = 0x2029;
constexpr char16_t kLineSeparator = 0x2028;
constexpr char16_t kVerticalTab = 11;

QChar editorChar(char16_t c) {
  if (c == CR) return QChar(kParagraphSeparator);
  if (c == u'\n' || c == kVerticalTab) return QChar(kLineSeparator);
  return QChar(c);
}

}  // namespace

QString toEditorText(u16v text) {
  QString out(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
  for (size_t i = 0; i < text.size(); ++i) out[static_cast<qsizetype>(i)] = editorChar(text[i]);
  return out;
}

u16 fromEditorText(const QString& text) {
  u16 out(static_cast<size_t>(text.size()), u' ');
  for (qsizetype i = 0; i < text.size(); ++i) {
    char16_t c = text[i].unicode();
    if (c == kParagraphSeparator || c == u'\n' || c == u'\r') c = CR;
    else if (c == kLineSeparator) c = kVerticalTab;  // a manual line break, as a word processor has it
    out[static_cast<size_t>(i)] = c;
  }
  return out;
}

ScriptView::ScriptView(MemoryDocument& doc, QWidget* parent) : QPlainTextEdit(parent), doc_(doc) {
  // The document keeps the one undo list, so the logic's edits and the
  // operator's are taken back alike and UndoClear empties both.
  setUndoRedoEnabled(false);
  selectionTimer_.setSingleShot(true);
  connect(&selectionTimer_, &QTimer::timeout, this, &ScriptView::flushSelection);
  rebuildFromModel();
  connect(document(), &QTextDocument::contentsChange, this, &ScriptView::onEditorContentsChange);
  connect(this, &QPlainTextEdit::cursorPositionChanged, this, &ScriptView::onEditorCursorMoved);
  connect(this, &QPlainTextEdit::selectionChanged, this, &ScriptView::onEditorCursorMoved);
  doc_.onChange = [this](const MemoryDocument::Change& c) { onModelChange(c); };
  scheduleSelectionFlush(true);
  flushSelection();
}

ScriptView::~ScriptView() {
  if (attached_) doc_.onChange = nullptr;
}

long ScriptView::editorEnd() const { return document()->characterCount() - 1; }

QString ScriptView::editorText(long a, long b) const {
  const long end = editorEnd();
  QTextCursor c(document());
  c.setPosition(static_cast<int>(std::min(a, end)));
  c.setPosition(static_cast<int>(std::min(b, end)), QTextCursor::KeepAnchor);
  QString t = c.selectedText();
  if (b > end) t += QChar(kParagraphSeparator);
  return t;
}

std::vector<uint8_t> ScriptView::editorItalics(long a, long b) const {
  std::vector<uint8_t> flags(static_cast<size_t>(std::max(0L, b - a)), 0);
  for (QTextBlock blk = document()->findBlock(static_cast<int>(a)); blk.isValid() && blk.position() < b;
       blk = blk.next()) {
    for (auto it = blk.begin(); !it.atEnd(); ++it) {
      const QTextFragment f = it.fragment();
      if (!f.isValid()) continue;
      const long fs = f.position(), fe = fs + f.length();
      if (fe <= a || fs >= b || !f.charFormat().fontItalic()) continue;
      for (long p = std::max(fs, a); p < std::min(fe, b); ++p) flags[static_cast<size_t>(p - a)] = 1;
    }
  }
  return flags;
}

u16 ScriptView::shownText() const { return fromEditorText(editorText(0, editorEnd() + 1)); }

std::vector<uint8_t> ScriptView::shownItalics() const { return editorItalics(0, editorEnd() + 1); }

TextRange ScriptView::shownSelection() const {
  const QTextCursor c = textCursor();
  return {c.selectionStart(), c.selectionEnd()};
}

// ---- document to editor ----------------------------------------------------

void ScriptView::onModelChange(const MemoryDocument::Change& c) {
  if (applyingEditor_) return;
  switch (c.kind) {
    case MemoryDocument::Change::Text:
      applyModelText(c.pos, c.removed, c.inserted);
      scheduleSelectionFlush(false);
      emit documentChanged();
      break;
    case MemoryDocument::Change::Italic:
      applyModelItalic(c.pos, c.inserted);
      emit documentChanged();
      break;
    case MemoryDocument::Change::Selection:
      scheduleSelectionFlush(true);
      break;
    case MemoryDocument::Change::Reset:
      rebuildFromModel();
      scheduleSelectionFlush(true);
      emit documentChanged();
      break;
  }
}

void ScriptView::applyModelText(long pos, long removed, long inserted) {
  QScopedValueRollback<bool> guard(applyingModel_, true);
  // An edit above the operator's view must not push the text they are
  // reading down the window: note the top line and put it back afterwards.
  QScrollBar* vbar = verticalScrollBar();
  const int topLine = vbar->value();
  const QTextBlock top = document()->findBlockByLineNumber(topLine);
  const long topPos = top.isValid() ? top.position() : 0;
  const int inner = top.isValid() ? topLine - top.firstLineNumber() : 0;

  QTextCursor c(document());
  c.beginEditBlock();
  c.setPosition(static_cast<int>(pos));
  if (removed > 0) {
    c.setPosition(static_cast<int>(pos + removed), QTextCursor::KeepAnchor);
    c.removeSelectedText();
  }
  // Only the inserted text is read, in runs of one slant.
  const u16 text = doc_.text({pos, pos + inserted});
  const auto flags = doc_.italicFlags({pos, pos + inserted});
  for (size_t i = 0; i < text.size();) {
    size_t j = i;
    while (j < text.size() && flags[j] == flags[i]) ++j;
    QTextCharFormat f;
    f.setFontItalic(flags[i] != 0);
    c.insertText(toEditorText(u16v(text).substr(i, j - i)), f);
    i = j;
  }
  c.endEditBlock();

  if (topPos > 0 && pos + removed <= topPos && inserted != removed) {
    const QTextBlock moved = document()->findBlock(static_cast<int>(topPos + inserted - removed));
    if (moved.isValid()) vbar->setValue(moved.firstLineNumber() + inner);
  }
}

void ScriptView::applyModelItalic(long pos, long length) {
  QScopedValueRollback<bool> guard(applyingModel_, true);
  const long end = std::min(pos + length, editorEnd());
  if (end <= pos) return;
  const auto flags = doc_.italicFlags({pos, end});
  const auto flag = [&](long k) { return flags[static_cast<size_t>(k - pos)]; };
  QTextCursor c(document());
  c.beginEditBlock();
  for (long i = pos; i < end;) {
    long j = i;
    while (j < end && flag(j) == flag(i)) ++j;
    c.setPosition(static_cast<int>(i));
    c.setPosition(static_cast<int>(j), QTextCursor::KeepAnchor);
    QTextCharFormat f;
    f.setFontItalic(flag(i) != 0);
    c.mergeCharFormat(f);
    i = j;
  }
  c.endEditBlock();
}

void ScriptView::rebuildFromModel() {
  QScopedValueRollback<bool> guard(applyingModel_, true);
  const u16 text = doc_.text();
  // The final paragraph mark is the editor's own end of document.
  setPlainText(toEditorText(u16v(text).substr(0, text.size() - 1)));
  const auto flags = doc_.italicFlags();
  QTextCursor c(document());
  c.beginEditBlock();
  QTextCharFormat italic;
  italic.setFontItalic(true);
  for (long i = 0, n = doc_.length() - 1; i < n;) {
    if (!flags[static_cast<size_t>(i)]) {
      ++i;
      continue;
    }
    long j = i;
    while (j < n && flags[static_cast<size_t>(j)]) ++j;
    c.setPosition(static_cast<int>(i));
    c.setPosition(static_cast<int>(j), QTextCursor::KeepAnchor);
    c.mergeCharFormat(italic);
    i = j;
  }
  c.endEditBlock();
}

void ScriptView::scheduleSelectionFlush(bool reveal) {
  selectionDirty_ = true;
  revealSelection_ = revealSelection_ || reveal;
  if (!selectionTimer_.isActive()) selectionTimer_.start(0);
}

void ScriptView::flushSelection() {
  if (!selectionDirty_) return;
  selectionDirty_ = false;
  const bool reveal = revealSelection_;
  revealSelection_ = false;
  const long end = editorEnd();
  TextRange r = doc_.selection();
  r.start = std::clamp(r.start, 0L, end);
  r.end = std::clamp(r.end, r.start, end);
  const QTextCursor shown = textCursor();
  if (shown.selectionStart() == r.start && shown.selectionEnd() == r.end) return;
  QScopedValueRollback<bool> guard(applyingModel_, true);
  QTextCursor c(document());
  c.setPosition(static_cast<int>(r.start));
  c.setPosition(static_cast<int>(r.end), QTextCursor::KeepAnchor);
  const int v = verticalScrollBar()->value(), h = horizontalScrollBar()->value();
  setTextCursor(c);
  if (reveal) {
    ensureCursorVisible();
  } else {
    // The cursor only moved with the text around it: the view stays.
    verticalScrollBar()->setValue(v);
    horizontalScrollBar()->setValue(h);
  }
}

// ---- editor to document ----------------------------------------------------

void ScriptView::onEditorContentsChange(int pos, int removed, int added) {
  if (applyingModel_) return;
  const long editorLen = editorEnd() + 1;
  const long modelLen = doc_.length();
  long oldEnd = pos + removed, newEnd = pos + added;
  // The editor may count its own end of document in the change.
  if (const long over = newEnd - editorLen; over > 0) {
    oldEnd -= over;
    newEnd -= over;
  }
  if (pos < 0 || oldEnd < pos || newEnd < pos || oldEnd > modelLen || modelLen - oldEnd != editorLen - newEnd) {
    resyncWholeText();
  } else {
    takeEditorRange(pos, oldEnd, newEnd);
  }
  emit documentChanged();
  onEditorCursorMoved();
}

void ScriptView::resyncWholeText() { takeEditorRange(0, doc_.length(), editorEnd() + 1); }

void ScriptView::takeEditorRange(long pos, long oldEnd, long newEnd) {
  QScopedValueRollback<bool> guard(applyingEditor_, true);
  const QString fresh = editorText(pos, newEnd);
  const u16 old = doc_.text({pos, oldEnd});
  const long oldN = oldEnd - pos, newN = newEnd - pos;
  long p = 0;
  while (p < oldN && p < newN && editorChar(old[static_cast<size_t>(p)]) == fresh[p]) ++p;
  long s = 0;
  while (s < oldN - p && s < newN - p && editorChar(old[static_cast<size_t>(oldN - 1 - s)]) == fresh[newN - 1 - s]) ++s;
  const long at = pos + p;
  if (oldEnd - s > at) doc_.erase({at, oldEnd - s});
  if (newN - p - s > 0) doc_.insert(at, fromEditorText(fresh.mid(p, newN - p - s)), false, false);
  italicsFromEditor(pos, newEnd);
}

void ScriptView::italicsFromEditor(long a, long b) {
  b = std::min(b, doc_.length());
  const auto shown = editorItalics(a, b);
  const u16 text = doc_.text({a, b});
  const auto flags = doc_.italicFlags({a, b});
  for (long i = a; i < b;) {
    const auto want = [&](long k) { return shown[static_cast<size_t>(k - a)] != 0; };
    const auto differs = [&](long k) {
      const size_t at = static_cast<size_t>(k - a);
      return text[at] != CR && (flags[at] != 0) != want(k);
    };
    if (!differs(i)) {
      ++i;
      continue;
    }
    long j = i;
    while (j < b && differs(j) && want(j) == want(i)) ++j;
    doc_.setItalic({i, j}, want(i));
    i = j;
  }
}

void ScriptView::onEditorCursorMoved() {
  if (applyingModel_) return;
  // A selection the logic made and the screen does not show yet wins: the
  // operator's own moves always flush it first.
  if (selectionDirty_) {
    flushSelection();
    return;
  }
  QScopedValueRollback<bool> guard(applyingEditor_, true);
  doc_.setSelection(shownSelection());
}

// ---- operator ---------------------------------------------------------------

void ScriptView::toggleItalic() {
  flushSelection();
  if (!textCursor().hasSelection()) {
    QTextCharFormat f = currentCharFormat();
    f.setFontItalic(!f.fontItalic());
    setCurrentCharFormat(f);
    return;
  }
  const TextRange r = shownSelection();
  doc_.setItalic(r, !doc_.italic(r));
}

void ScriptView::undoLast() {
  flushSelection();
  if (doc_.undo()) scheduleSelectionFlush(true);
}

void ScriptView::keyPressEvent(QKeyEvent* e) {
  flushSelection();
  if (e->matches(QKeySequence::Undo)) {
    undoLast();
    return;
  }
  if (e->matches(QKeySequence::Redo)) return;
  if (e->key() == Qt::Key_I && (e->modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier) {
    toggleItalic();
    return;
  }
  QPlainTextEdit::keyPressEvent(e);
}

void ScriptView::mousePressEvent(QMouseEvent* e) {
  flushSelection();
  QPlainTextEdit::mousePressEvent(e);
}

void ScriptView::inputMethodEvent(QInputMethodEvent* e) {
  flushSelection();
  QPlainTextEdit::inputMethodEvent(e);
}

void ScriptView::contextMenuEvent(QContextMenuEvent* e) {
  flushSelection();
  QPlainTextEdit::contextMenuEvent(e);
}

void ScriptView::insertFromMimeData(const QMimeData* source) {
  flushSelection();
  QPlainTextEdit::insertFromMimeData(source);
}

}  // namespace quillon
