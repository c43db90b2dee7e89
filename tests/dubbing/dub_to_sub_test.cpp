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

  ASSERT_TRUE(scanSubtitles(ts.st, 0));
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
  EXPECT_EQ(ts.st.s.scan.subtitleCount, 1.0);
  EXPECT_TRUE(startsWith(ts.content(), u"SUB[0 N 00:00:01:00>00:00:03:00] \rHola.\r\rDUB[0 N 00:00:04:00"));
  EXPECT_EQ(ts.ui.pointer, Pointer::Hourglass);
}

}  // namespace
}  // namespace quillon
