#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "formats/line_imports.h"
#include "formats/sub_export.h"
#include "formats/stl_import.h"
#include "formats_fixture.h"
#include "script/document_files.h"

namespace quillon {
namespace {

using testing::FormatsStation;
using testing::readFile;
using testing::tempDir;

// Runs a menu import on `bytes` and gives the new document as the station
// saves it.
std::string import(FormatsStation& t, bool (*handler)(Station&), const std::string& name, const std::string& bytes) {
  t.open(u"");
  const std::string path = tempDir("import-" + name) + "/" + name;
  std::ofstream(path, std::ios::binary) << bytes;
  t.ui.openPaths.push_back(path);
  if (!handler(t.st)) return "(stopped)";
  return plainTextBytes(*t.docs.active());
}

// {SUB}: frames become timecodes and the bar breaks the line. DOS 850: the
// header columns and the code page. SRT: milliseconds are counted at thirty
// frames and capped. .SUB: the header, the start line and the styles. A
// last entry with nothing behind it is dropped; an SRT file that is not
// UTF-8 is read as Windows Latin.
TEST(LineImports, EachFormatMatchesItsGoldenFile) {
  const struct {
    bool (*handler)(Station&);
    const char* input;
    const char* golden;
    const char16_t* status;
    int fps;
  } cases[] = {
      {mnuSubImpSUBL, "in_subl.sub", "import_subl.txt", u"3subs loaded.#", 25},
      {mnuSubImp850, "in_dos850.txt", "import_dos850.txt", u"2 subs loaded.", 25},
      {mnuSubImpSRT, "in_srt.srt", "import_srt.txt", u"3 subs loaded.", 30},
      {mnuSubImpSUB, "in_dotsub.sub", "import_dotsub.txt", nullptr, 25},
      {mnuSubImpSUBL, "in_subl_noend_crlf.sub", "import_first.txt", nullptr, 25},
      {mnuSubImpSUBL, "in_subl_noend_lf.sub", "import_first.txt", nullptr, 25},
      {mnuSubImpSRT, "in_srt_latin.srt", "import_srt_latin.txt", nullptr, 25},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.input);
    FormatsStation t(c.fps);
    EXPECT_TRUE(testing::matchesGolden(c.golden, import(t, c.handler, c.input, readFile(testing::goldenPath(c.input)))));
    if (c.status) {
      EXPECT_EQ(t.st.view.panel(3).text, c.status);
    }
    EXPECT_EQ(t.docs.fontName(), u"Courier New");
    // The next import's dialog opens in the folder of the file just read.
    EXPECT_FALSE(mnuSubImpSRT(t.st));
    EXPECT_TRUE(t.ui.openRequests.at(1).initialDir.ends_with(u"-import-" + fromUtf8(c.input)));
  }
  // At 25 frames the factor stays 30: 500 ms is frame 15, 999 ms is held at 24.
  FormatsStation p(25);
  std::string doc = import(p, mnuSubImpSRT, "f.srt", readFile(testing::goldenPath("in_srt.srt")));
  EXPECT_EQ(doc.substr(0, 33), "SUB[0 N 00:00:01:15>00:00:02:24]\n");
}

TEST(DotSubImport, FormatErrorsLeaveAnEmptyDocument) {
  for (const auto& [bytes, box] : {std::pair{"*PART 2*\r\n00:00:00.00\\00:00:00.00\r\n", u"Format Error 001"},
                                   std::pair{"*PART1*\r\na\r\nb\r\nc\r\nd\r\n00:00:00.00\\00:00:00.00\r\n", u"Format error 002"}}) {
    FormatsStation t;
    EXPECT_EQ(import(t, mnuSubImpSUB, "i.sub", bytes), "\n");
    EXPECT_EQ(t.ui.boxTexts(), std::vector<u16>{box});
    EXPECT_EQ(t.ui.lastBox().icon, Icon::None);
  }
}

// An EBU STL too short for its header or with another disk format code, and
// a list in which not one entry has the format's timing: named in a box, and
// no new document is opened for it.
TEST(LineImports, AFileOfAnotherKindIsNamedAndOpensNoDocument) {
  const std::string prose = "Dear operator,\r\nthis is a letter.\r\n\r\nIt has paragraphs.\r\n\r\nAnd an end.\r\n\r\n";
  std::string otherCode(2048, ' ');
  otherCode.replace(3, 8, "STL25.02");
  const struct {
    bool (*handler)(Station&);
    const char* name;
    std::string bytes;
    const char16_t* what;
  } cases[] = {
      {mnuSubImpEBU, "short.stl", prose, u" is not an EBU STL file.\rExpected a header of 1024 bytes whose disk format "
                                         u"code is STL, the frame rate and .01, as in STL25.01."},
      {mnuSubImpEBU, "code.stl", otherCode, u" is not an EBU STL file.\r"},
      {mnuSubImpSRT, "prose.srt", prose, u" is not an SRT file.\rExpected numbered blocks of a time line such as "
                                         u"00:00:01,000 --> 00:00:02,500, the text lines and an empty line."},
      {mnuSubImpSUBL, "srt.sub", "1\r\n00:00:01,000 --> 00:00:02,000\r\nOne\r\n\r\n", u" is not a {SUB} subtitle list.\r"},
      {mnuSubImp850, "prose.txt", prose, u" is not a DOS 850 subtitle list.\r"},
      {mnuSubImpSUB, "none.sub", "*PART 1*\r\n00:00:00.00\\00:00:00.00\r\n*End*\r\n", u" is not a .SUB subtitle list.\r"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    FormatsStation t;
    EXPECT_EQ(import(t, c.handler, c.name, c.bytes), "(stopped)");
    EXPECT_EQ(t.docs.documents().size(), 1u);
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    const u16 text = t.ui.lastBox().text;
    EXPECT_EQ(text.rfind(u"Error: /", 0), 0u);
    EXPECT_NE(text.find(u"/" + fromUtf8(c.name) + c.what), u16::npos) << toUtf8(text);
    EXPECT_EQ(t.ui.lastBox().icon, Icon::Critical);
  }
}

TEST(DotSubImport, OwnExportReadsOnIntoTheTrailer) {
  FormatsStation t;
  t.open(u"SUB[9 N 00:00:01:00>00:00:02:00]\nTop\n\nSUB[\n");
  const std::string path = tempDir("dotsub-own") + "/own.sub";
  FormSUB form;
  t.ui.savePaths.push_back(path);
  ASSERT_TRUE(mnuSubSub(t.st, form));
  commandProximoSUB(t.st, form);
  t.ui.openPaths.push_back(path);
  ASSERT_TRUE(mnuSubImpSUB(t.st));
  std::string doc = plainTextBytes(*t.docs.active());
  // "*END*" is not "*End*": it and the sections become subtitles.
  EXPECT_EQ(doc.substr(0, 48), "SUB[1 N 00:00:01.00>00:00:02.00]\n}Top\n\nSUB[0 N 0");
  EXPECT_NE(doc.find("]\n*END*\n\n"), std::string::npos);
  EXPECT_NE(doc.find("\n*CODE*\n0000000000000000\n\n"), std::string::npos);
}

TEST(UnicodeTextImport, EachNextNumberIsTakenWhereItFirstStandsInTheText) {
  // Entry 1's text holds "0003": the search for entry 3 finds it there,
  // ahead of entry 3 itself, as a search from the top does.
  FormatsStation t;
  t.open(u"0001 00:00:01:00 00:00:02:00\nSee 0003 here\n\n"
         u"0002 00:00:03:00 00:00:04:00\nTwo\n\n"
         u"0003 00:00:05:00 00:00:06:00\nThree\n\n");
  ASSERT_TRUE(mnuSubImpunitxt(t.st));
  EXPECT_TRUE(testing::matchesGolden("import_unitext_search.txt", plainTextBytes(*t.docs.active())));
}

// Real-world files from the shared corpus, where present: the number of
// tags each import gives, and one line decoded from ISO 6937.
TEST(CorpusImports, EachFileGivesItsSubtitles) {
  const std::string dir = std::string(QUILLON_CORPUS_DIR) + "/";
  if (!std::filesystem::exists(dir)) GTEST_SKIP() << "no corpus";
  std::istringstream expected(readFile(testing::goldenPath("corpus_counts.txt")));
  std::string rel, line, seen;
  while (std::getline(expected, line)) {
    rel = line.substr(0, line.find(' '));
    if (!std::filesystem::exists(dir + rel)) {
      seen += line + "\n";
      continue;
    }
    FormatsStation t(25);
    t.st.s.checksDisabled = true;
    const auto kind = rel.substr(0, rel.find('/'));
    const std::string doc = import(t, kind == "stl" ? mnuSubImpEBU : kind == "srt" ? mnuSubImpSRT : mnuSubImpSUBL,
                                   rel.substr(rel.rfind('/') + 1), readFile(dir + rel));
    EXPECT_TRUE(t.ui.boxes.empty()) << rel;
    int tags = 0;
    for (size_t at = doc.find("SUB["); at != std::string::npos; at = doc.find("SUB[", at + 1)) ++tags;
    seen += rel + " " + std::to_string(tags) + "\n";
    if (rel == "stl/mantas_ebu_stl_iso6937.stl") {
      EXPECT_NE(doc.find("Les r\xC3\xA9" "alisateurs de ce film ont pass\xC3\xA9\n"), std::string::npos);
    }
  }
  EXPECT_TRUE(testing::matchesGolden("corpus_counts.txt", seen));
}

}  // namespace
}  // namespace quillon
