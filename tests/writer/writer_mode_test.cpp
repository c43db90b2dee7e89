// "Script in LibreOffice Writer": switching where the station holds its
// script, and the one box when Writer cannot be had.
#include <gtest/gtest.h>

#include "script/document_ops.h"
#include "script/writer/writer_mode.h"
#include "support/station_fixture.h"
#include "writer_fixture.h"

namespace quillon::testing {
namespace {

TEST(WriterMode, AWriterThatCannotBeReachedOrStartedGivesOneBoxAndTheEmbeddedScriptStays) {
  TestStation t;
  t.open(u"Embedded\r");
  t.st.s.options[kWriterConnectionOption] = "pipe,name=quillon-nobody-listens";
  t.st.s.options[kWriterProgramOption] = "quillon-no-such-office";
  bool shown = true;
  WriterMode::Hooks hooks;
  hooks.showEmbedded = [&](bool on) { shown = on; };
  WriterMode mode(t.st, t.docs, hooks);
  EXPECT_FALSE(mode.switchOn());
  ASSERT_EQ(t.ui.boxes.size(), 1u);
  EXPECT_EQ(t.ui.lastBox().text,
            u"LibreOffice Writer could not be reached or started (pipe,name=quillon-nobody-listens): LibreOffice "
            u"(quillon-no-such-office) is not installed. The script stays in the station's own window.");
  EXPECT_EQ(t.st.doc, &t.docs);
  EXPECT_FALSE(t.st.view.menu(kWriterMenuItem).checked);
  EXPECT_EQ(t.st.s.options.count(kWriterOption), 0u);
  EXPECT_TRUE(shown);
  EXPECT_EQ(t.ui.pointer, Pointer::Default);
}

TEST(WriterMode, OnTheScriptIsWritersAndOffItIsTheStationsAgain) {
  HeadlessOffice& office = HeadlessOffice::shared();
  QUILLON_NEED_OFFICE(office);
  office.closeAll();
  const std::string path = writeFile("mode.txt", "In Writer\n");
  std::string error;
  auto opener = office.service();
  ASSERT_TRUE(opener->openFile(path, error)) << error;

  TestStation t;
  t.open(u"Embedded\r");
  t.st.s.options[kWriterConnectionOption] = office.connection();
  bool shown = true;
  WriterMode::Hooks hooks;
  hooks.showEmbedded = [&](bool on) { shown = on; };
  WriterMode mode(t.st, t.docs, hooks);
  ASSERT_TRUE(mode.switchOn(path));
  EXPECT_TRUE(t.ui.boxes.empty());
  EXPECT_TRUE(t.st.view.menu(kWriterMenuItem).checked);
  EXPECT_EQ(t.st.s.options[kWriterOption], "on");
  EXPECT_FALSE(shown);
  ASSERT_TRUE(attachDocument(t.st));
  EXPECT_EQ(t.st.view.panel(1).text, u"mode.txt");
  EXPECT_EQ(t.st.doc->content(), u"In Writer\r");

  mode.toggle();
  EXPECT_EQ(t.st.doc, &t.docs);
  EXPECT_EQ(t.st.s.options[kWriterOption], "off");
  EXPECT_FALSE(t.st.view.menu(kWriterMenuItem).checked);
  EXPECT_TRUE(shown);
  ASSERT_TRUE(attachDocument(t.st));
  EXPECT_EQ(t.st.doc->content(), u"Embedded\r");
}

}  // namespace
}  // namespace quillon::testing
