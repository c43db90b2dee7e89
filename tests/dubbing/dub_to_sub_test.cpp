#include <gtest/gtest.h>

#include "dubbing/dub_to_sub.h"
#include "dubbing/roster.h"
#include "script/document_service.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

TEST(DubToSub, EachLongTagBecomesASubtitleTagWithoutTheName) {
  testing::TestStation ts;
  ts.open(u"DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\n"
          u"DUB[0 F 00:00:04:00>00:00:06:00] PEDRO\nQue tal.\n\n"
          u"DUB[\nnot a tag\n\n"
          u"DUB[0 N 00:00:07:00>00:00:09:00] ANA\nBien.\n");
  ts.st.s.roster.voces[1] = u"OLD";
  ts.st.s.roster.numvoces = 1;
  EXPECT_EQ(mnu_DUB_SUB(ts.st), 3);
  EXPECT_EQ(ts.content(),
            u"SUB[0 N 00:00:01:00>00:00:03:00] \rHola.\r\r"
            u"SUB[0 F 00:00:04:00>00:00:06:00] \rQue tal.\r\r"
            u"DUB[\rnot a tag\r\r"
            u"SUB[0 N 00:00:07:00>00:00:09:00] \rBien.\r");
  EXPECT_EQ(ts.st.s.roster.numvoces, 0);
  EXPECT_EQ(ts.st.s.roster.voces[1], u"");
  EXPECT_TRUE(ts.ui.boxes.empty());

  ASSERT_TRUE(scanSubtitles(ts.st, ScanMode::WholeScript));
  const ScanTable& t = ts.st.s.scan;
  ASSERT_EQ(t.count(), 3);
  for (int i = 1; i <= 3; ++i) EXPECT_TRUE(t.isSubtitle[i]);
  EXPECT_EQ(t.styleChar[2], u'F');
  EXPECT_EQ(t.text[1], u"Hola.\r\r");
  EXPECT_EQ(ts.st.s.roster.numvoces, 0);
}

TEST(DubToSub, NoDubbingTagsChangeNothing) {
  testing::TestStation ts;
  ts.open(u"SUB[0 N 00:00:01:00>00:00:03:00]\nA subtitle\n");
  const u16 before = ts.content();
  EXPECT_EQ(mnu_DUB_SUB(ts.st), 0);
  EXPECT_EQ(ts.content(), before);
  EXPECT_TRUE(ts.ui.boxes.empty());
}

TEST(DubToSub, AOneLetterNameStopsWithTagsBeforeItConverted) {
  testing::TestStation ts;
  ts.open(u"DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\n"
          u"DUB[0 N 00:00:04:00>00:00:06:00] X\nNo.\n\n"
          u"DUB[0 N 00:00:07:00>00:00:09:00] ANA\nBien.\n");
  EXPECT_EQ(mnu_DUB_SUB(ts.st), 1);
  EXPECT_EQ(ts.ui.lastBox().text, u"Error: Invalid format \r[0 N 00:00:04:00>00:00:06:00] X\rN");
  EXPECT_EQ(ts.st.s.scan.subtitleCount, 1);
  EXPECT_TRUE(startsWith(ts.content(), u"SUB[0 N 00:00:01:00>00:00:03:00] \rHola.\r\rDUB[0 N 00:00:04:00"));
  EXPECT_EQ(ts.ui.pointer, Pointer::Hourglass);
}


// The conversion as the rule reads: every tag replaced by a search of the
// whole script from the top. The command skips the reading of the top where
// nothing there can match; scripts that trip that up must come out the same.
void convertFromTheTop(testing::TestStation& ts) {
  DocumentService& d = *ts.st.doc;
  const u16 text = d.content();
  const long len = static_cast<long>(text.size());
  // The second tag is looked for from five characters on, the rest from three.
  bool first = true;
  for (size_t at = text.find(u"DUB["); at != u16::npos; at = text.find(u"DUB[", at + (first ? 5 : 3)), first = false) {
    const long t = static_cast<long>(at);
    if (t + 4 < len && text[at + 4] == CR) continue;
    long n = 0;
    while (n < 255 && t + 33 + n < len && text[static_cast<size_t>(t + 33 + n)] != CR) ++n;
    FindRequest f;
    f.findText = mid(text, t + 1, 33) + mid(text, t + 34, n);
    f.replaceWith = u"S" + mid(text, t + 2, 32);
    f.replace = ReplaceMode::One;
    f.wrap = false;
    d.selectAll();
    d.execute(f);
  }
}

TEST(DubToSub, LikeASearchFromTheTopOnScriptsThatRepeatThemselves) {
  const u16 tag = u"DUB[0 N 00:00:01:00>00:00:03:00] ";
  const std::vector<u16> scripts = {
      tag + u"ANA\nHola.\n\n" + tag + u"ANA\nOtra vez.\n\n" + tag + u"ANABEL\nYo.\n",
      tag + u"ANABEL\nYo.\n\n" + tag + u"ANA\nHola.\n",
      u"Says " + tag + u"ANA in passing\n\n" + tag + u"ANA\nHola.\n",
      u"DUB[DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\n" + tag + u"ANA\nBien.\n",
      tag + u"A^pB\nHola.\n\nDUB[\n" + tag + u"ANA\nBien.\n",
  };
  for (const u16& script : scripts) {
    SCOPED_TRACE(toUtf8(script));
    testing::TestStation fast, reference;
    fast.open(script);
    reference.open(script);
    mnu_DUB_SUB(fast.st);
    convertFromTheTop(reference);
    EXPECT_EQ(fast.content(), reference.content());
    EXPECT_EQ(fast.st.doc->selectionRange(), reference.st.doc->selectionRange());
  }
}

}  // namespace
}  // namespace quillon
