// One script document on screen: an editor kept in step with its memory
// document both ways. The operator's typing, deleting, pasting and selecting
// go into the document as they happen; the logic's edits come back into the
// editor one change at a time, never by reloading the text.
#pragma once

#include <QPlainTextEdit>
#include <QTimer>
#include <vector>

#include "script/memory_document.h"

namespace quillon {

class ScriptView : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit ScriptView(MemoryDocument& doc, QWidget* parent = nullptr);
  ~ScriptView() override;

  MemoryDocument& model() { return doc_; }
  const MemoryDocument& model() const { return doc_; }
  // The document went away without this view: never reach for it again.
  void forgetModel() { attached_ = false; }

  // Puts the document's selection on screen now instead of at the next turn
  // of the event loop.
  void flushSelection();
  // Ctrl+I: italics on or off for the selection; with nothing selected, for
  // what is typed next.
  void toggleItalic();
  // Ctrl+Z: takes back the document's last edit, whoever made it.
  void undoLast();

  // What the editor holds, in the document's terms (CR paragraph marks, one
  // italic flag per character; paragraph marks count as upright).
  u16 shownText() const;
  std::vector<uint8_t> shownItalics() const;
  TextRange shownSelection() const;

 signals:
  // The document's text, italics or modified state changed.
  void documentChanged();

 protected:
  void keyPressEvent(QKeyEvent* e) override;
  void mousePressEvent(QMouseEvent* e) override;
  void inputMethodEvent(QInputMethodEvent* e) override;
  void contextMenuEvent(QContextMenuEvent* e) override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  void onModelChange(const MemoryDocument::Change& c);
  void applyModelText(long pos, long removed, long inserted);
  void applyModelItalic(long pos, long length);
  void rebuildFromModel();
  void onEditorContentsChange(int pos, int removed, int added);
  void takeEditorRange(long pos, long oldEnd, long newEnd);
  void resyncWholeText();
  void onEditorCursorMoved();
  void scheduleSelectionFlush(bool reveal);
  void italicsFromEditor(long a, long b);
  std::vector<uint8_t> editorItalics(long a, long b) const;
  QString editorText(long a, long b) const;
  long editorEnd() const;  // position of the editor's final paragraph end

  MemoryDocument& doc_;
  bool attached_ = true;
  bool applyingModel_ = false;  // the editor is being changed from the document
  bool applyingEditor_ = false; // the document is being changed from the editor
  bool selectionDirty_ = false;
  bool revealSelection_ = false;
  QTimer selectionTimer_;
};

// Text as the editor holds it and back: paragraph marks, line breaks.
QString toEditorText(u16v text);
u16 fromEditorText(const QString& text);

}  // namespace quillon
