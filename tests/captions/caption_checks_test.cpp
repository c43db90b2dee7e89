#include <gtest/gtest.h>

#include "captions/caption_checks.h"
#include "script/document_service.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

struct CaptionScan : ::testing::Test {
  testing::TestStation ts;
  void SetUp() override { installCaptionChecks(ts.st); }
  bool scan(std::u16string_view text) {
    ts.open(text);
    return scanCaptions(ts.st, ScanMode::WholeScript);
  }
  u16 selected() { return ts.docs.selection(); }
};

// Each rule once at its limit and once past it: the box, the entries read,
// and where the cursor is left.
TEST_F(CaptionScan, EachRuleStopsTheScanWithItsBox) {
  const u16 row33 = u"abcdefghijklmnopqrstuvwxyz0123456";
  const struct {
    const char* name;
    double minOnAir;
    u16 script;
    u16 box;  // empty: the scan passes
    u16 selected;
  } cases[] = {
      {"limits exactly", 1, u"CAP[0NC 00:00:01:00>00:00:02:00]\nA\n\nCAP[0NC 00:00:03:00>00:00:09:00]\n" +
                                u16(32, u'x') + u"\n", u"", u""},
      {"row of 33", 1, u"CAP[0NC 00:00:01:00>00:00:03:00]\nshort\n" + row33 + u"\n",
       u"Error: Maximum number of characters per row (32) exceeded in2 of caption in [00:00:01:00]\r"
       u"abcdefghijklmnopqrstuvwxyz012345",
       row33},
      {"too short", 1.5, u"CAP[0NC 00:00:01:00>00:00:02:00]\nFirst row\nSecond row\n",
       u"Minimum On-air duration violation in [00:00:01:00]\rFirst row\r"
       u"Please allow captions at least 1.50 sec. on the air.",
       u"00:00:02:00]"},
      {"too long", 1, u"CAP[0NC 00:00:01:00>00:00:07:01]\nRow\n",
       u"On-air duration violation in [00:00:01:00]\rCue-out for:\rRow\roccurs too late.\r"
       u"Please maintain subtitles for less than 6.00 sec. on the air.",
       u"00:00:01:00>"},
      {"backwards", 1, u"CAP[0NC 00:00:05:00>00:00:04:00]\nBackwards\n",
       u"Time code sequence error in [00:00:05:00]\rCue-out for:\rBackwards\r"
       u"occurs before cue-in for same subtitle.",
       u"00:00:04:00]"},
      // Cue-in 0: neither duration rule applies, even for twenty seconds.
      {"zero cue-in", 1, u"CAP[0NC 00:00:00:00>00:00:20:00]\nOpen\n", u"", u""},
      // Duration comes before row length.
      {"short and wide", 1, u"CAP[0NC 00:00:01:00>00:00:01:10]\n" + u16(40, u'y') + u"\n",
       u"Minimum On-air duration violation in [00:00:01:00]\r" + u16(40, u'y') +
           u"\rPlease allow captions at least 1.00 sec. on the air.",
       u"00:00:01:10]"},
      {"misplaced bracket", 1, u"CAP[0NC 00:00:01:00 >00:00:03:00]\nRow\n",
       u"Header format error in :\r\rCAP[0NC 00:00:01:00 >00:00:03:...\r\r", u""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ts.ui.boxes.clear();
    ts.st.s.minCaptionOnAir = c.minOnAir;
    EXPECT_EQ(scan(c.script), c.box.empty());
    EXPECT_EQ(ts.ui.boxTexts(), c.box.empty() ? std::vector<u16>{} : std::vector<u16>{c.box});
    if (c.box.empty()) continue;
    EXPECT_EQ(ts.ui.lastBox().icon, Icon::Critical);
    EXPECT_EQ(ts.st.s.scan.subtitleCount, 1);
    if (!c.selected.empty()) {
      EXPECT_EQ(selected(), c.selected);
    }
  }
}

}  // namespace
}  // namespace quillon
