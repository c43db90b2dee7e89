// The station's own script document: paragraphs ending in CR, italics per
// character, one selection, an undo list and named properties. It is the
// embedded default behind the document service and the model the script
// window shows and edits. The text lives in a TextTree, so an edit anywhere
// costs the same in a script of any length.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "script/document_service.h"
#include "script/text_tree.h"

namespace quillon {

class MemoryDocument {
 public:
  MemoryDocument();  // one empty paragraph

  // Content as given; a text that does not end with CR gets one.
  void setText(u16v text);
  // Copies: the whole text, or the part a range covers (clamped).
  u16 text() const { return text_.text(0, length()); }
  u16 text(TextRange r) const { return text_.text(r.start, r.end); }
  long length() const { return text_.length(); }

  void insert(long pos, u16v text, bool stickLeft, bool italic);
  void erase(TextRange r);
  bool italic(TextRange r) const;
  void setItalic(TextRange r, bool on);
  // One flag per character, of the whole text or of a range.
  std::vector<uint8_t> italicFlags() const { return text_.italics(0, length()); }
  std::vector<uint8_t> italicFlags(TextRange r) const { return text_.italics(r.start, r.end); }

  TextRange selection() const { return sel_; }
  void setSelection(TextRange r);

  // The text always ends with a mark, so there are as many paragraphs as marks.
  long paragraphsCount() const { return text_.marks(); }
  TextRange paragraph(long n) const;  // 1-based
  long paragraphIndexAt(long pos) const;

  // Undo of the operator's and the logic's edits until cleared.
  bool undo();
  void undoClear() { undo_.clear(); }
  size_t undoDepth() const { return undo_.size(); }

  u16 name;                 // "Document1" or the file's name
  std::string path;         // full path, empty for a new document
  u16 fontName = u"Times New Roman";
  bool modified = false;
  std::vector<std::pair<u16, u16>> customProperties;  // in order of creation
  std::vector<std::pair<int, u16>> builtinProperties;

  // Told of every change as it is made, so a window showing the document can
  // follow it edit by edit instead of reloading the text.
  struct Change {
    enum Kind { Text, Italic, Selection, Reset } kind = Text;
    long pos = 0;
    long removed = 0;   // Text: characters taken out at pos
    long inserted = 0;  // Text: characters put in at pos; Italic: length of the range
  };
  std::function<void(const Change&)> onChange;

  // Anything a file loader keeps to write back what the station does not
  // understand (the package of a .docx or .odt, for instance).
  std::shared_ptr<void> sourcePackage;

 private:
  struct Edit {
    long pos;
    u16 removed;
    std::vector<uint8_t> removedItalic;
    long insertedLength;
  };
  void notify(Change::Kind kind, long pos = 0, long removed = 0, long inserted = 0) {
    if (onChange) onChange(Change{kind, pos, removed, inserted});
  }
  void rawInsert(long pos, u16v text, const std::vector<uint8_t>& italic, bool stickLeft);
  void rawErase(long a, long b);
  static void selectionAfterInsert(TextRange& sel, long pos, long n, bool stickLeft);
  static void selectionAfterErase(TextRange& sel, long a, long b);

  TextTree text_;
  TextRange sel_;
  std::vector<Edit> undo_;
};

// The document service over a set of memory documents, one of them active.
class MemoryDocumentService : public DocumentService {
 public:
  MemoryDocumentService();

  // Test and headless hooks: whether a word processor is "running".
  bool available = true;
  u16 user;
  u16 address;

  MemoryDocument* active();
  std::vector<std::unique_ptr<MemoryDocument>>& documents() { return docs_; }
  void activate(size_t index);
  // Adds a ready document and makes it active.
  MemoryDocument& addDocument(std::unique_ptr<MemoryDocument> doc);
  void closeActive();

  bool connect() override { return available; }
  int documentsCount() override { return static_cast<int>(docs_.size()); }
  void documentsAdd() override;
  u16 userName() override { return user; }
  u16 userAddress() override { return address; }

  u16 name() override;
  u16 fullName() override;
  long length() override;
  u16 text(TextRange r) override;
  void insertText(long pos, u16v text, bool stickLeft, bool italic) override;
  void eraseText(TextRange r) override;
  bool italicAt(TextRange r) override;
  void setItalic(TextRange r, bool on) override;
  u16 fontName() override;
  void setFontName(const u16& font) override;
  TextRange selectionRange() override;
  void setSelectionRange(TextRange r) override;
  long paragraphsCount() override;
  TextRange paragraphRange(long n) override;
  long paragraphIndexAt(long pos) override;
  void undoClear() override;
  std::optional<u16> customProperty(const u16& name) override;
  void setCustomProperty(const u16& name, const u16& value) override;
  std::optional<u16> builtinProperty(int index) override;
  void setBuiltinProperty(int index, const u16& value) override;

 private:
  std::vector<std::unique_ptr<MemoryDocument>> docs_;
  size_t active_ = 0;
  int newCounter_ = 0;
};

}  // namespace quillon
