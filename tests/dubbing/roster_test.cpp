#include <gtest/gtest.h>

#include "dubbing/roster.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

const char16_t kScript[] =
    u"DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\n"
    u"DUB[0 F 00:00:04:00>00:00:06:00] PEDRO\nQue tal.\n\n"
    u"DUB[0 N 00:00:07:00>00:00:09:00] ANA\nBien.\n";

struct Roster : ::testing::Test {
  testing::TestStation ts;
  Station& st = ts.st;
  std::vector<u16> names() {
    std::vector<u16> v;
    for (int i = 1; i <= st.s.roster.numvoces; ++i) v.push_back(st.s.roster.voces[i]);
    return v;
  }
};

TEST_F(Roster, ScanCharactersLoadsEachNameOnceInOrderAndStopsOnAOneLetterName) {
  ts.open(kScript);
  scanCharacters(st);
  scanCharacters(st);  // loading again rebuilds from nothing
  EXPECT_EQ(names(), (std::vector<u16>{u"ANA", u"PEDRO"}));
  EXPECT_EQ(st.s.pickingList.items, names());
  EXPECT_EQ(st.s.rosterFormList.items, names());
  EXPECT_EQ(st.s.pickingList.listIndex, 0);
  EXPECT_EQ(st.view.panel(8).text, u"2 characters.");
  EXPECT_TRUE(ts.ui.boxes.empty());

  ts.open(u"Just text\n");
  scanCharacters(st);
  EXPECT_EQ(st.s.roster.numvoces, 0);
  EXPECT_EQ(st.s.roster.voces[1], u"");
  EXPECT_EQ(st.view.panel(8).text, u"No chars loaded");

  ts.open(u"DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\nDUB[0 N 00:00:04:00>00:00:06:00] X\nNo.\n\n"
          u"DUB[0 N 00:00:07:00>00:00:09:00] LUIS\nSi.\n");
  scanCharacters(st);
  EXPECT_EQ(ts.ui.boxTexts(), std::vector<u16>{u"Error: Invalid format \r[0 N 00:00:04:00>00:00:06:00] X\rN"});
  EXPECT_EQ(ts.ui.lastBox().icon, Icon::Critical);
  EXPECT_EQ(names(), (std::vector<u16>{u"ANA"}));
}

TEST_F(Roster, NewCharacterIsAddedSelectedAndTaggedUnlessItIsThereAlready) {
  ts.open(u"Dialogue\n");
  st.s.blockIn = 10;
  st.s.blockOut = 12;
  st.s.delay = 0;
  ts.ui.inputs = {u"MARTA", u"MARTA", u""};
  personaje_nuevo(st);
  EXPECT_EQ(ts.ui.inputPrompts.back(), u"Enter new character");
  EXPECT_EQ(names(), (std::vector<u16>{u"MARTA"}));
  EXPECT_EQ(st.s.pickingList.listIndex, 0);
  personaje_nuevo(st);
  EXPECT_EQ(ts.ui.boxTexts(), std::vector<u16>{u"Error: Character already exists"});
  personaje_nuevo(st);
  EXPECT_EQ(st.s.roster.numvoces, 1);
  EXPECT_EQ(ts.content(), u"DUB[0 N 00:00:10:00>00:00:12:00] MARTA\rDialogue\r");
}

TEST_F(Roster, DeletingAsksFirstAndLeavesTheRosterSlots) {
  ts.open(kScript);
  scanCharacters(st);
  st.s.pickingFormVisible = true;
  st.s.pickingList.listIndex = 1;
  ts.ui.answers = {Answer::Cancel, Answer::OK};
  formaPerBorrar(st);
  EXPECT_EQ(ts.ui.lastBox().text, u"Are you sure you want to delete character: PEDRO?");
  EXPECT_EQ(ts.ui.lastBox().buttons, Buttons::OKCancel);
  EXPECT_EQ(st.s.pickingList.items.size(), 2u);
  formaPerBorrar(st);
  EXPECT_EQ(st.s.pickingList.items, (std::vector<u16>{u"ANA"}));
  EXPECT_EQ(st.s.roster.voces[2], u"PEDRO");
  EXPECT_FALSE(st.s.pickingFormVisible);  // fewer than two names left
}

TEST_F(Roster, SubtitleScanAddsNamesToBothLists) {
  ts.open(kScript);
  ASSERT_TRUE(scanSubtitles(st, ScanMode::WholeScript));
  EXPECT_EQ(st.s.pickingList.items, (std::vector<u16>{u"ANA", u"PEDRO"}));
  EXPECT_EQ(st.s.rosterFormList.items.size(), 2u);
}

}  // namespace
}  // namespace quillon
