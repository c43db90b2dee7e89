#include <gtest/gtest.h>

#include "formats/merge.h"
#include "formats_fixture.h"
#include "script/document_files.h"

namespace quillon {
namespace {

using testing::FormatsStation;

const char16_t* kTiming =
    u"0001\t10:00:01:00\t10:00:03:00\n"
    u"0002\t10:00:04:00\t10:00:06:00\n"
    u"0002.A\t10:00:06:05\t10:00:08:00\n"
    u"0003\t10:00:09:00\t10:00:11:00\n";

// A station with kTiming loaded, ready for a text to merge.
struct Loaded : FormatsStation {
  Loaded() {
    open(kTiming);
    EXPECT_TRUE(cargarTiming(st));
  }
};

TEST(TimingLoad, EntriesCardsAndTheClosingMessage) {
  FormatsStation t;
  prepareMergeMenus(t.st);
  EXPECT_FALSE(t.st.view.menu("mnu_sub_mge_mge").enabled);
  EXPECT_FALSE(t.st.view.menu("mnu_sub_mge_off").enabled);
  t.open(kTiming);
  ASSERT_TRUE(cargarTiming(t.st));
  EXPECT_EQ(t.ui.lastBox().text, u"Operation complete. Last subtitle loaded: 3. ");
  EXPECT_EQ(t.ui.lastBox().icon, Icon::None);
  EXPECT_TRUE(t.st.view.menu("mnu_sub_mge_mge").enabled);
  EXPECT_EQ(t.st.s.lastTimingNumber, 3);
  EXPECT_DOUBLE_EQ(t.st.s.timingIn[2], 36004);
  EXPECT_TRUE(t.st.s.timingHasCard[2]);
  EXPECT_DOUBLE_EQ(t.st.s.cardTimes.at(1 * 20000 + 2).first, 36006.2);
}

TEST(TimingLoad, RefusalsAndFormatError) {
  const std::pair<const char16_t*, const char16_t*> cases[] = {
      {u"0001\tshor", u"Subtitle File Error: No subtitles loaded. "},  // ten characters with the paragraph mark
      {u"0001\t10:00:01:00\t10:00:03:00\n", u"Subtitle File Error: No subtitles loaded. "},  // a single entry
      {u"Header text\n0001\t10:00:01:00\t10:00:03:00\n0002\tNOT A TIMECODE\n", u"Format error in timing file."},
  };
  for (const auto& [text, box] : cases) {
    FormatsStation t;
    t.open(text);
    EXPECT_FALSE(cargarTiming(t.st));
    EXPECT_EQ(t.ui.boxTexts().back(), box);
    EXPECT_EQ(t.ui.lastBox().icon, Icon::Exclamation);
  }
}

TEST(TimingMerge, TagsNumberedParagraphsAndReportsGaps) {
  Loaded t;
  MemoryDocument& text = t.open(
      u"12\nNot a number: too short.\n0001\nUno\n\n0003\nTres\n\n0003.A\nCard of three\n\n0003.C\nSkipped B\n\n"
      u"0007.A\nNo timing\n\n0000\nZero\n\n\n\n\n\n\n\n\n\n\n\n");
  u16 report = mergeTiming(t.st);
  EXPECT_EQ(report,
            u"Warning: Missing subtitle(s): 2\r"
            u"Warning: Invalid time code in subtitle: 0003.A.\r"
            u"Warning: Missing card subtitle(s): 3.B\r"
            u"Warning: Invalid time code in subtitle: 0003.C.\r"
            u"Warning: Missing card subtitle(s): 7.D\r"
            u"Warning: Invalid time code in subtitle: 0007.A.\r"
            u"Error: Subtitle number out of range: normal[0000]\r"
            u"Warning: Different number of subtitles in timing file (3) and text files (7).\r");
  EXPECT_EQ(t.ui.lastBox().text, u"MERGE OPERATION DISCREPANCY REPORT\r\r" + report);
  EXPECT_EQ(t.ui.clip, report);
  EXPECT_TRUE(t.st.view.panel(3).text.empty());
  // The last digit of the number stands in the position field.
  EXPECT_TRUE(testing::matchesGolden("merge_text.txt", plainTextBytes(text)));
}

TEST(TimingMerge, CleanMergeAndTheWalkStopsAtTheFirstParagraphCount) {
  Loaded t;
  MemoryDocument& text = t.open(u"0001\nUno\n0002\nDos\n0002.A\nDos A\n0003\nTres\n\n\n\n");
  EXPECT_EQ(mergeTiming(t.st), u"");
  EXPECT_EQ(t.ui.lastBox().text, u"MERGE OPERATION COMPLETED SUCCESSFULLY.");
  EXPECT_EQ(plainTextBytes(text),
            "SUB[1 N 10:00:01:00>10:00:03:00] \n0001\nUno\nSUB[2 N 10:00:04:00>10:00:06:00] \n0002\nDos\n"
            "SUB[2 N 10:00:06:05>10:00:08:00] \n0002.A\nDos A\nSUB[3 N 10:00:09:00>10:00:11:00] \n0003\nTres\n\n\n\n");

  // Paragraphs are counted once, before the tags add theirs: without room
  // behind it the last number is not reached, and the report says so.
  Loaded u;
  u.open(u"0001\nUno\n0002\nDos\n0002.A\nDos A\n0003\nTres\n");
  EXPECT_EQ(mergeTiming(u.st), u"Warning: Different number of subtitles in timing file (3) and text files (2).\r");

}

}  // namespace
}  // namespace quillon
