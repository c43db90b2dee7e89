// Reading a Writer document's whole text into the service's copy, in few
// calls, and finding what in it the body text's cursor counts otherwise.
#include <algorithm>

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/text/XTextContent.hpp>
#include <com/sun/star/text/XTextTablesSupplier.hpp>
#include <com/sun/star/util/XSearchable.hpp>
#include <com/sun/star/util/XSearchDescriptor.hpp>

#include "script/writer/writer_document.h"

namespace quillon::uno {

// The text in chunks of kChunk steps, each read in one call. A chunk that
// reads one character a step is taken as it is; one that does not holds a
// field's result or a note's anchor, and is halved until the odd step is
// found. The chunk starts stay as the cursors places are reached from.
//
// Tables: Writer's cursor walks through a table's cells a character at a
// time, yet a walk that ends inside a table is put behind it, and a
// selection stops behind one. In a document with tables the text is taken
// as it reads, one character a step (a field's result is then taken as
// typed), the reading goes on from where a selection stopped, and where the
// tables lie is found afterwards so that no place is sought inside one.
void WriterDocument::read() {
  const long changesBefore = events_->changes;
  text_.clear();
  landmarks_.clear();
  tables_.clear();
  const bool tables = hasTables();
  Reference<css::text::XTextCursor> walker = startCursor();
  long step = 0;
  for (;;) {
    Reference<css::text::XTextCursor> start = clone(walker);
    if (step > 0) landmarks_.push_back({step, start});
    const bool full = walker->goRight(static_cast<sal_Int16>(kChunk), false);
    const Stretch got = between(start, walker);
    if (tables) {
      text_.appendPlain(got.text);
      step += writerSteps(got.text);
      if (!got.complete && !got.text.empty()) {
        walker = got.stop;
        continue;
      }
      if (!full) break;
      walker = clone(walker);
      continue;
    }
    const long n = full ? kChunk : stepsUpTo(start, writerSteps(got.text));
    readChunk(start, n, walker, got);
    if (!full) break;
    walker = clone(walker);
    step += n;
  }
  text_.finish();
  if (tables) locateTables();
  markLineBreaks();
  fresh_ = true;
  seenChanges_ = changesBefore;  // a change made while reading is read next time
  selKnown_ = false;
}

WriterDocument::Stretch WriterDocument::between(const Reference<css::text::XTextCursor>& from,
                                                const Reference<css::text::XTextCursor>& to) {
  Reference<css::text::XTextCursor> span = clone(from);
  span->gotoRange(range(to), true);
  Stretch s{fromOu(span->getString()), false, {}};
  s.complete = compare_->compareRegionEnds(range(span), range(to)) == 0;
  if (!s.complete) {
    span->collapseToEnd();
    s.stop = span;
  }
  return s;
}

// The steps left from `start` to the end of the text, checking the guess
// the last chunk's text gives before searching.
long WriterDocument::stepsUpTo(const Reference<css::text::XTextCursor>& start, long guess) {
  Reference<css::text::XTextCursor> probe = clone(start);
  if (advance(probe, guess, false) && !probe->goRight(1, false)) return guess;
  long lo = 0, hi = kChunk;
  while (lo < hi) {
    const long mid = (lo + hi + 1) / 2;
    if (advance(clone(start), mid, false)) lo = mid;
    else hi = mid - 1;
  }
  return lo;
}

void WriterDocument::readChunk(const Reference<css::text::XTextCursor>& from, long steps,
                               const Reference<css::text::XTextCursor>& to, const Stretch& got) {
  if (steps <= 0) return;
  if (got.complete && writerSteps(got.text) == steps) {
    text_.appendPlain(got.text);
    return;
  }
  if (steps == 1) {
    text_.appendStep(got.text);
    return;
  }
  const long half = steps / 2;
  Reference<css::text::XTextCursor> middle = clone(from);
  advance(middle, half, false);
  const Stretch first = between(from, middle);
  Stretch second;
  if (got.complete && first.complete && got.text.compare(0, first.text.size(), first.text) == 0)
    second = {got.text.substr(first.text.size()), true, {}};
  else
    second = between(middle, to);
  readChunk(from, half, middle, first);
  readChunk(middle, steps - half, to, second);
}

bool WriterDocument::hasTables() {
  Reference<css::text::XTextTablesSupplier> supplier(doc_, UNO_QUERY);
  if (!supplier.is()) return false;
  Reference<css::container::XIndexAccess> all(supplier->getTextTables(), UNO_QUERY);
  return all.is() && all->getCount() > 0;
}

// Each table of the body text: the first step whose walk is put behind it,
// and where that is.
void WriterDocument::locateTables() {
  Reference<css::container::XIndexAccess> all(
      Reference<css::text::XTextTablesSupplier>(doc_, UNO_QUERY_THROW)->getTextTables(), UNO_QUERY_THROW);
  for (sal_Int32 i = 0; i < all->getCount(); ++i) {
    Reference<css::text::XTextContent> table(all->getByIndex(i), UNO_QUERY);
    if (!table.is()) continue;
    try {
      const Reference<css::text::XTextRange> anchor = table->getAnchor();
      const Base base = baseFor(anchor);
      auto walked = [&](long s) {
        Reference<css::text::XTextCursor> probe = clone(base.cursor);
        advance(probe, s - base.step, false);
        return probe;
      };
      long a = base.step, b = base.limit;
      while (a < b) {
        const long m = (a + b) / 2;
        if (compare_->compareRegionStarts(range(walked(m)), anchor) < 0) b = m;
        else a = m + 1;
      }
      const long end = stepOf(range(walked(a)));
      if (end > a) tables_.push_back({a, end});
    } catch (const css::lang::IllegalArgumentException&) {
      // A table in a frame, a header or another table: not in the body text.
    }
  }
  std::sort(tables_.begin(), tables_.end(), [](const Table& x, const Table& y) { return x.start < y.start; });
}

// Writer reads a manual line break and a paragraph break alike; its search
// tells them apart. Breaks outside the body text (frames, headers) are not
// part of the script as the service sees it.
void WriterDocument::markLineBreaks() {
  Reference<css::util::XSearchable> search(doc_, UNO_QUERY);
  if (!search.is()) return;
  Reference<css::util::XSearchDescriptor> what = search->createSearchDescriptor();
  what->setSearchString("\\n");
  Reference<css::beans::XPropertySet>(what, UNO_QUERY_THROW)->setPropertyValue("SearchRegularExpression", Any(true));
  Reference<css::container::XIndexAccess> found = search->findAll(what);
  const sal_Int32 count = found.is() ? found->getCount() : 0;
  for (sal_Int32 i = 0; i < count; ++i) {
    Reference<css::text::XTextRange> r(found->getByIndex(i), UNO_QUERY);
    if (!r.is()) continue;
    try {
      text_.markLineBreak(text_.offsetOfStep(stepOf(r->getStart())));
    } catch (const css::lang::IllegalArgumentException&) {
    }
  }
}

}  // namespace quillon::uno
