#include <gtest/gtest.h>

#include <functional>

#include "dubbing/dub_cue.h"
#include "subtitling/subtitling_fixture.h"

namespace quillon::testing {
namespace {

// A script, a roster of two and a marked block.
struct DubSession {
  TestStation ts;
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

// The tag carries voice, times less the delay and the name; the options
// shape it; a name outside the roster writes nothing. The cursor goes behind
// the tag, or two paragraphs on without the picking form; the video resumes
// unless the document comes forward. What each leaves is in
// golden/dub_cue.txt.
TEST(DubCue, OptionsShapeTheTagAndWhereTheWorkGoesOn) {
  const struct {
    const char* name;
    std::function<void(Session&)> options;
    const char16_t* speaker;
  } cases[] = {
      {"long tag", [](Session& s) { s.switchToWordProcessor = true; }, u"ANA"},
      {"voice off", [](Session& s) { s.dub_voz_on = false; }, u"PEDRO"},
      {"cue-in only", [](Session& s) { s.cueInOnly = true; }, u"ANA"},
      {"no name, no paragraph mark", [](Session&) {}, u""},
      {"not in the roster", [](Session&) {}, u"LUIS"},
      {"long block", [](Session& s) { s.blockOut = 55; }, u"ANA"},
      {"without the picking form",
       [](Session& s) {
         s.characterWindow = false;
         s.switchToWordProcessor = false;
       },
       u"ANA"},
  };
  u16 transcript;
  for (const auto& c : cases) {
    DubSession f;
    c.options(f.st.s);
    insertar_dub(f.st, c.speaker);
    transcript += leftBy(c.name, f.ts) + u"voice " + numberText(f.st.s.roster.vozactual) + u", block " +
                  numberText(f.st.s.blockIn) + u"-" + numberText(f.st.s.blockOut) + u", video resumed " +
                  numberText(f.resumed) + u"\r";
  }
  EXPECT_EQ(lines(transcript), golden("dubbing/golden/dub_cue.txt"));
}

TEST(DubCue, PickingOpensOnThePreviousSpeaker) {
  DubSession f;
  Session& s = f.st.s;
  s.dub_dialogos = true;
  insertar_dub(f.st, u"ANA");
  insertar_dub(f.st, u"PEDRO");
  ASSERT_EQ(s.roster.vozanterior, 1);
  s.pickingList.listIndex = -1;
  pickCharacterFor(f.st);
  EXPECT_TRUE(s.pickingFormVisible);
  EXPECT_EQ(s.pickingList.listIndex, 0);

  // A previous speaker gone from the list ends it there.
  s.pickingFormVisible = false;
  s.pickingList.items = {u"PEDRO"};
  pickCharacterFor(f.st);
  EXPECT_FALSE(s.pickingFormVisible);
}

}  // namespace
}  // namespace quillon::testing
