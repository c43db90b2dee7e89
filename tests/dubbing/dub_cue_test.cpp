#include <gtest/gtest.h>

#include <functional>

#include "dubbing/dub_cue.h"
#include "dubbing/roster.h"
#include "script/document_service.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

// A script, a roster of two and a marked block.
struct DubSession {
  testing::TestStation ts;
  Station& st = ts.st;
  int resumed = 0;
  DubSession() {
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
struct DubCue : ::testing::Test, DubSession {};

TEST_F(DubCue, LongTagCarriesVoiceTimesLessDelayAndName) {
  st.s.switchToWordProcessor = true;  // the document comes forward: the video waits
  insertar_dub(st, u"ANA");
  EXPECT_EQ(resumed, 0);
  EXPECT_EQ(ts.content(), u"DUB[0 N 00:00:09:21>00:00:12:06] ANA\rFirst line\rSecond line\r\rThird line\r");
  EXPECT_EQ(st.s.roster.vozactual, 1);
  EXPECT_EQ(st.s.blockIn, 0);
  EXPECT_EQ(st.s.blockOut, 0);
  // The cursor stands behind the tag.
  EXPECT_EQ(ts.docs.selectionRange(), (TextRange{37, 37}));
}

// Voice off, cue-in only, no name, a name outside the roster, and a long
// block, which asks nothing.
TEST(DubCueTag, OptionsShapeTheTag) {
  const struct {
    const char* name;
    std::function<void(Session&)> options;
    const char16_t* speaker;
    const char16_t* expected;
  } cases[] = {
      {"voice off", [](Session& s) { s.dub_voz_on = false; }, u"PEDRO", u"DUB[0 F 00:00:09:21>00:00:12:06] PEDRO\rFirst"},
      {"cue-in only", [](Session& s) { s.cueInOnly = true; }, u"ANA", u"DUB[00:00:12:06]\tANA\rFirst"},
      {"no name, no paragraph mark", [](Session&) {}, u"", u"DUB[0 N 00:00:09:21>00:00:12:06] First line\r"},
      {"not in the roster", [](Session&) {}, u"LUIS", u"First line\rSecond line\r\rThird line\r"},
      {"long block", [](Session& s) { s.blockOut = 55; }, u"ANA", u"DUB[0 N 00:00:09:21>00:00:54:21] ANA\r"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    DubSession f;
    c.options(f.st.s);
    insertar_dub(f.st, c.speaker);
    EXPECT_TRUE(startsWith(f.ts.content(), c.expected)) << toUtf8(f.ts.content());
    EXPECT_TRUE(f.ts.ui.boxes.empty());
  }
}

TEST_F(DubCue, WithoutThePickingFormTheCursorMovesOnTwoParagraphsAndTheVideoResumes) {
  st.s.characterWindow = false;
  st.s.switchToWordProcessor = false;
  insertar_dub(st, u"ANA");
  EXPECT_EQ(ts.docs.selection(), u"\r");  // the empty paragraph after the two lines
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

}  // namespace
}  // namespace quillon
