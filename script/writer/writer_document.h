// One Writer document as the service works on it: its text kept here (see
// writer_text.h), the cursors that let a place be reached in a few calls,
// the operator's selection, and the listeners through which Writer reports
// changes made by anyone but the service, the selection moved by the
// operator, and the document's closing.
#pragma once

#include <atomic>
#include <memory>

#include <com/sun/star/text/XTextRangeCompare.hpp>
#include <com/sun/star/text/XTextViewCursor.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "script/writer/uno_support.h"
#include "script/writer/writer_text.h"

namespace quillon::uno {

// Counted on the bridge's threads, read on the station's.
struct DocumentEvents {
  std::atomic<long> changes{0};
  std::atomic<long> selections{0};
  std::atomic<bool> closed{false};
};

class WriterDocument {
 public:
  explicit WriterDocument(const Reference<css::text::XTextDocument>& doc);
  ~WriterDocument();
  WriterDocument(const WriterDocument&) = delete;
  WriterDocument& operator=(const WriterDocument&) = delete;

  // False once Writer has said the document is closing: nothing more may be
  // called on it (a closed document's text can take the office down).
  bool open() const { return !events_->closed; }
  const Reference<css::text::XTextDocument>& document() const { return doc_; }
  const Reference<css::frame::XModel>& model() const { return model_; }

  // The text, read again first when someone else has changed it.
  const WriterText& text();
  // How many times the whole text has been read (for tests and benchmarks).
  long reads() const { return reads_; }

  TextRange selection();
  void select(TextRange r);

  // Edits in the service's terms; the kept text, the cursors and the
  // selection follow. `t` is the text the range holds afterwards.
  void replace(TextRange r, u16v t, bool stickLeft, bool italic);
  bool italic(TextRange r);
  void setItalic(TextRange r, bool on);
  // A character property over the whole text, for the document's font.
  Any wholeTextProperty(const char* name);
  void setWholeTextProperty(const char* name, const Any& value);

 private:
  struct Landmark {
    long step;
    Reference<css::text::XTextCursor> cursor;
  };

  void read();
  void readChunk(const Reference<css::text::XTextCursor>& start, long steps, const u16& got);
  long stepsUpTo(const Reference<css::text::XTextCursor>& start, long most);
  void markLineBreaks();
  // A cursor over Writer's steps [a, b]; cursors are left along long walks
  // so the next walk is short.
  Reference<css::text::XTextCursor> cursorAtSteps(long a, long b);
  Reference<css::text::XTextCursor> cursorAt(TextRange r);
  // The step a position of the body text stands at.
  long stepOf(const Reference<css::text::XTextRange>& position);
  Reference<css::text::XTextCursor> clone(const Reference<css::text::XTextCursor>& c);
  Reference<css::text::XTextCursor> startCursor();
  void afterOwnCall(bool wasFresh);
  void shiftLandmarks(long step, long removed, long inserted);
  void pushSelectionIfMoved(const TextRange& ours, const TextRange& writers);

  Reference<css::text::XTextDocument> doc_;
  Reference<css::frame::XModel> model_;
  Reference<css::text::XText> body_;
  Reference<css::text::XTextRangeCompare> compare_;
  Reference<css::view::XSelectionSupplier> selector_;
  Reference<css::text::XTextViewCursor> viewCursor_;
  Reference<css::uno::XInterface> watcher_;
  std::shared_ptr<DocumentEvents> events_;

  WriterText text_;
  bool fresh_ = false;
  long seenChanges_ = 0;
  long reads_ = 0;
  std::vector<Landmark> landmarks_;  // ascending steps

  TextRange sel_;
  bool selKnown_ = false;
  long seenSelections_ = 0;
};

}  // namespace quillon::uno
