// The document service: what the station needs of the word processor that
// holds the script.
//
// An implementation supplies a small set of primitives over the active
// document (text, insert, erase, italics, selection, paragraphs, properties).
// The word-processor operations the logic calls (Selection.Next, Find.Execute,
// Paragraphs(n), InsertBefore, ...) are built once on top of them here, so the
// embedded document, the script window and a bridge to an outside word
// processor behave alike. Offsets are UTF-16 code units from 0; every
// paragraph ends with CR, and so does the document.
//
// Operations never throw: a failed one sets the pending error, which the
// logic tests where the station's rules say it does.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "core/text.h"

namespace quillon {

struct TextRange {
  long start = 0;
  long end = 0;
  long length() const { return end - start; }
  bool collapsed() const { return start == end; }
  bool operator==(const TextRange&) const = default;
};

enum Unit : int { wdCharacter = 1, wdParagraph = 4 };
enum Statistic : int { wdStatisticWords = 0, wdStatisticLines = 1, wdStatisticPages = 2,
                       wdStatisticCharacters = 3, wdStatisticParagraphs = 4,
                       wdStatisticCharactersWithSpaces = 5 };
enum class ReplaceMode { None, One, All };
enum SelectionType : int { wdSelectionIP = 1, wdSelectionNormal = 2 };

// Error numbers set as the pending error.
inline constexpr int kErrNoDocument = 4248;     // no document is open
inline constexpr int kErrNoObject = 91;         // Next/Previous ran off the document
inline constexpr int kErrBadIndex = 5941;       // a collection member that does not exist

// Built-in property indexes the station reads.
enum BuiltinProperty : int { wdPropertyTitle = 1, wdPropertyAuthor = 3, wdPropertyComments = 5,
                             wdPropertyRevision = 8, wdPropertyTimeCreated = 11,
                             wdPropertyTimeLastSaved = 12, wdPropertyCompany = 21 };

struct FindRequest {
  u16 findText;          // literal, with ^? for any one character and ^^ for a caret
  bool forward = true;
  bool wrap = false;     // wrap to the other end of the document when nothing is found
  std::optional<u16> replaceWith;
  ReplaceMode replace = ReplaceMode::One;  // applies only with replaceWith
  bool matchCase = true;
};

class DocumentService {
 public:
  virtual ~DocumentService() = default;

  // ---- Primitives --------------------------------------------------------
  // The running word processor, as obtained by class name; false when none.
  virtual bool connect() = 0;
  virtual int documentsCount() = 0;
  // A new empty document, which becomes the active one.
  virtual void documentsAdd() = 0;
  virtual void setVisible(bool) {}
  // Brings the active document's window forward.
  virtual void activateWindow() {}
  virtual u16 userName() = 0;
  virtual u16 userAddress() = 0;

  // Active document. With none open these set kErrNoDocument and return empty.
  virtual u16 name() = 0;
  virtual u16 fullName() = 0;
  virtual long length() = 0;
  virtual u16 text(TextRange r) = 0;
  // Inserts at `pos`. Positions after it move; a position equal to it stays
  // before the new text when `stickLeft`, otherwise it moves behind it.
  virtual void insertText(long pos, u16v text, bool stickLeft, bool italic) = 0;
  virtual void eraseText(TextRange r) = 0;
  // The text of `r` replaced by `t`, exactly as eraseText(r) followed by
  // insertText(r.start, t, false, italic); a model may do it in place.
  virtual void replaceText(TextRange r, u16v t, bool italic);
  virtual bool italicAt(TextRange r) = 0;  // wholly italic
  virtual void setItalic(TextRange r, bool on) = 0;
  virtual u16 fontName() = 0;
  virtual void setFontName(const u16& font) = 0;
  virtual TextRange selectionRange() = 0;
  virtual void setSelectionRange(TextRange r) = 0;
  virtual long paragraphsCount() = 0;
  virtual TextRange paragraphRange(long n) = 0;  // 1-based, must exist
  virtual long paragraphIndexAt(long pos) = 0;   // 1-based paragraph holding pos
  virtual void undoClear() = 0;
  virtual std::optional<u16> customProperty(const u16& name) = 0;
  virtual void setCustomProperty(const u16& name, const u16& value) = 0;
  virtual std::optional<u16> builtinProperty(int index) = 0;
  virtual void setBuiltinProperty(int index, const u16& value) = 0;
  // Laid-out line count of a range, for the line-count statistic.
  virtual long layoutLines(TextRange r);

  // ---- Pending error -----------------------------------------------------
  int pendingError() const { return err_; }
  void clearError() { err_ = 0; }
  void raiseError(int e) { err_ = e; }

  // ---- Word-processor operations built on the primitives ------------------
  // ActiveDocument
  u16 content();                                // ActiveDocument.Content
  void contentInsertBefore(const u16& t);       // ActiveDocument.Content.InsertBefore
  void contentInsertAfter(const u16& t);        // ActiveDocument.Content.InsertAfter
  TextRange documentRange();                    // ActiveDocument.Range
  void selectAll();                             // ActiveDocument.Range.Select
  TextRange paragraph(long n);                  // ActiveDocument.Paragraphs(n).Range
  long computeStatistics(int statistic);        // ActiveDocument.ComputeStatistics
  long computeStatistics(int statistic, TextRange r);  // Range.ComputeStatistics

  // Ranges
  bool italic(TextRange r) { return italicAt(r); }     // Range.Font.Italic
  TextRange insertBefore(TextRange r, const u16& t);   // Range.InsertBefore; the range grows
  TextRange insertAfter(TextRange r, const u16& t);    // Range.InsertAfter; the range grows
  void deleteRange(TextRange r);                       // Range.Delete
  std::vector<TextRange> words(TextRange r);           // Range.Words

  // Selection
  u16 selection();                                // Selection (value): the selected text
  TextRange selectionRangeOrEmpty() { return selectionRange(); }
  void select(TextRange r) { setSelectionRange(r); }
  int selectionType();                            // 1 insertion point, 2 text
  TextRange selectionParagraph(long n);           // Selection.Paragraphs(n).Range
  long selectionParagraphsCount();
  // Selection.Next / Previous (unit, count): the range, or nullopt with the
  // pending error set when it would leave the document.
  std::optional<TextRange> next(int unit, long count = 1);
  std::optional<TextRange> previous(int unit, long count = 1);
  // Selection.Next(unit, count).Select: true when the selection moved.
  bool selectNext(int unit = wdParagraph, long count = 1);
  bool selectPrevious(int unit = wdParagraph, long count = 1);
  void collapse();                                // Selection.Collapse (to the start)
  void collapseEnd();
  void moveRight(int unit, long count, bool extend = false);  // Selection.MoveRight
  void selectionInsertAfter(const u16& t);        // Selection.Range.InsertAfter
  void selectionInsertBefore(const u16& t);       // Selection.Range.InsertBefore
  // Selection.Find.Execute: true when the text was found; the selection then
  // covers the match (or the replacement of a single replace).
  bool execute(const FindRequest& f);

 protected:
  bool requireDocument();

 private:
  int err_ = 0;
};

// Where the find text matches `hay` at `pos` (^? any character, ^^ caret).
bool findPatternMatchesAt(u16v hay, long pos, u16v pattern, bool matchCase, long& matchLength);

}  // namespace quillon
