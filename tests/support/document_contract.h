// The behaviour every document service must show, whatever holds the text:
// the embedded document, a document loaded from a word-processor file, the
// script window's editor or a bridge to an outside word processor.
//
// Include this header in exactly one source file of a test program and
// instantiate the suite with factories:
//   INSTANTIATE_TEST_SUITE_P(Memory, DocumentContract,
//       ::testing::Values(DocumentFactory{"memory", makeMemory}), factoryName);
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "script/document_service.h"

namespace quillon::testing {

struct DocumentFactory {
  std::string name;
  // A service whose active document holds `text` (paragraphs ending in CR),
  // with the selection at the start.
  std::function<std::unique_ptr<DocumentService>(const std::u16string& text)> make;
};

inline std::string factoryName(const ::testing::TestParamInfo<DocumentFactory>& info) { return info.param.name; }

class DocumentContract : public ::testing::TestWithParam<DocumentFactory> {
 protected:
  std::unique_ptr<DocumentService> doc(const std::u16string& text) { return GetParam().make(text); }
};

inline const std::u16string kContractScript =
    u"SUB[0 N 00:00:01:00>00:00:02:00]\rFirst line\rSecond line\r\rSUB[1 I 00:00:03;00>00:00:04:00]\rLast\r\r";

TEST_P(DocumentContract, ParagraphsAndSelectionWalkTheTextAndStopAtTheEnds) {
  auto d = doc(u"One\rTwo\r\rThree\r");
  EXPECT_EQ(d->content(), u"One\rTwo\r\rThree\r");
  ASSERT_EQ(d->paragraphsCount(), 4);
  EXPECT_EQ(d->text(d->paragraph(3)), u"\r");
  EXPECT_EQ(d->pendingError(), 0);
  d->paragraph(5);
  EXPECT_NE(d->pendingError(), 0);
  d->clearError();
  d->select(d->paragraph(1));
  ASSERT_TRUE(d->selectNext(wdParagraph, 1));
  EXPECT_EQ(d->selection(), u"Two\r");
  ASSERT_TRUE(d->selectNext(wdParagraph, 2));
  EXPECT_EQ(d->selection(), u"Three\r");
  // Off the end: the pending error is set and the selection stays.
  EXPECT_FALSE(d->selectNext(wdParagraph, 1));
  EXPECT_NE(d->pendingError(), 0);
  EXPECT_EQ(d->selection(), u"Three\r");
  d->clearError();
  ASSERT_TRUE(d->selectPrevious(wdParagraph, 1));
  EXPECT_EQ(d->selection(), u"\r");
  EXPECT_FALSE(d->selectPrevious(wdParagraph, 3));
  EXPECT_NE(d->pendingError(), 0);
  // The selection's paragraphs are those it touches; a whole paragraph,
  // mark included, is one.
  d->select({2, 2});
  EXPECT_EQ(d->text(d->selectionParagraph(1)), u"One\r");
  EXPECT_EQ(d->selectionType(), wdSelectionIP);
  d->select({2, 6});
  EXPECT_EQ(d->selectionType(), wdSelectionNormal);
  EXPECT_EQ(d->selectionParagraphsCount(), 2);
  EXPECT_EQ(d->text(d->selectionParagraph(2)), u"Two\r");
  d->select(d->paragraph(2));
  EXPECT_EQ(d->selectionParagraphsCount(), 1);
}

TEST_P(DocumentContract, FindSearchesFromTheSelectionStartAndSelectsTheMatch) {
  auto d = doc(kContractScript);
  d->selectAll();
  FindRequest f;
  f.findText = u"SUB[";
  ASSERT_TRUE(d->execute(f));
  EXPECT_EQ(d->selectionRange(), (TextRange{0, 4}));
  // A collapsed selection on the tag finds the same tag again.
  d->collapse();
  ASSERT_TRUE(d->execute(f));
  EXPECT_EQ(d->selectionRange().start, 0);
  // The wildcard stands for any one character, so either frame separator matches.
  for (const char16_t* wanted : {u"00:00:03;00>", u"00:00:04:00]"}) {
    d->collapse();
    f.findText = std::u16string(wanted).replace(8, 1, u"^?");
    ASSERT_TRUE(d->execute(f)) << toUtf8(wanted);
    EXPECT_EQ(d->selection(), wanted);
  }
  // Nothing found: the selection stays where it was.
  TextRange before = d->selectionRange();
  f.findText = u"absent";
  EXPECT_FALSE(d->execute(f));
  EXPECT_EQ(d->selectionRange(), before);
  // Matches placed around the sizes a search may read ahead in.
  for (long at : {4090L, 4094L, 12283L, 40000L}) {
    auto far = doc(std::u16string(static_cast<size_t>(at), u'x') + u"00:00:01;00>tail\r");
    f.findText = u"00:00:01^?00>";
    ASSERT_TRUE(far->execute(f)) << at;
    EXPECT_EQ(far->selectionRange(), (TextRange{at, at + 12})) << at;
  }
}

TEST_P(DocumentContract, ReplaceTakesTheFirstMatchOnlyAndLeavesAbsentTextAlone) {
  auto d = doc(u"x SUB y SUB\r");
  d->selectAll();
  FindRequest f;
  f.findText = u"SUB";
  f.replaceWith = u"TAG";
  ASSERT_TRUE(d->execute(f));
  EXPECT_EQ(d->content(), u"x TAG y SUB\r");
  EXPECT_EQ(d->selection(), u"TAG");
  d->selectAll();
  f.findText = u"none";
  EXPECT_FALSE(d->execute(f));
  EXPECT_EQ(d->content(), u"x TAG y SUB\r");
  d->selectAll();
  f.findText = u"SUB";
  f.replace = ReplaceMode::All;
  f.replaceWith = u"";
  ASSERT_TRUE(d->execute(f));
  EXPECT_EQ(d->content(), u"x TAG y \r");
}

TEST_P(DocumentContract, InsertsAndDeletesMoveTheSelectionAndKeepTheFinalMarkLast) {
  auto d = doc(u"Hello\rWorld\r");
  d->select(d->paragraph(1));
  d->insertBefore(d->selectionParagraph(1), u"TAG\r");
  EXPECT_EQ(d->content(), u"TAG\rHello\rWorld\r");
  EXPECT_EQ(d->selection(), u"Hello\r");
  EXPECT_EQ(d->paragraphsCount(), 3);
  // Inserted after the cursor, text leaves it in front until it moves right;
  // it never passes the final paragraph mark.
  d->select({1, 1});
  d->selectionInsertAfter(u"XYZ");
  EXPECT_EQ(d->content(), u"TXYZAG\rHello\rWorld\r");
  EXPECT_EQ(d->selectionRange(), (TextRange{1, 1}));
  d->moveRight(wdCharacter, 3);
  EXPECT_EQ(d->selectionRange(), (TextRange{4, 4}));
  d->moveRight(wdCharacter, 50);
  EXPECT_EQ(d->selectionRange(), (TextRange{18, 18}));
  // Deleting a paragraph mark joins paragraphs.
  d->deleteRange(d->paragraph(1));
  d->deleteRange({5, 6});
  EXPECT_EQ(d->content(), u"HelloWorld\r");
  d->insertAfter(d->paragraph(1), u"More\r");
  EXPECT_EQ(d->content(), u"HelloWorldMore\r\r");
  d->deleteRange(d->documentRange());
  EXPECT_EQ(d->content(), u"\r");
  EXPECT_EQ(d->paragraphsCount(), 1);
}

TEST_P(DocumentContract, ItalicIsTrueOnlyForAWhollyItalicRangeAndWordsSplitATagHead) {
  auto d = doc(kContractScript);
  d->setItalic(d->paragraph(2), true);
  EXPECT_TRUE(d->italic(d->paragraph(2)));
  EXPECT_FALSE(d->italic(d->paragraph(1)));
  EXPECT_FALSE(d->italic(d->documentRange()));
  d->setItalic({0, 2}, true);
  EXPECT_FALSE(d->italic(d->paragraph(1)));
  // Like a word processor's words.
  auto w = d->words(d->paragraph(1));
  ASSERT_GE(w.size(), 3u);
  EXPECT_EQ(d->text(w[0]), u"SUB");
  EXPECT_EQ(d->text(w[1]), u"[");
  EXPECT_EQ(d->text(w.back()), u"\r");
  EXPECT_EQ(d->computeStatistics(wdStatisticWords, d->paragraph(2)), 2);
}

TEST_P(DocumentContract, PropertiesLieBesideTheTextAndANewDocumentBecomesActive) {
  auto d = doc(u"x\r");
  EXPECT_FALSE(d->customProperty(u"TCP").has_value());
  d->setCustomProperty(u"TCP", u"10000000");
  d->setCustomProperty(u"TCP", u"10000001");
  EXPECT_EQ(d->customProperty(u"TCP").value_or(u""), u"10000001");
  d->setBuiltinProperty(wdPropertyTitle, u"Pilot");
  EXPECT_EQ(d->builtinProperty(wdPropertyTitle).value_or(u""), u"Pilot");
  EXPECT_EQ(d->content(), u"x\r");
  const int before = d->documentsCount();
  d->documentsAdd();
  EXPECT_EQ(d->documentsCount(), before + 1);
  EXPECT_EQ(d->content(), u"\r");
  d->contentInsertBefore(u"Head\r");
  EXPECT_EQ(d->content(), u"Head\r\r");
}

}  // namespace quillon::testing
