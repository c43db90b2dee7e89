// One Writer document as the service works on it: its text kept here (see
// writer_text.h), the cursors that let a place be reached in a few calls,
// the operator's selection, and the listeners through which Writer reports
// changes made by anyone but the service, the selection moved by the
// operator, and the document's closing.
#pragma once

#include <atomic>
#include <memory>
#include <stdexcept>

#include <com/sun/star/text/XTextRangeCompare.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "script/writer/uno_support.h"
#include "script/writer/view_updates.h"
#include "script/writer/writer_text.h"

namespace quillon::uno {

// Steps read in one call, and the spacing of the cursors kept for reaching
// places: a cursor's walk costs Writer a step at a time, a call costs the
// bridge a round trip. goRight takes at most 32767.
inline constexpr long kChunk = 16384;
inline constexpr long kMaxMove = 32767;

// Moves a cursor right by any number of steps; false at the end of the text.
bool advance(const Reference<css::text::XTextCursor>& c, long steps, bool extend);

// A place the body text's cursor cannot stand on: inside a table.
struct InsideTable : std::runtime_error {
  InsideTable() : std::runtime_error("a place inside a table") {}
};

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

  TextRange selection();
  // Writer shows the selection soon after (see view_updates.h).
  void select(TextRange r);
  // Shows what is pending in Writer at once.
  void showSelection();

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
  struct Stretch {
    u16 text;
    bool complete = false;                   // the selection got all the way
    Reference<css::text::XTextCursor> stop;  // where it stopped when it did not
  };
  // Steps [start, end) of a table's cells: a walk that ends there is put
  // behind the table, at `end`.
  struct Table {
    long start, end;
  };

  // Reading (writer_reading.cpp).
  void read();
  Stretch between(const Reference<css::text::XTextCursor>& from, const Reference<css::text::XTextCursor>& to);
  void readChunk(const Reference<css::text::XTextCursor>& from, long steps, const Reference<css::text::XTextCursor>& to,
                 const Stretch& got);
  long stepsUpTo(const Reference<css::text::XTextCursor>& start, long guess);
  bool hasTables();
  void locateTables();
  void markLineBreaks();

  // Places.
  // The last kept cursor not behind `position`, its step, and the step of
  // the next one (or the end).
  struct Base {
    Reference<css::text::XTextCursor> cursor;
    long step, limit;
  };
  Base baseFor(const Reference<css::text::XTextRange>& position);
  // A cursor over Writer's steps [a, b]; cursors are left along long walks
  // so the next walk is short. Throws InsideTable for a place in a table,
  // and for an edit over one.
  Reference<css::text::XTextCursor> cursorAtSteps(long a, long b, bool forEdit);
  Reference<css::text::XTextCursor> cursorAt(TextRange r, bool forEdit);
  const Table* tableAt(long step) const;
  Reference<css::text::XTextRange> writersSelection();
  // The step a position of the body text stands at.
  long stepOf(const Reference<css::text::XTextRange>& position);
  Reference<css::text::XTextCursor> clone(const Reference<css::text::XTextCursor>& c);
  Reference<css::text::XTextCursor> startCursor();
  void afterOwnCall(bool wasFresh);
  void shiftPlaces(long step, long removed, long inserted);

  Reference<css::text::XTextDocument> doc_;
  Reference<css::frame::XModel> model_;
  Reference<css::text::XText> body_;
  Reference<css::text::XTextRangeCompare> compare_;
  Reference<css::view::XSelectionSupplier> selector_;
  std::unique_ptr<ViewUpdates> views_;
  Reference<css::uno::XInterface> watcher_;
  std::shared_ptr<DocumentEvents> events_;

  WriterText text_;
  bool fresh_ = false;
  long seenChanges_ = 0;
  std::vector<Landmark> landmarks_;  // ascending steps
  std::vector<Table> tables_;        // ascending

  TextRange sel_;
  Reference<css::text::XTextCursor> selCursor_;  // the one the service selected with
  bool selKnown_ = false;
  long seenSelections_ = 0;
};

}  // namespace quillon::uno
