// Files no operator meant to open: far too large, one endless line, a block
// count that lies, a zip bomb, a named pipe. Nothing crashes, hangs or
// allocates without bound; the station stops as it does on a file it cannot
// read, and quillon-cli names the file and the problem.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "captions/caption_checks.h"
#include "core/atomic_file.h"
#include "core/settings.h"
#include "formats/line_imports.h"
#include "formats/merge.h"
#include "formats/stl_import.h"
#include "reliability_support.h"
#include "script/document_files.h"
#include "script/tag_grammar.h"
#include "subtitling/rule_checks.h"
#include "support/station_fixture.h"
#include "transport/file_tag.h"
#ifdef QUILLON_HAVE_DOCFILES
#include "script/files/office_formats.h"
#endif

namespace quillon {
namespace {

using testing::quoted;
using testing::TestStation;

constexpr long long kTwoGigabytes = 2LL << 30;

// quillon-cli refuses the file with status 2 and `problem` named.
void expectCliRefuses(const std::string& dir, const std::string& args, const std::string& problem) {
  if (!std::filesystem::exists(QUILLON_CLI_PATH)) return;
  const testing::CliResult r = testing::runCli(dir, args);
  EXPECT_EQ(r.code, 2) << args;
  EXPECT_EQ(r.err, "quillon-cli: " + problem + "\n") << args;
}

TEST(HugeFiles, ATwoGigabyteScriptOrANamedPipeIsRefusedNamingTheFile) {
  const std::string dir = testing::tempDir("huge");
#ifdef QUILLON_HAVE_DOCFILES
  registerOfficeDocumentFormats();
  const char* names[] = {"big.txt", "big.docx", "big.odt"};
#else
  const char* names[] = {"big.txt"};
#endif
  for (const char* name : names) {
    const std::string path = dir + "/" + name;
    testing::makeSparseFile(path, kTwoGigabytes, "SUB[0 N 00:00:01:00>00:00:02:00]\n");
    std::string error;
    EXPECT_EQ(loadDocumentFile(path, error), nullptr) << name;
    // Word-processor files may carry pictures and are allowed more.
    EXPECT_EQ(error, "cannot read " + path + ": larger than " + (fileExtension(path) == "txt" ? "64" : "256") + " MB");
  }
  expectCliRefuses(dir, "scan " + quoted(dir + "/big.txt"), "cannot read " + dir + "/big.txt: larger than 64 MB");

  const std::string fifo = dir + "/script.txt";
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0644), 0);
  std::string error;
  EXPECT_EQ(loadDocumentFile(fifo, error), nullptr);
  EXPECT_EQ(error, "cannot read " + fifo + ": not a regular file");
}

TEST(HugeFiles, ImportsOfATwoGigabyteFileStopAsOnAnUnreadableFile) {
  const std::string dir = testing::tempDir("huge-imports");
  const std::string path = dir + "/big.lst";
  testing::makeSparseFile(path, kTwoGigabytes, "1\r\n00:00:01,000 --> 00:00:02,000\r\nText\r\n\r\n",
                          "\"P01000000010000500\"\r\n");
  // The line imports stop silently with no new document; the EBU reader
  // leaves an empty new one.
  for (auto handler : {mnuSubImpSUBL, mnuSubImp850, mnuSubImpSRT, mnuSubImpSUB, mnuSubImpEBU}) {
    TestStation t;
    t.open(u"");
    t.ui.openPaths.push_back(path);
    const bool ebu = handler == mnuSubImpEBU, ran = handler(t.st);
    EXPECT_EQ(std::tuple(ran, t.docs.documents().size(), t.content(), t.ui.boxes.size()),
              std::tuple(ebu, ebu ? 2u : 1u, u16(u"\r"), 0u));
  }
  // A settings file that large is not trusted: every field takes its default.
  EXPECT_EQ(readSettingsLine(path), "");
  // The video tag is read from the end alone.
  EXPECT_EQ(readFileTag(path), std::optional<u16>(u"P01000000010000500"));
  for (const char* format : {"srt", "stl", "subl"})
    expectCliRefuses(dir, std::string("import ") + format + " " + quoted(path) + " -o " + quoted(dir + "/out.txt"),
                     "cannot read " + path + ": larger than 64 MB");
}

TEST(LongLines, TenMegabytesOnOneLineThroughEveryReader) {
  // Mostly tag-like, so that the readers walk the line rather than skip it.
  std::string line;
  const std::string piece = "SUB[0 N 00:00:01:00>00:00:02:00]{25}{50}|0001\t10:00:01:00\t";
  while (line.size() + piece.size() <= (10u << 20)) line += piece;
  line.resize(10u << 20, 'x');
  for (bool captions : {false, true}) {
    TestStation t;
    captions ? installCaptionChecks(t.st) : installSubtitleChecks(t.st);
    t.docs.addDocument(plainTextDocument(line));
    captions ? scanCaptions(t.st, ScanMode::WholeScript) : scanSubtitles(t.st, ScanMode::WholeScript);
    EXPECT_LE(t.st.s.scan.count(), 1);
  }
  TestStation t;
  for (auto read : {readSubList, readDos850List, readSrt, readDotSubList}) {
    t.docs.documentsAdd();
    EXPECT_LE(read(t.st, line + "\r\n"), 1);
  }
  EXPECT_EQ(ebuStlToScript(line, 25), u"");
  for (auto command : {+[](Station& st) { cargarTiming(st); }, +[](Station& st) { mergeTiming(st); },
                       +[](Station& st) { mnuSubImpunitxt(st); }}) {
    t.docs.addDocument(plainTextDocument(line));
    command(t.st);
  }
  EXPECT_EQ(delimitedField(line).size(), line.size());
}

TEST(StlBlockCount, ACountOfNinetyNineThousandReadsOnlyTheBlocksThere) {
  std::string image = testing::readFile(std::string(QUILLON_SOURCE_DIR) + "/tests/formats/golden/sample.stl");
  ASSERT_GT(image.size(), 1024u);
  const u16 honest = ebuStlToScript(image, 25);
  image.replace(238, 5, "99999");
  EXPECT_EQ(ebuStlToScript(image, 25), honest);
  EXPECT_EQ(ebuStlToScript(image.substr(0, 1024), 25), u"");
}

#ifdef QUILLON_HAVE_DOCFILES
// A .docx whose document part inflates from about a megabyte to a gigabyte
// of zeros, deflated a megabyte at a time.
void writeZipBomb(const std::string& path) {
  const std::string py =
      "import sys, zipfile\n"
      "with zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_DEFLATED, compresslevel=9) as z:\n"
      "    with z.open('word/document.xml', 'w') as f:\n"
      "        for _ in range(1024): f.write(bytes(1 << 20))\n";
  ASSERT_EQ(std::system(("python3 -c " + quoted(py) + " " + quoted(path)).c_str()), 0);
}

TEST(ZipBomb, ADocxBombIsRefusedNamingTheFile) {
  registerOfficeDocumentFormats();
  const std::string dir = testing::tempDir("bomb");
  const std::string path = dir + "/bomb.docx";
  writeZipBomb(path);
  EXPECT_LT(std::filesystem::file_size(path), 2u << 20);
  std::string error;
  EXPECT_EQ(loadDocumentFile(path, error), nullptr);
  EXPECT_TRUE(error.rfind("cannot read " + path + ": ", 0) == 0 && error.find("zip bomb") != std::string::npos) << error;
  expectCliRefuses(dir, "scan " + quoted(path), error);
}
#endif

}  // namespace
}  // namespace quillon
