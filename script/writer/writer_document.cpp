#include "script/writer/writer_document.h"

#include <algorithm>

#include <cppuhelper/implbase2.hxx>

#include <com/sun/star/awt/FontSlant.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/util/XModifyBroadcaster.hpp>
#include <com/sun/star/util/XModifyListener.hpp>
#include <com/sun/star/view/XSelectionChangeListener.hpp>

namespace quillon::uno {

namespace {

class Watcher : public cppu::WeakImplHelper2<css::util::XModifyListener, css::view::XSelectionChangeListener> {
 public:
  explicit Watcher(std::shared_ptr<DocumentEvents> events) : events_(std::move(events)) {}
  void SAL_CALL modified(const css::lang::EventObject&) override { ++events_->changes; }
  void SAL_CALL selectionChanged(const css::lang::EventObject&) override { ++events_->selections; }
  void SAL_CALL disposing(const css::lang::EventObject&) override { events_->closed = true; }

 private:
  std::shared_ptr<DocumentEvents> events_;
};

bool slanted(const Any& posture) {
  css::awt::FontSlant s = css::awt::FontSlant_NONE;
  return (posture >>= s) && (s == css::awt::FontSlant_ITALIC || s == css::awt::FontSlant_OBLIQUE);
}

Any slant(bool italic) { return Any(italic ? css::awt::FontSlant_ITALIC : css::awt::FontSlant_NONE); }

Reference<css::beans::XPropertySet> propertiesOf(const Reference<css::text::XTextCursor>& c) {
  return Reference<css::beans::XPropertySet>(c, UNO_QUERY_THROW);
}

bool onlyParagraphMarks(u16v t) { return t.find_first_not_of(CR) == u16v::npos; }

// Where a selection's ends go when `n` characters come in at `pos`: the
// station's rule (a selection grows only from within; `stickLeft` keeps a
// place at `pos` before the text) or Writer's (everything at `pos` moves).
void afterInsert(TextRange& s, long pos, long n, bool stickLeft) {
  const bool collapsed = s.collapsed();
  if (s.start > pos || (s.start == pos && !stickLeft)) s.start += n;
  if (collapsed) s.end = s.start;
  else if (s.end > pos) s.end += n;
}

void writerAfterInsert(TextRange& s, long pos, long n) {
  if (s.start >= pos) s.start += n;
  if (s.end >= pos) s.end += n;
}

void afterErase(TextRange& s, long a, long b) {
  auto fix = [&](long& p) {
    if (p >= b) p -= b - a;
    else if (p > a) p = a;
  };
  fix(s.start);
  fix(s.end);
}

}  // namespace

bool advance(const Reference<css::text::XTextCursor>& c, long steps, bool extend) {
  while (steps > 0) {
    const long k = std::min(steps, kMaxMove);
    if (!c->goRight(static_cast<sal_Int16>(k), extend)) return false;
    steps -= k;
  }
  return true;
}

WriterDocument::WriterDocument(const Reference<css::text::XTextDocument>& doc)
    : doc_(doc), events_(std::make_shared<DocumentEvents>()) {
  model_.set(doc, UNO_QUERY_THROW);
  body_ = doc->getText();
  compare_.set(body_, UNO_QUERY_THROW);
  if (Reference<css::frame::XController> controller = model_->getCurrentController(); controller.is())
    selector_.set(controller, UNO_QUERY);
  if (selector_.is()) views_ = std::make_unique<ViewUpdates>(model_, selector_);
  auto* watcher = new Watcher(events_);
  watcher_ = static_cast<cppu::OWeakObject*>(watcher);
  Reference<css::util::XModifyBroadcaster>(doc, UNO_QUERY_THROW)->addModifyListener(watcher);
  if (selector_.is()) selector_->addSelectionChangeListener(watcher);
}

WriterDocument::~WriterDocument() {
  views_.reset();
  if (!open()) return;
  try {
    Reference<css::util::XModifyListener> asModify(watcher_, UNO_QUERY);
    Reference<css::view::XSelectionChangeListener> asSelection(watcher_, UNO_QUERY);
    Reference<css::util::XModifyBroadcaster>(doc_, UNO_QUERY_THROW)->removeModifyListener(asModify);
    if (selector_.is()) selector_->removeSelectionChangeListener(asSelection);
  } catch (const css::uno::Exception&) {
    // The office has gone; there is nothing left to stop listening to.
  }
}

Reference<css::text::XTextCursor> WriterDocument::clone(const Reference<css::text::XTextCursor>& c) {
  return body_->createTextCursorByRange(range(c));
}

Reference<css::text::XTextCursor> WriterDocument::startCursor() {
  Reference<css::text::XTextCursor> c = body_->createTextCursor();
  c->gotoStart(false);
  return c;
}

const WriterText& WriterDocument::text() {
  if (!fresh_ || events_->changes != seenChanges_) read();
  return text_;
}

WriterDocument::Base WriterDocument::baseFor(const Reference<css::text::XTextRange>& position) {
  size_t lo = 0, hi = landmarks_.size();
  while (lo < hi) {
    const size_t mid = (lo + hi) / 2;
    if (compare_->compareRegionStarts(range(landmarks_[mid].cursor), position) >= 0) lo = mid + 1;
    else hi = mid;
  }
  return {lo > 0 ? landmarks_[lo - 1].cursor : startCursor(), lo > 0 ? landmarks_[lo - 1].step : 0,
          lo < landmarks_.size() ? landmarks_[lo].step : text_.steps()};
}

long WriterDocument::stepOf(const Reference<css::text::XTextRange>& position) {
  const Base base = baseFor(position);
  // The text between gives the steps unless it holds an odd step, which a
  // search by comparison settles.
  auto compareAt = [&](long s) {
    Reference<css::text::XTextCursor> probe = clone(base.cursor);
    advance(probe, s - base.step, false);
    return compare_->compareRegionStarts(range(probe), position);
  };
  Reference<css::text::XTextCursor> span = clone(base.cursor);
  span->gotoRange(position, true);
  const long guess = base.step + writerSteps(fromOu(span->getString()));
  if (guess <= base.limit && compareAt(guess) == 0) return guess;
  long a = base.step, b = base.limit;
  while (a < b) {
    const long m = (a + b) / 2;
    const sal_Int16 c = compareAt(m);
    if (c == 0) return m;
    if (c > 0) a = m + 1;
    else b = m;
  }
  return a;
}

const WriterDocument::Table* WriterDocument::tableAt(long step) const {
  auto it = std::upper_bound(tables_.begin(), tables_.end(), step, [](long s, const Table& t) { return s < t.start; });
  if (it == tables_.begin()) return nullptr;
  --it;
  return step < it->end ? &*it : nullptr;
}

Reference<css::text::XTextCursor> WriterDocument::cursorAtSteps(long a, long b, bool forEdit) {
  const long total = text_.steps();
  a = std::clamp(a, 0L, total);
  b = std::clamp(b, a, total);
  if (tableAt(a) || tableAt(b)) throw InsideTable();
  if (forEdit && b > a)
    for (const Table& t : tables_)
      if (t.start > a && t.start < b) throw InsideTable();
  auto after = std::upper_bound(landmarks_.begin(), landmarks_.end(), a,
                                [](long s, const Landmark& l) { return s < l.step; });
  Reference<css::text::XTextCursor> c;
  long at = 0;
  if (after == landmarks_.begin()) {
    c = startCursor();
  } else {
    c = clone(std::prev(after)->cursor);
    at = std::prev(after)->step;
  }
  while (a - at > kChunk) {
    // A cursor left in a table would stand behind it: leave it there.
    long next = at + kChunk;
    if (const Table* t = tableAt(next)) next = t->end;
    if (next >= a) break;
    advance(c, next - at, false);
    at = next;
    after = std::next(landmarks_.insert(after, {at, clone(c)}));
  }
  advance(c, a - at, false);
  if (b > a) advance(c, b - a, true);
  return c;
}

Reference<css::text::XTextCursor> WriterDocument::cursorAt(TextRange r, bool forEdit) {
  return cursorAtSteps(text_.stepsTo(r.start), text_.stepsTo(r.end), forEdit);
}

void WriterDocument::shiftPlaces(long step, long removed, long inserted) {
  // Cursors inside the replaced stretch or at its edges are dropped rather
  // than guessed at; the others move with the text, as do the tables.
  std::vector<Landmark> kept;
  kept.reserve(landmarks_.size());
  for (auto& l : landmarks_) {
    if (l.step >= step && l.step <= step + removed) continue;
    if (l.step > step) l.step += inserted - removed;
    kept.push_back(std::move(l));
  }
  landmarks_ = std::move(kept);
  for (Table& t : tables_)
    if (t.start > step) {
      t.start += inserted - removed;
      t.end += inserted - removed;
    }
}

// Writer's selection as text ranges of the model: its view cursor would
// have Writer lay the document out first.
Reference<css::text::XTextRange> WriterDocument::writersSelection() {
  if (!selector_.is()) return {};
  Reference<css::container::XIndexAccess> ranges(selector_->getSelection(), UNO_QUERY);
  if (!ranges.is() || ranges->getCount() < 1) return {};
  return Reference<css::text::XTextRange>(ranges->getByIndex(0), UNO_QUERY);
}

// The selection the service last made, unless Writer says it has moved:
// the operator's own, read back from Writer. Writer also reports the moves
// its own edits make, later; the cursor the service selected with moves
// alike, so a selection still on it is still the service's.
TextRange WriterDocument::selection() {
  if (selKnown_ && events_->selections == seenSelections_) return sel_;
  const long seen = events_->selections;
  text();
  showSelection();
  try {
    Reference<css::text::XTextRange> now = writersSelection();
    const bool same = now.is() && selKnown_ && selCursor_.is() &&
                      compare_->compareRegionStarts(range(selCursor_), now) == 0 &&
                      compare_->compareRegionEnds(range(selCursor_), now) == 0;
    if (now.is() && !same) {
      const long a = stepOf(now->getStart());
      const long b = stepOf(now->getEnd());
      sel_ = {text_.offsetOfStep(std::min(a, b)), text_.offsetOfStep(std::max(a, b))};
      selCursor_ = body_->createTextCursorByRange(now);
    }
  } catch (const css::lang::IllegalArgumentException&) {
    // The operator's cursor is in a table, a frame or a note: the last
    // place the service knew stands.
  }
  selKnown_ = true;
  seenSelections_ = seen;
  return sel_;
}

void WriterDocument::showSelection() {
  if (views_) views_->flush();
}

void WriterDocument::select(TextRange r) {
  const WriterText& t = text();
  const long a = std::clamp(r.start, 0L, t.length());
  const long b = std::clamp(r.end, a, t.length());
  // A selection in a table is the station's alone: Writer's body cursor
  // cannot stand there.
  try {
    Reference<css::text::XTextCursor> c = cursorAt({a, b}, false);
    if (views_) views_->select(range(c));
    selCursor_ = c;
  } catch (const InsideTable&) {
    selCursor_.clear();
  }
  sel_ = {a, b};
  selKnown_ = true;
  seenSelections_ = events_->selections;
}

void WriterDocument::afterOwnCall(bool wasFresh) {
  if (wasFresh) seenChanges_ = events_->changes;
}

void WriterDocument::replace(TextRange r, u16v t, bool stickLeft, bool italic) {
  const WriterText& cur = text();
  const long a = std::clamp(r.start, 0L, cur.length() - 1);  // the final mark stays
  const long b = std::clamp(r.end, a, cur.length() - 1);
  if (a == b && t.empty()) return;
  const TextRange before = selection();
  const bool selectionFresh = events_->selections == seenSelections_;
  const long stepA = text_.stepsTo(a), stepB = text_.stepsTo(b);

  {
    Reference<css::text::XTextCursor> c = cursorAtSteps(stepA, stepB, true);
    const bool wasFresh = events_->changes == seenChanges_;
    if (views_) views_->holdViews();
    c->setString(ou(toWriterText(t)));
    afterOwnCall(wasFresh);
    text_.erase({a, b});
    text_.insert(a, t);
    shiftPlaces(stepA, stepB - stepA, writerSteps(t));

    // Writer's insertion takes the formatting of its place; the station's
    // takes the one asked for. A paragraph mark has none of its own.
    long marks = 0;
    while (marks < static_cast<long>(t.size()) && t[t.size() - 1 - static_cast<size_t>(marks)] == CR) ++marks;
    if (!onlyParagraphMarks(t)) {
      if (marks > 0) c->goLeft(static_cast<sal_Int16>(marks), true);
      if (slanted(propertiesOf(c)->getPropertyValue("CharPosture")) != italic) {
        propertiesOf(c)->setPropertyValue("CharPosture", slant(italic));
        afterOwnCall(wasFresh);
      }
    }
  }

  const long n = static_cast<long>(t.size());
  TextRange ours = before, writers = before;
  afterErase(ours, a, b);
  afterInsert(ours, a, n, stickLeft);
  afterErase(writers, a, b);
  writerAfterInsert(writers, a, n);
  sel_ = ours;
  if (selectionFresh) seenSelections_ = events_->selections;
  if (!(ours == writers) && selectionFresh) select(ours);
}

bool WriterDocument::italic(TextRange r) {
  const WriterText& t = text();
  long a = std::clamp(r.start, 0L, t.length());
  long b = std::clamp(r.end, a, t.length());
  if (a == b) b = std::min(a + 1, t.length());
  // A paragraph's own mark carries no formatting of its own.
  while (b > a && t.text()[static_cast<size_t>(b - 1)] == CR) --b;
  if (a == b || onlyParagraphMarks(t.text({a, b}))) return false;
  return slanted(propertiesOf(cursorAt({a, b}, false))->getPropertyValue("CharPosture"));
}

void WriterDocument::setItalic(TextRange r, bool on) {
  const WriterText& t = text();
  const long a = std::clamp(r.start, 0L, t.length());
  const long b = std::clamp(r.end, a, t.length());
  if (a == b) return;
  const bool wasFresh = events_->changes == seenChanges_;
  if (views_) views_->holdViews();
  propertiesOf(cursorAt({a, b}, true))->setPropertyValue("CharPosture", slant(on));
  afterOwnCall(wasFresh);
}

Any WriterDocument::wholeTextProperty(const char* name) {
  Reference<css::text::XTextCursor> c = startCursor();
  c->gotoEnd(true);
  return propertiesOf(c)->getPropertyValue(OUString::createFromAscii(name));
}

void WriterDocument::setWholeTextProperty(const char* name, const Any& value) {
  const bool wasFresh = fresh_ && events_->changes == seenChanges_;
  if (views_) views_->holdViews();
  Reference<css::text::XTextCursor> c = startCursor();
  c->gotoEnd(true);
  propertiesOf(c)->setPropertyValue(OUString::createFromAscii(name), value);
  afterOwnCall(wasFresh);
}

}  // namespace quillon::uno
