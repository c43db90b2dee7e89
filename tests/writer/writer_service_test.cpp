// The service against a live headless Writer: what it reads of a real
// document, edits seen by a second reading, the operator's own selection
// and edits in Writer, and documents or the whole office going away.
#include <gtest/gtest.h>

#include "script/document_ops.h"
#include "subtitling/playing_station.h"
#include "subtitling/timing_loop.h"
#include "support/station_fixture.h"
#include "writer_fixture.h"

namespace quillon::testing {
namespace {

class WriterService : public ::testing::Test {
 protected:
  void SetUp() override {
    QUILLON_NEED_OFFICE(office);
    office.closeAll();
  }
  // A service on the document of `path`, opening it in Writer or taking
  // the one open there.
  std::unique_ptr<WriterDocumentService> on(const std::string& path, bool open = false) {
    auto s = office.service();
    std::string error;
    EXPECT_TRUE(open ? s->openFile(path, error) : s->useOpenFile(path, error)) << error;
    return s;
  }
  std::string fixture(const std::string& name) {
    return writeFile(name, readFile(std::string(QUILLON_SOURCE_DIR) + "/tests/writer/golden/" + name));
  }
  HeadlessOffice& office = HeadlessOffice::shared();
};

TEST_F(WriterService, PlacesMapThroughPairsTabsBreaksAndFieldsAsAFreshReadingSeesThem) {
  const std::string path = fixture("odd.fodt");
  auto a = on(path, true);
  // The field's result takes one step in Writer.
  EXPECT_EQ(a->content(), u"Tab\there, a pair \U0001F600 and a break\vthere\rTitle: \uFFFC.\r"
                          u"SUB[0 N 00:00:01:00>00:00:02:00]\rAfter \U0001F600\U0001F600 end\r");
  a->insertBefore(a->paragraph(3), u"DUB[0 N 00:00:00:10>00:00:00:20]\r");
  a->replaceText(rangeOf(*a, u"there"), u"THERE\vand \U0001F600", false);
  a->setItalic(rangeOf(*a, u"After"), true);
  a->deleteRange(rangeOf(*a, u"Title: "));
  a->select(rangeOf(*a, u"\U0001F600 end"));
  a->showSelection();
  ASSERT_EQ(a->pendingError(), 0);

  auto b = on(path);
  EXPECT_EQ(b->content(), a->content());
  EXPECT_EQ(b->selectionRange(), a->selectionRange());
  EXPECT_EQ(b->selection(), u"\U0001F600 end");
  EXPECT_TRUE(b->italic(rangeOf(*b, u"After")));
  EXPECT_FALSE(b->italic(rangeOf(*b, u"THERE")));
}

TEST_F(WriterService, TablesReadAsParagraphsAndRefuseEditsInsideThem) {
  const std::string path = fixture("table.fodt");
  auto a = on(path, true);
  ASSERT_EQ(a->content(), u"Before \U0001F600\rJOHN\rHello there\rSUB[0 N 00:00:01:00>00:00:02:00]\rAfter\r");
  a->insertBefore(a->paragraph(4), u"DUB[0 N 00:00:00:10>00:00:00:20]\r");
  a->insertAfter(rangeOf(*a, u"After"), u" all");
  a->select(rangeOf(*a, u"SUB["));
  a->showSelection();
  ASSERT_EQ(a->pendingError(), 0);
  const std::u16string before = a->content();
  a->insertBefore(rangeOf(*a, u"Hello"), u"SUB[");
  EXPECT_NE(a->pendingError(), 0);
  a->clearError();
  a->deleteRange({rangeOf(*a, u"Before").start, rangeOf(*a, u"DUB[").start});
  EXPECT_NE(a->pendingError(), 0);
  EXPECT_EQ(a->content(), before);

  auto b = on(path);
  EXPECT_EQ(b->content(), before);
  EXPECT_EQ(b->selection(), u"SUB[");
}

TEST_F(WriterService, TheOperatorsWorkInWriterReachesTheStationAndAClosedDocumentIsNoDocument) {
  const std::string path = writeFile("operator.txt", "One\n\nTwo\n");
  TestStation t;
  auto station = office.service(true);
  t.st.doc = station.get();
  std::string error;
  ASSERT_TRUE(station->openFile(path, error)) << error;
  ASSERT_TRUE(attachDocument(t.st));
  EXPECT_EQ(t.st.view.panel(1).text, u"operator.txt");

  auto writer = on(path);  // stands for the operator at Writer
  writer->select(rangeOf(*writer, u"One"));
  writer->showSelection();
  EXPECT_EQ(station->selection(), u"One");
  writer->insertText(0, u"Head \U0001F600\r", false, false);
  writer->showSelection();
  EXPECT_EQ(station->content(), u"Head \U0001F600\rOne\r\rTwo\r");
  EXPECT_EQ(station->selection(), u"One");
  ASSERT_TRUE(station->selectNext(wdParagraph, 1));
  station->showSelection();
  EXPECT_EQ(writer->selection(), u"\r");

  writer->closeActive();
  EXPECT_FALSE(station->selectNext(wdParagraph, 1));
  EXPECT_EQ(station->pendingError(), kErrNoDocument);
  station->clearError();
  EXPECT_FALSE(attachDocument(t.st));
  EXPECT_EQ(t.ui.boxTexts(), std::vector<u16>{u"Error: No currently open Word document "});
  // The station follows whichever document comes to the front.
  ASSERT_TRUE(office.service()->openFile(writeFile("other.txt", "Three\n"), error)) << error;
  ASSERT_TRUE(attachDocument(t.st));
  EXPECT_EQ(t.st.view.panel(1).text, u"other.txt");
  EXPECT_EQ(station->content(), u"Three\r");
}

TEST(WriterOffice, AnOfficeThatCrashesUnderATimingRunEndsItAndTheNextCommandStartsItAgain) {
  HeadlessOffice office;  // its own, as it is taken down
  QUILLON_NEED_OFFICE(office);
  const std::string path = writeFile("crash.txt", "One\n\nTwo\n\nThree\n\nFour\n");
  int starts = 0;
  WriterOptions o;
  o.connection = office.connection();
  o.hiddenDocuments = true;
  o.startOffice = [&](std::string& error) {
    ++starts;
    const bool ok = office.start();
    error = office.failure();
    return ok;
  };
  WriterDocumentService writer(o);
  std::string error;
  ASSERT_TRUE(writer.openFile(path, error)) << error;

  PlayingStation t;
  t.st.doc = &writer;
  writer.select(rangeOf(writer, u"One"));
  writer.collapse();
  t.markAt(2.0);
  t.markAt(4.0);
  t.markAt(5.0);
  t.when(5.5, [&] { office.crash(); });
  t.markAt(7.0);  // the cue-out of Two has no script to go to
  t.escapeAt(30.0);
  timingLoop(t.st);
  EXPECT_LT(transformadaTCactual(t.st.s), 29.0);  // ended by the lost script, not the escape
  EXPECT_TRUE(windowRestored(t.st));
  EXPECT_TRUE(t.ui.boxes.empty());

  // The next command finds no office, starts one, and finds no script in it.
  EXPECT_FALSE(attachDocument(t.st));
  EXPECT_EQ(starts, 1);
  EXPECT_EQ(t.ui.boxTexts(), std::vector<u16>{u"Error: No currently open Word document "});
  ASSERT_TRUE(writer.openFile(path, error)) << error;
  EXPECT_TRUE(attachDocument(t.st));
  EXPECT_EQ(writer.content(), u"One\r\rTwo\r\rThree\r\rFour\r");
  office.stop();
}

}  // namespace
}  // namespace quillon::testing
