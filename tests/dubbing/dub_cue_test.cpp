#include <gtest/gtest.h>

#include "dubbing/dub_cue.h"
#include "dubbing/roster.h"
#include "script/document_service.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

struct DubCue : ::testing::Test {
  testing::TestStation ts;
  Station& st = ts.st;
  int resumed = 0;
  void SetUp() override {
    ts.open(u"First line\nSecond line\n\nThird line\n");
    st.s.roster.voces[1] = u"ANA";
    st.s.roster.voces[2] = u"PEDRO";
    st.s.roster.numvoces = 2;
    st.s.pickingList.items = {u"ANA", u"PEDRO"};
    st.s.blockIn = 10.0;
    st.s.blockOut = 12.5;
    st.s.delay = 0.3;
    st.resumeVideo = [this](Station&) { ++resumed; };
  }
};

TEST_F(DubCue, LongTagCarriesVoiceTimesLessDelayAndName) {
  insertar_dub(st, u"ANA");
  EXPECT_EQ(ts.content(), u"DUB[0 N 00:00:09:21>00:00:12:06] ANA\rFirst line\rSecond line\r\rThird line\r");
  EXPECT_EQ(st.s.roster.vozactual, 1);
  EXPECT_EQ(st.s.blockIn, 0);
  EXPECT_EQ(st.s.blockOut, 0);
  // The cursor stands behind the tag.
  EXPECT_EQ(ts.docs.selectionRange(), (TextRange{37, 37}));
}

TEST_F(DubCue, VoiceOffWritesF) {
  st.s.dub_voz_on = false;
  insertar_dub(st, u"PEDRO");
  EXPECT_TRUE(startsWith(ts.content(), u"DUB[0 F 00:00:09:21>00:00:12:06] PEDRO\rFirst"));
  EXPECT_EQ(st.s.roster.vozactual, 2);
}

TEST_F(DubCue, CueInOnlyWritesTheShortTagFromTheLastMark) {
  st.s.cueInOnly = true;
  insertar_dub(st, u"ANA");
  EXPECT_TRUE(startsWith(ts.content(), u"DUB[00:00:12:06]\tANA\rFirst"));
}

TEST_F(DubCue, NoNameMeansNoParagraphMark) {
  insertar_dub(st, u"");
  EXPECT_TRUE(startsWith(ts.content(), u"DUB[0 N 00:00:09:21>00:00:12:06] First line\r"));
}

TEST_F(DubCue, ANameOutsideTheRosterWritesNothing) {
  const u16 before = ts.content();
  insertar_dub(st, u"LUIS");
  EXPECT_EQ(ts.content(), before);
  EXPECT_TRUE(ts.ui.boxes.empty());
  EXPECT_EQ(st.s.blockOut, 12.5);
}

TEST_F(DubCue, LongBlocksGetNoWarning) {
  st.s.blockOut = 55;
  insertar_dub(st, u"ANA");
  EXPECT_TRUE(ts.ui.boxes.empty());
}

TEST_F(DubCue, WithoutThePickingFormTheCursorMovesOnTwoParagraphs) {
  st.s.characterWindow = false;
  insertar_dub(st, u"ANA");
  EXPECT_EQ(ts.docs.selection(), u"\r");  // the empty paragraph after the two lines
}

TEST_F(DubCue, VideoResumesUnlessTheDocumentComesForward) {
  st.s.switchToWordProcessor = true;
  insertar_dub(st, u"ANA");
  EXPECT_EQ(resumed, 0);
  st.s.switchToWordProcessor = false;
  insertar_dub(st, u"ANA");
  EXPECT_EQ(resumed, 1);
}

TEST_F(DubCue, PickingOpensOnThePreviousSpeaker) {
  st.s.dub_dialogos = true;
  insertar_dub(st, u"ANA");
  insertar_dub(st, u"PEDRO");
  ASSERT_EQ(st.s.roster.vozanterior, 1);
  st.s.pickingList.listIndex = -1;
  pickCharacterFor(st);
  EXPECT_TRUE(st.s.pickingFormVisible);
  EXPECT_EQ(st.s.pickingList.listIndex, 0);

  // A previous speaker gone from the list ends it there.
  st.s.pickingFormVisible = false;
  st.s.pickingList.items = {u"PEDRO"};
  pickCharacterFor(st);
  EXPECT_FALSE(st.s.pickingFormVisible);
}

TEST_F(DubCue, PickingTheSelectedNameWritesItsTag) {
  st.s.characterWindow = true;
  pickCharacterFor(st);
  ASSERT_TRUE(st.s.pickingFormVisible);
  st.s.pickingList.listIndex = 1;
  formaPerAceptar(st);
  EXPECT_FALSE(st.s.pickingFormVisible);
  EXPECT_TRUE(startsWith(ts.content(), u"DUB[0 N 00:00:09:21>00:00:12:06] PEDRO\r"));
}

TEST_F(DubCue, WithoutPickingTheTagHasNoName) {
  st.s.characterWindow = false;
  pickCharacterFor(st);
  EXPECT_TRUE(startsWith(ts.content(), u"DUB[0 N 00:00:09:21>00:00:12:06] First line"));
}

TEST_F(DubCue, AnEmptyRosterAsksForANewCharacter) {
  st.s.roster.clear();
  st.s.pickingList = {};
  ts.ui.inputs.push_back(u"LUIS");
  pickCharacterFor(st);
  EXPECT_EQ(ts.ui.inputPrompts.size(), 1u);
  EXPECT_TRUE(startsWith(ts.content(), u"DUB[0 N 00:00:09:21>00:00:12:06] LUIS\r"));
}

}  // namespace
}  // namespace quillon
