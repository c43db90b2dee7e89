#include <gtest/gtest.h>

#include "dubbing/dub_to_sub.h"
#include "subtitling/subtitling_fixture.h"

namespace quillon::testing {
namespace {

// Each long tag becomes a subtitle tag without the name, converted once
// where it stands, also where a search for it could be misled: a name that
// begins another, a tag quoted in the text or inside another tag's start,
// a stop tag between; a one-letter name stops it, the tags before it
// converted. What each script becomes, and the boxes shown, are in
// golden/dub_to_sub.txt.
TEST(DubToSub, EachLongTagBecomesASubtitleTagWithoutTheName) {
  const u16 tag = u"DUB[0 N 00:00:01:00>00:00:03:00] ";
  const u16 scripts[] = {
      u"DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\nDUB[0 F 00:00:04:00>00:00:06:00] PEDRO\nQue tal.\n\n"
      u"DUB[\nnot a tag\n\nDUB[0 N 00:00:07:00>00:00:09:00] ANA\nBien.\n",
      u"SUB[0 N 00:00:01:00>00:00:03:00]\nA subtitle\n",
      tag + u"ANA\nHola.\n\n" + tag + u"ANA\nOtra vez.\n\n" + tag + u"ANABEL\nYo.\n",
      tag + u"ANABEL\nYo.\n\n" + tag + u"ANA\nHola.\n",
      u"Says " + tag + u"ANA in passing\n\n" + tag + u"ANA\nHola.\n",
      u"DUB[DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\n" + tag + u"ANA\nBien.\n",
      tag + u"A^pB\nHola.\n\nDUB[\n" + tag + u"ANA\nBien.\n",
      tag + u"ANA\nHola.\n\nDUB[0 N 00:00:04:00>00:00:06:00] X\nNo.\n\n" + tag + u"ANA\nBien.\n",
  };
  u16 transcript;
  for (const u16& script : scripts) {
    TestStation ts;
    ts.open(script);
    ts.st.s.roster.voces[1] = u"OLD";
    ts.st.s.roster.numvoces = 1;
    const int converted = mnu_DUB_SUB(ts.st);
    const TextRange cursor = ts.st.doc->selectionRange();
    transcript += u"## " + numberText(converted) + u" converted, cursor " + numberText(cursor.start) + u"-" +
                  numberText(cursor.end) + u"\r" + ts.content() + u"\r";
    for (const u16& box : ts.ui.boxTexts()) transcript += u"[box] " + box + u"\r";
    EXPECT_EQ(ts.st.s.roster.numvoces, 0);
  }
  EXPECT_EQ(lines(transcript), golden("dubbing/golden/dub_to_sub.txt"));
}

}  // namespace
}  // namespace quillon::testing
