#include <QListWidget>
#include <gtest/gtest.h>

#include "app/forms/character_forms.h"
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

}  // namespace quillon::testing
