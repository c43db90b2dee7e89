// The text of a Writer document as the document service hands it to the
// logic, kept on the station's side so that scans and finds never cross the
// bridge, and the count that turns its offsets into Writer's cursor steps.
//
// Writer's cursor moves one step over a character, over a surrogate pair and
// over a paragraph break; the service's offsets count UTF-16 code units with
// a CR at the end of every paragraph. So a step is one unit of this text
// except where a surrogate pair takes two. Whatever else takes one step but
// reads as some other number of characters (a field's result, a comment's
// anchor, a table passed over between two paragraphs) is held as one unit
// here: U+FFFC, or the CR of the paragraph break the table follows. Manual
// line breaks are held as VT (11), as the station's own documents hold them.
//
// Built once from what Writer reports, then kept up to date edit by edit.
#pragma once

#include <vector>

#include "script/document_service.h"

namespace quillon {

inline constexpr char16_t kObjectMark = u'\uFFFC';
inline constexpr char16_t kLineBreak = u'\v';

class WriterText {
 public:
  WriterText() { clear(); }
  void clear();

  // ---- Building from Writer's reading --------------------------------------
  // Steps whose text reads one for one: each LF is a paragraph break (line
  // breaks are marked afterwards).
  void appendPlain(u16v writerText);
  // The text Writer gives for exactly one cursor step.
  void appendStep(u16v writerText);
  // The paragraph break at `offset` is a manual line break; false when that
  // offset holds no paragraph break.
  bool markLineBreak(long offset);
  // Ends the document with the final paragraph mark.
  void finish();

  // ---- Reading ------------------------------------------------------------
  const u16& text() const { return text_; }
  long length() const { return static_cast<long>(text_.size()); }
  u16 text(TextRange r) const;
  long paragraphsCount() const { return static_cast<long>(starts_.size()); }
  TextRange paragraph(long n) const;  // 1-based
  long paragraphIndexAt(long pos) const;

  // Writer's cursor steps from the start to `offset` (the middle of a pair
  // counts as its start), and back.
  long stepsTo(long offset) const;
  long offsetOfStep(long step) const;
  long steps() const { return stepsTo(length() - 1); }

  // ---- Edits the service has made in Writer --------------------------------
  // `t` in the service's terms (CR for a paragraph break).
  void insert(long pos, u16v t);
  void erase(TextRange r);

 private:
  void appendUnit(char16_t c);
  void rebuildStarts();

  u16 text_;
  std::vector<long> starts_;   // first offset of each paragraph
  // Offsets of the second unit of each surrogate pair, ascending.
  std::vector<long> pairEnds_;
  bool finished_ = false;
};

// How many cursor steps Writer's text of a stretch takes when it reads one
// for one (a surrogate pair is one step).
long writerSteps(u16v writerText);

// The service's text for Writer: CR ends a paragraph, VT is a line break.
u16 toWriterText(u16v serviceText);

}  // namespace quillon
