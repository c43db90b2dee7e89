#include <QLabel>
#include <QListWidget>
#include <QTableWidget>
#include <gtest/gtest.h>

#include "app/forms/character_forms.h"
#include "app/forms/reading_speed_dialog.h"
#include "dubbing/roster.h"
#include "forms_fixture.h"

namespace quillon::testing {

TEST(CharacterForms, PickingFormFollowsTheSessionShowsAnyScriptAndWritesThePick) {
  FormsStation f;
  f.t.open(u"First line of dialogue\nSecond\n");
  for (const u16& name : {u16(u"ANA"), u16(u"\u041c\u0430\u0440\u0438\u044f"), u16(u"\u674e\u660e")}) {
    createchar(f.t.st, name);
    f.t.st.s.pickingList.items.push_back(name);
    f.t.st.s.rosterFormList.items.push_back(name);
  }
  // The dubbing command asks for the form and returns; the form comes up.
  f.t.st.s.pickingFormVisible = true;
  QTest::qWait(120);
  FormaPerDialog& d = f.forms->dialogFormaPer();
  ASSERT_TRUE(d.isVisible());
  EXPECT_FALSE(d.windowFlags() & Qt::WindowCloseButtonHint);
  QListWidget* list = d.findChild<QListWidget*>("List1Unicode");
  ASSERT_EQ(list->count(), 3);
  EXPECT_EQ(list->item(1)->text(), QString::fromUtf8("\xD0\x9C\xD0\xB0\xD1\x80\xD0\xB8\xD1\x8F"));
  d.close();  // no close entry: the form stays
  EXPECT_TRUE(d.isVisible());

  list->setCurrentRow(2);
  QTest::mouseClick(d.findChild<QAbstractButton*>("Option1"), Qt::LeftButton);
  EXPECT_TRUE(f.t.st.s.dub_voz_on);
  QTest::mouseClick(d.findChild<QPushButton*>("Aceptar"), Qt::LeftButton);
  EXPECT_FALSE(d.isVisible());
  EXPECT_NE(f.t.content().find(u"] \u674e\u660e\r"), u16::npos);
}

TEST(CharacterForms, RosterFormCreatesNamesAndReportsDuplicatesButStoresThem) {
  FormsStation f;
  ASSERT_TRUE(f.forms->open("FrmNewChar"));
  FrmNewCharDialog& d = f.forms->dialogFrmNewChar();
  EXPECT_TRUE(d.isVisible());
  auto* text1 = d.findChild<QLineEdit*>("Text1");
  auto* create = d.findChild<QPushButton*>("CommandCreate");
  QTest::keyClicks(text1, "ANA");
  QTest::mouseClick(create, Qt::LeftButton);
  QTest::keyClicks(text1, "ANA");
  QTest::mouseClick(create, Qt::LeftButton);
  EXPECT_EQ(f.t.st.s.roster.numvoces, 2);
  ASSERT_EQ(f.t.ui.boxes.size(), 1u);
  EXPECT_EQ(f.t.ui.lastBox().text, u"Error: Character already exists");
  auto* list = d.findChild<QListWidget*>("List1");
  EXPECT_EQ(list->count(), 2);
  EXPECT_EQ(f.t.st.s.pickingList.items.size(), 2u);
}

TEST(ReadingSpeedForm, TableShowsOnAirTimesAtTheSessionsSpeed) {
  FormsStation f;
  f.t.st.s.readingSpeed = 12;
  f.t.st.s.maxCharsRow = 30;
  ASSERT_TRUE(f.forms->open("mnu_sub_par_read"));
  ReadingSpeedDialog& d = f.forms->dialogReadingSpeed();
  EXPECT_TRUE(d.isVisible());
  QTableWidget* t = d.table();
  ASSERT_EQ(t->rowCount(), 61);
  // 24 characters at 12 a second stay two seconds on air.
  EXPECT_EQ(t->item(23, 1)->text(), QStringLiteral("2.00"));
  EXPECT_EQ(t->item(23, 2)->text(), QStringLiteral("02:00"));
  // A single character still gets the minimum on-air time.
  EXPECT_EQ(t->item(0, 1)->text(), QString::fromStdString(toUtf8(formatNumber(f.t.st.s.minOnAir1, "0.00"))));
  EXPECT_TRUE(d.findChild<QLabel*>("LabelSpeed")->text().contains("12 characters per second"));
}

}  // namespace quillon::testing
