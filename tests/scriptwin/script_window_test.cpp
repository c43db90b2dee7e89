#include <QClipboard>
#include <QScrollBar>
#include <QTest>
#include <gtest/gtest.h>

#include "script/document_ops.h"
#include "script/tag_grammar.h"
#include "window_fixture.h"

namespace quillon::testing {

namespace {

QPoint pointOf(ScriptView& v, long pos) {
  QTextCursor c(v.document());
  c.setPosition(static_cast<int>(pos));
  return v.cursorRect(c).center();
}

}  // namespace

TEST(ScriptWindowEditing, TypingDeletingPastingAndItalicsReachTheDocument) {
  WindowStation w;
  ScriptView& v = w.open(u"First\nSecond\n");
  v.show();
  QTest::keyClick(&v, Qt::Key_End);
  QTest::keyClicks(&v, "ly");
  QTest::keyClick(&v, Qt::Key_Return);
  QTest::keyClicks(&v, "New");
  EXPECT_EQ(v.model().text(), script(u"Firstly\nNew\nSecond\n"));
  EXPECT_EQ(v.model().selection(), (TextRange{11, 11}));
  QTest::keyClick(&v, Qt::Key_Backspace);
  QTest::keyClick(&v, Qt::Key_Home);
  QTest::keyClick(&v, Qt::Key_Delete);
  EXPECT_EQ(v.model().text(), script(u"Firstly\ne\nSecond\n"));
  QApplication::clipboard()->setText(QStringLiteral("one\ntwo"));
  v.paste();
  EXPECT_EQ(v.model().text(), script(u"Firstly\none\ntwoe\nSecond\n"));
  EXPECT_EQ(w.st.doc->paragraphsCount(), 4);
  EXPECT_TRUE(v.model().modified);
  // The document keeps the one undo list: Ctrl+Z takes the paste back.
  QTest::keyClick(&v, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(v.model().text(), script(u"Firstly\ne\nSecond\n"));
  EXPECT_TRUE(editorInStep(v));
  // Ctrl+I turns the selection's italics on and off again.
  w.st.doc->select({2, 7});
  QTest::keyClick(&v, Qt::Key_I, Qt::ControlModifier);
  EXPECT_TRUE(w.st.doc->italic({2, 7}));
  EXPECT_FALSE(w.st.doc->italic({0, 2}));
  EXPECT_TRUE(editorInStep(v));
  QTest::keyClick(&v, Qt::Key_I, Qt::ControlModifier);
  EXPECT_FALSE(w.st.doc->italic({2, 7}));
}

TEST(ScriptWindowEditing, SelectionIsTheServiceSelectionBothWays) {
  WindowStation w;
  ScriptView& v = w.open(u"Alpha\nBeta\nGamma\n");
  v.show();
  QTest::keyClick(&v, Qt::Key_Home, Qt::ControlModifier);
  QTest::keyClick(&v, Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(&v, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(w.st.doc->selection(), u"Al");
  QTest::mouseClick(v.viewport(), Qt::LeftButton, {}, pointOf(v, 8));
  EXPECT_EQ(w.st.doc->selectionRange(), (TextRange{8, 8}));
  QTest::mouseClick(v.viewport(), Qt::LeftButton, Qt::ShiftModifier, pointOf(v, 14));
  EXPECT_EQ(w.st.doc->selection(), u"ta\rGam");

  // The logic's selection is on screen at once, and the operator's next key
  // acts on it.
  w.st.doc->select(w.st.doc->paragraph(1));
  ASSERT_TRUE(w.st.doc->selectNext(wdParagraph, 1));
  EXPECT_EQ(w.st.doc->selection(), u"Beta\r");
  EXPECT_TRUE(editorInStep(v));
  w.st.doc->select(w.st.doc->paragraph(1));
  w.st.doc->collapse();
  QTest::keyClicks(&v, "X");
  EXPECT_EQ(v.model().text(), script(u"XAlpha\nBeta\nGamma\n"));
}

TEST(ScriptWindowEditing, LogicEditsApplyInPlaceWithoutMovingTheOperatorsView) {
  WindowStation w;
  ScriptView& v = w.open(generatedSubtitleScript(5000));  // 20000 paragraphs
  ASSERT_EQ(w.st.doc->paragraphsCount(), 20000);
  v.resize(600, 400);
  v.show();
  settle();
  v.verticalScrollBar()->setValue(10000);
  settle();
  const QString topText = v.cursorForPosition(QPoint(2, 2)).block().text();
  ASSERT_FALSE(topText.isEmpty());
  // A marked block proves the editor was not reloaded.
  QTextBlock marked = v.document()->findBlockByNumber(15000);
  marked.setUserState(42);

  // A report put at the head leaves the operator's lines where they were.
  w.st.doc->contentInsertBefore(script(u"Report line 1\nReport line 2\n"));
  settle();
  EXPECT_EQ(v.cursorForPosition(QPoint(2, 2)).block().text(), topText);
  // A tag rewritten in place; the view follows the found text, as a word
  // processor's find does.
  replaceInDocument(w.st, u"00:00:10:00>", u"00:00:10:05>");
  settle();
  ASSERT_NE(w.st.doc->content().find(u"00:00:10:05>"), u16::npos);
  EXPECT_EQ(v.document()->findBlockByNumber(15002).userState(), 42);
  EXPECT_TRUE(editorInStep(v));
}

TEST(ScriptWindowDocuments, DocumentsFollowTheTabsTheOperatorSees) {
  WindowStation w;
  EXPECT_FALSE(attachDocument(w.st));
  EXPECT_EQ(w.ui.lastBox().text, u"Error: No currently open Word document ");
  w.st.doc->documentsAdd();
  w.st.doc->documentsAdd();
  EXPECT_EQ(w.window.documentCount(), 2);
  EXPECT_EQ(w.st.doc->documentsCount(), 2);
  EXPECT_EQ(w.st.doc->name(), u"Document2");
  EXPECT_EQ(w.window.activeIndex(), 1);
  w.window.findChild<QTabWidget*>("ScriptTabs")->setCurrentIndex(0);
  EXPECT_EQ(w.st.doc->name(), u"Document1");
  ASSERT_TRUE(attachDocument(w.st));

  // Closing asks for a changed document; Cancel keeps it open, No drops it.
  w.st.doc->contentInsertBefore(u"work");
  w.ui.answers = {Answer::Cancel};
  EXPECT_FALSE(w.window.closeDocument(0));
  EXPECT_EQ(w.window.documentCount(), 2);
  EXPECT_EQ(w.ui.lastBox().text, u"Do you want to save the changes to Document1?");
  w.ui.answers = {Answer::No};
  EXPECT_TRUE(w.window.closeDocument(0));
  EXPECT_EQ(w.st.doc->documentsCount(), 1);
  EXPECT_EQ(w.st.doc->name(), u"Document2");
  // The window comes forward when the logic asks.
  w.window.hide();
  w.st.doc->activateWindow();
  EXPECT_TRUE(w.window.isVisible());
}

TEST(ScriptWindowFiles, TypedAndTimedScriptSurvivesDocxSaveAndReopen) {
  const std::string dir = tempDir("scriptwin_docx");
  WindowStation w;
  w.window.newDocument();
  ScriptView& v = *w.window.activeView();
  v.show();
  QTest::keyClicks(&v, "Hello ");
  QTest::keyClick(&v, Qt::Key_I, Qt::ControlModifier);
  QTest::keyClicks(&v, "world");
  QTest::keyClick(&v, Qt::Key_I, Qt::ControlModifier);
  QTest::keyClick(&v, Qt::Key_Return);
  QTest::keyClicks(&v, "Second line");
  // The timing loop writes its tag in front of the paragraph under the cursor.
  w.st.doc->select(w.st.doc->paragraph(1));
  const u16 tag = subtitleTag(0, u' ', u'N', 1.0, 3.0, 30);
  insertSubtitleTag(w.st, tag);
  settle();
  EXPECT_TRUE(editorInStep(v));

  const std::string path = dir + "/timed.docx";
  w.ui.savePaths = {path};
  ASSERT_TRUE(w.window.saveAs());
  EXPECT_EQ(w.st.doc->name(), u"timed.docx");
  EXPECT_FALSE(v.model().modified);

  WindowStation again;
  ASSERT_TRUE(again.window.openFile(path));
  DocumentService& d = *again.st.doc;
  EXPECT_EQ(d.content(), tag + script(u"Hello world\nSecond line\n"));
  const long at = static_cast<long>(tag.size());
  EXPECT_TRUE(d.italic({at + 6, at + 11}));
  EXPECT_FALSE(d.italic({at, at + 5}));
  EXPECT_TRUE(scanSubtitles(again.st, ScanMode::WholeScript));
  EXPECT_EQ(again.st.s.scan.count(), 1);
  EXPECT_TRUE(editorInStep(*again.window.activeView()));
}

}  // namespace quillon::testing
