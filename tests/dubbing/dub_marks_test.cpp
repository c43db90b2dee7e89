#include <gtest/gtest.h>

#include "dubbing/dub_marks.h"
#include "dubbing/roster.h"
#include "subtitling/playing_station.h"

namespace quillon {
namespace {

using testing::PlayingStation;

// A dubbing session: the video plays, the operator presses the menu's mark
// at given times, and the work goes on after each tag.
struct DubbingBlocks : ::testing::Test {
  PlayingStation t;
  std::vector<u16> captions;
  void SetUp() override {
    Session& s = t.st.s;
    s.switchToWordProcessor = false;
    s.characterWindow = false;
    s.dub_voz_on = true;
    t.open(u"First line\r\rSecond line\r\rThird line\r\r");
    t.docs.select({0, 0});
    resumevideo(t.st);
  }
  void pressAt(double at) {
    t.when(at, [this] {
      mnu_dub_blo(t.st);
      captions.push_back(t.st.view.menu("mnu_dub_blo").caption);
    });
  }
};

TEST_F(DubbingBlocks, LongTagsFromTwoMarksEach) {
  pressAt(2.0);
  u16 panelBetween;
  t.when(3.0, [&] { panelBetween = t.st.view.panel(8).text; });
  pressAt(5.0);
  pressAt(6.0);
  pressAt(8.0);
  t.playActions();
  // The first tag goes in at the cursor; after it the next dialogue is
  // selected, and a tag behind a selected paragraph lands after its mark.
  EXPECT_EQ(t.content(), u"DUB[0 N 00:00:01:20>00:00:04:20] First line\r\r"
                         u"Second line\rDUB[0 N 00:00:05:20>00:00:07:20] \rThird line\r\r");
  EXPECT_EQ(captions, (std::vector<u16>{u"Cue out", u"Cue-in", u"Cue out", u"Cue-in"}));
  EXPECT_EQ(panelBetween, u"Cue-out...");
  EXPECT_EQ(t.st.view.panel(8).text, u"");
  EXPECT_EQ(t.st.s.blockStart, 0);
  EXPECT_TRUE(t.st.s.g_fVideoRun);  // the work goes on
}

TEST_F(DubbingBlocks, ASecondMarkAfterAJumpBackKeepsTheBlockOpen) {
  pressAt(4.0);
  t.when(4.5, [this] { ira(t.st, 1.0); });
  pressAt(2.0);  // now earlier than the open mark
  pressAt(6.0);
  t.playActions();
  EXPECT_EQ(captions, (std::vector<u16>{u"Cue out", u"Cue-in", u"Cue-in"}));
  EXPECT_EQ(t.content(), u"DUB[0 N 00:00:03:20>00:00:05:20] First line\r\rSecond line\r\rThird line\r\r");
}

TEST_F(DubbingBlocks, TheCharacterChoiceWritesTheNameAndTheVideoWaits) {
  Session& s = t.st.s;
  s.characterWindow = true;
  s.dub_voz_on = false;
  createchar(t.st, u"ANNA");
  createchar(t.st, u"BORIS");
  s.pickingList.items = {u"ANNA", u"BORIS"};
  pressAt(2.0);
  pressAt(4.0);
  t.playActions();
  // The block waits on the picking form, the video stopped at the mark.
  EXPECT_TRUE(s.pickingFormVisible);
  EXPECT_FALSE(s.g_fVideoRun);
  EXPECT_EQ(t.content(), u"First line\r\rSecond line\r\rThird line\r\r");
  s.pickingList.listIndex = 1;
  formaPerAceptar(t.st);
  EXPECT_EQ(left(t.content(), 41), u"DUB[0 F 00:00:01:20>00:00:03:20] BORIS\rFi");
  EXPECT_EQ(s.roster.vozactual, 2);
  EXPECT_TRUE(s.g_fVideoRun);
}

}  // namespace
}  // namespace quillon
