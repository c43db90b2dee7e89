// The station's document against the one-buffer reference: random scripts,
// random edits, finds and replacements through the document service, and
// after every step the same text, selection, paragraphs and italics.
#include <gtest/gtest.h>

#include <random>

#include "script/memory_document.h"
#include "support/reference_document.h"

namespace quillon::testing {
namespace {

const char16_t* const kPieces[] = {u"SUB[0 N 00:00:01:00>00:00:02:00]", u"SUB[2LI 00:00:01;00>00:00:02:00] note",
                                   u"DUB[0 N 00:00:03:00>00:00:04:00] ANA", u"Hello there", u"^", u"a b",
                                   u"", u"x", u"SUB[", u"Line two of it"};

struct Rng {
  std::mt19937 g;
  explicit Rng(unsigned seed) : g(seed) {}
  long upTo(long n) { return std::uniform_int_distribution<long>(0, std::max(0L, n))(g); }
  bool coin() { return upTo(1) == 1; }
  u16 paragraphs(long count) {
    u16 out;
    for (long i = 0; i < count; ++i) out += u16(kPieces[upTo(9)]) + CR;
    return out;
  }
  // Short texts mostly; now and then one long enough to span many chunks.
  u16 insertion() { return upTo(20) == 0 ? paragraphs(200 + upTo(400)) : paragraphs(upTo(2)) + kPieces[upTo(9)]; }
  TextRange range(long len, long most) {
    const long a = upTo(len);
    return {a, std::min(len, a + upTo(most))};
  }
};

// A find text met in the document, sometimes with a wildcard in it, or one
// that is nowhere.
u16 findTextFrom(Rng& r, DocumentService& d) {
  if (r.upTo(5) == 0) return u"absent^?";
  const long len = d.length();
  u16 t = d.text(r.range(len, 12));
  if (t.empty()) return u"SUB[";
  if (r.coin()) t.replace(static_cast<size_t>(r.upTo(static_cast<long>(t.size()) - 1)), 1, u"^?");
  return t;
}

// One random edit, find or move, to be made on both documents.
struct Step {
  long kind;
  TextRange range;
  u16 text;
  bool flag;
  FindRequest find;
  // The find's result; false for everything else.
  bool on(DocumentService& d) const {
    switch (kind) {
      case 0: d.insertText(range.start, text, flag, !flag); break;
      case 1: d.eraseText(range); break;
      case 2: d.replaceText(range, text, flag); break;
      case 3: d.setItalic(range, flag); break;
      case 4: d.setSelectionRange(range); break;
      case 5: d.selectNext(flag ? wdParagraph : wdCharacter, 1 + range.length() % 3); break;
      case 6: d.moveRight(wdCharacter, range.length(), flag); break;
      default: return d.execute(find);
    }
    return false;
  }
};

void expectSame(Rng& r, MemoryDocumentService& a, ReferenceDocumentService& b, bool whole) {
  ASSERT_EQ(a.length(), b.length());
  ASSERT_EQ(a.selectionRange(), b.selectionRange());
  ASSERT_EQ(a.paragraphsCount(), b.paragraphsCount());
  const long len = a.length();
  const long n = 1 + r.upTo(a.paragraphsCount() - 1);
  ASSERT_EQ(a.paragraphRange(n), b.paragraphRange(n)) << n;
  const long at = r.upTo(len + 2) - 1;
  ASSERT_EQ(a.paragraphIndexAt(at), b.paragraphIndexAt(at)) << at;
  const TextRange some = r.range(len, 40);
  ASSERT_EQ(a.text(some), b.text(some));
  ASSERT_EQ(a.italicAt(some), b.italicAt(some));
  if (!whole) return;
  ASSERT_EQ(a.content(), b.content());
  ASSERT_EQ(a.active()->italicFlags(), b.italics());
}

TEST(DocumentDifferential, RandomEditsAndFindsGiveWhatTheOneBufferDocumentGives) {
  struct Case {
    unsigned seed;
    long paragraphs, steps, wholeEvery;
  } cases[] = {{1, 3, 1500, 1}, {2, 400, 1500, 25}, {3, 12000, 300, 100}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.seed);
    Rng r(c.seed);
    const u16 script = r.paragraphs(c.paragraphs);
    MemoryDocumentService mine;
    mine.addDocument(std::make_unique<MemoryDocument>()).setText(script);
    ReferenceDocumentService ref(script);
    for (long s = 0; s < c.steps; ++s) {
      Step step{r.upTo(8), {}, r.insertion(), r.coin(), {}};
      step.range = r.range(mine.length(), step.kind == 1 && r.upTo(10) == 0 ? 20000 : 30);
      step.find.findText = findTextFrom(r, mine);
      step.find.forward = r.upTo(3) != 0;
      step.find.wrap = r.coin();
      step.find.matchCase = r.upTo(3) != 0;
      if (r.coin()) step.find.replaceWith = step.text.substr(0, 8);
      // Replacing every match costs the reference the whole text each time.
      step.find.replace = r.upTo(4) == 0 && mine.length() < 40000 ? ReplaceMode::All : ReplaceMode::One;
      EXPECT_EQ(step.on(mine), step.on(ref)) << toUtf8(step.find.findText);
      expectSame(r, mine, ref, s % c.wholeEvery == 0 || s + 1 == c.steps);
      if (::testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(DocumentDifferential, UndoWalksBackThroughEveryStateOfALongScript) {
  Rng r(9);
  MemoryDocument d;
  d.setText(r.paragraphs(3000));
  std::vector<std::pair<u16, std::vector<uint8_t>>> states;
  for (int s = 0; s < 300; ++s) {
    states.emplace_back(d.text(), d.italicFlags());
    const TextRange range = r.range(d.length(), r.upTo(8) == 0 ? 5000 : 40);
    if (r.coin())
      d.insert(range.start, r.insertion(), r.coin(), r.coin());
    else
      d.erase(range);
    if (d.undoDepth() < states.size()) states.pop_back();  // nothing was done
  }
  while (!states.empty()) {
    ASSERT_TRUE(d.undo());
    ASSERT_EQ(d.text(), states.back().first) << states.size();
    ASSERT_EQ(d.italicFlags(), states.back().second) << states.size();
    states.pop_back();
  }
  EXPECT_FALSE(d.undo());
}

}  // namespace
}  // namespace quillon::testing
