// "Script in LibreOffice Writer": switching where the station holds its
// script, and the one box when Writer cannot be had.
#include <gtest/gtest.h>

#include "script/document_ops.h"
#include "script/writer/writer_mode.h"
#include "support/station_fixture.h"
#include "writer_fixture.h"

namespace quillon::testing {
namespace {

struct ModeStation {
  explicit ModeStation(const std::string& connection) {
    t.open(u"Embedded\r");
    t.st.s.options[kWriterConnectionOption] = connection;
    hooks.showEmbedded = [this](bool on) { shown = on; };
  }
  // Off: the embedded script is the station's, its window shown.
  void expectOff() {
    EXPECT_EQ(t.st.doc, &t.docs);
    EXPECT_FALSE(t.st.view.menu(kWriterMenuItem).checked);
    EXPECT_TRUE(shown);
  }
  TestStation t;
  bool shown = true;
  WriterMode::Hooks hooks;
};

TEST(WriterMode, AWriterThatCannotBeReachedOrStartedGivesOneBoxAndTheEmbeddedScriptStays) {
  ModeStation m("pipe,name=quillon-nobody-listens");
  m.t.st.s.options[kWriterProgramOption] = "quillon-no-such-office";
  WriterMode mode(m.t.st, m.t.docs, m.hooks);
  EXPECT_FALSE(mode.switchOn());
  EXPECT_EQ(m.t.ui.boxTexts(),
            std::vector<u16>{u"LibreOffice Writer could not be reached or started (pipe,name=quillon-nobody-listens): "
                             u"LibreOffice (quillon-no-such-office) is not installed. The script stays in the "
                             u"station's own window."});
  m.expectOff();
  EXPECT_EQ(m.t.st.s.options.count(kWriterOption), 0u);
  EXPECT_EQ(m.t.ui.pointer, Pointer::Default);
}

TEST(WriterMode, OnTheScriptIsWritersAndOffItIsTheStationsAgain) {
  HeadlessOffice& office = HeadlessOffice::shared();
  QUILLON_NEED_OFFICE(office);
  office.closeAll();
  const std::string path = writeFile("mode.txt", "In Writer\n");
  std::string error;
  ASSERT_TRUE(office.service()->openFile(path, error)) << error;

  ModeStation m(office.connection());
  WriterMode mode(m.t.st, m.t.docs, m.hooks);
  ASSERT_TRUE(mode.switchOn(path));
  EXPECT_TRUE(m.t.ui.boxes.empty());
  EXPECT_TRUE(m.t.st.view.menu(kWriterMenuItem).checked);
  EXPECT_EQ(m.t.st.s.options[kWriterOption], "on");
  EXPECT_FALSE(m.shown);
  ASSERT_TRUE(attachDocument(m.t.st));
  EXPECT_EQ(m.t.st.view.panel(1).text, u"mode.txt");
  EXPECT_EQ(m.t.st.doc->content(), u"In Writer\r");

  mode.toggle();
  m.expectOff();
  EXPECT_EQ(m.t.st.s.options[kWriterOption], "off");
  ASSERT_TRUE(attachDocument(m.t.st));
  EXPECT_EQ(m.t.st.doc->content(), u"Embedded\r");
}

}  // namespace
}  // namespace quillon::testing
