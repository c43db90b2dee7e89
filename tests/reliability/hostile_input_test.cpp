// Files no operator meant to open: far too large, one endless line, a block
// count that lies, a zip bomb, a named pipe. Nothing crashes, hangs or
// allocates without bound; the station stops as it does on a file it cannot
// read, and quillon-cli names the file and the problem.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <zlib.h>

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

std::string golden(const std::string& name) {
  return testing::readFile(std::string(QUILLON_SOURCE_DIR) + "/tests/formats/golden/" + name);
}

TEST(HugeFiles, ATwoGigabyteScriptIsRefusedNamingTheFile) {
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
    const char* limit = fileExtension(path) == "txt" ? "64" : "256";
    EXPECT_EQ(error, "cannot read " + path + ": larger than " + limit + " MB");
  }
  if (!std::filesystem::exists(QUILLON_CLI_PATH)) return;
  testing::CliResult r = testing::runCli(dir, "scan " + quoted(dir + "/big.txt"));
  EXPECT_EQ(r.code, 2);
  EXPECT_EQ(r.err, "quillon-cli: cannot read " + dir + "/big.txt: larger than 64 MB\n");
}

TEST(HugeFiles, ImportsOfATwoGigabyteFileStopAsOnAnUnreadableFile) {
  const std::string dir = testing::tempDir("huge-imports");
  const std::string path = dir + "/big.lst";
  testing::makeSparseFile(path, kTwoGigabytes, "1\r\n00:00:01,000 --> 00:00:02,000\r\nText\r\n\r\n");
  // The line imports stop silently with no new document.
  for (auto handler : {mnuSubImpSUBL, mnuSubImp850, mnuSubImpSRT, mnuSubImpSUB}) {
    TestStation t;
    t.open(u"");
    t.ui.openPaths.push_back(path);
    EXPECT_FALSE(handler(t.st));
    EXPECT_EQ(t.docs.documents().size(), 1u);
    EXPECT_TRUE(t.ui.boxes.empty());
  }
  // The EBU reader leaves an empty new document.
  TestStation t;
  t.open(u"");
  t.ui.openPaths.push_back(path);
  EXPECT_TRUE(mnuSubImpEBU(t.st));
  EXPECT_EQ(t.docs.documents().size(), 2u);
  EXPECT_EQ(t.content(), u"\r");
  EXPECT_TRUE(t.ui.boxes.empty());
  // A settings file that large is not trusted: every field takes its default.
  EXPECT_EQ(readSettingsLine(path), "");
  if (!std::filesystem::exists(QUILLON_CLI_PATH)) return;
  for (const char* format : {"srt", "stl", "subl"}) {
    testing::CliResult r =
        testing::runCli(dir, std::string("import ") + format + " " + quoted(path) + " -o " + quoted(dir + "/out.txt"));
    EXPECT_EQ(r.code, 2) << format;
    EXPECT_EQ(r.err, "quillon-cli: cannot read " + path + ": larger than 64 MB\n") << format;
  }
}

TEST(HugeFiles, TheVideoTagIsReadFromTheEndAlone) {
  const std::string path = testing::tempDir("huge-video") + "/big.avi";
  testing::makeSparseFile(path, kTwoGigabytes, "RIFF", "\"P01000000010000500\"\r\n");
  std::optional<u16> tag = readFileTag(path);
  ASSERT_TRUE(tag);
  EXPECT_EQ(*tag, u"P01000000010000500");
}

TEST(HugeFiles, ANamedPipeIsRefusedAtOnce) {
  const std::string path = testing::tempDir("fifo") + "/script.txt";
  ASSERT_EQ(::mkfifo(path.c_str(), 0644), 0);
  std::string error;
  EXPECT_EQ(loadDocumentFile(path, error), nullptr);
  EXPECT_EQ(error, "cannot read " + path + ": not a regular file");
}

// One line of ten million characters, mostly tag-like so that the readers
// walk it rather than skip it.
std::string tenMegabyteLine() {
  std::string line;
  line.reserve(10u << 20);
  const std::string piece = "SUB[0 N 00:00:01:00>00:00:02:00]{25}{50}|0001\t10:00:01:00\t";
  while (line.size() + piece.size() <= (10u << 20)) line += piece;
  line.resize(10u << 20, 'x');
  return line;
}

TEST(LongLines, TenMegabytesOnOneLineThroughEveryReader) {
  const std::string line = tenMegabyteLine();
  {
    TestStation t;
    installSubtitleChecks(t.st);
    t.docs.addDocument(plainTextDocument(line));
    scanSubtitles(t.st, ScanMode::WholeScript);
    EXPECT_LE(t.st.s.scan.count(), 1);
  }
  {
    TestStation t;
    installCaptionChecks(t.st);
    t.docs.addDocument(plainTextDocument(line));
    scanCaptions(t.st, ScanMode::WholeScript);
    EXPECT_LE(t.st.s.scan.count(), 1);
  }
  for (auto read : {readSubList, readDos850List, readSrt, readDotSubList}) {
    TestStation t;
    t.docs.documentsAdd();
    EXPECT_LE(read(t.st, line + "\r\n"), 1);
  }
  EXPECT_EQ(ebuStlToScript(line, 25), u"");
  {
    TestStation t;
    t.docs.addDocument(plainTextDocument(line));
    cargarTiming(t.st);
    t.docs.addDocument(plainTextDocument(line));
    mergeTiming(t.st);
    t.docs.addDocument(plainTextDocument(line));
    mnuSubImpunitxt(t.st);
  }
  Session s;
  applySettingsLine(s, line);
  EXPECT_EQ(buildSettingsLine(s).size(), 47u);
  EXPECT_EQ(delimitedField(line).size(), line.size());
}

TEST(StlBlockCount, ACountOfNinetyNineThousandReadsOnlyTheBlocksThere) {
  std::string image = golden("sample.stl");
  ASSERT_GT(image.size(), 1024u);
  const u16 honest = ebuStlToScript(image, 25);
  image.replace(238, 5, "99999");
  EXPECT_EQ(ebuStlToScript(image, 25), honest);
  EXPECT_EQ(ebuStlToScript(image.substr(0, 1024), 25), u"");

  const std::string path = testing::tempDir("stl-tnb") + "/lying.stl";
  std::ofstream(path, std::ios::binary) << image;
  TestStation t(25);
  t.open(u"");
  t.ui.openPaths.push_back(path);
  ASSERT_TRUE(mnuSubImpEBU(t.st));
  EXPECT_EQ(t.content(), honest + u"\r");
  EXPECT_TRUE(t.ui.boxes.empty());
}

#ifdef QUILLON_HAVE_DOCFILES
void put16(std::string& s, unsigned v) {
  s += static_cast<char>(v & 0xFF);
  s += static_cast<char>((v >> 8) & 0xFF);
}
void put32(std::string& s, unsigned long v) {
  put16(s, v & 0xFFFF);
  put16(s, (v >> 16) & 0xFFFF);
}

// A .docx whose document part inflates from about a megabyte to a gigabyte
// of zeros, built a megabyte at a time.
std::string zipBomb() {
  const std::string name = "word/document.xml";
  const unsigned long size = 1ul << 30;
  std::string deflated;
  z_stream z{};
  deflateInit2(&z, 9, Z_DEFLATED, -15, 9, Z_DEFAULT_STRATEGY);
  std::string zeros(1u << 20, '\0');
  std::string chunk(1u << 16, '\0');
  unsigned long crc = crc32(0, nullptr, 0);
  for (unsigned long done = 0; done < size; done += zeros.size()) {
    crc = crc32(crc, reinterpret_cast<const Bytef*>(zeros.data()), static_cast<uInt>(zeros.size()));
    z.next_in = reinterpret_cast<Bytef*>(zeros.data());
    z.avail_in = static_cast<uInt>(zeros.size());
    const int flush = done + zeros.size() >= size ? Z_FINISH : Z_NO_FLUSH;
    do {
      z.next_out = reinterpret_cast<Bytef*>(chunk.data());
      z.avail_out = static_cast<uInt>(chunk.size());
      deflate(&z, flush);
      deflated.append(chunk.data(), chunk.size() - z.avail_out);
    } while (z.avail_out == 0);
  }
  deflateEnd(&z);
  std::string zip;
  auto header = [&](bool central) {
    put32(zip, central ? 0x02014b50 : 0x04034b50);
    if (central) put16(zip, 20);
    put16(zip, 20);
    put16(zip, 0);
    put16(zip, 8);
    put32(zip, 0);
    put32(zip, crc);
    put32(zip, deflated.size());
    put32(zip, size);
    put16(zip, name.size());
    put16(zip, 0);
    if (central) {
      put16(zip, 0);
      put16(zip, 0);
      put16(zip, 0);
      put32(zip, 0);
      put32(zip, 0);
    }
    zip += name;
  };
  header(false);
  zip += deflated;
  const unsigned long directory = zip.size();
  header(true);
  const unsigned long directorySize = zip.size() - directory;
  put32(zip, 0x06054b50);
  put16(zip, 0);
  put16(zip, 0);
  put16(zip, 1);
  put16(zip, 1);
  put32(zip, directorySize);
  put32(zip, directory);
  put16(zip, 0);
  return zip;
}

TEST(ZipBomb, ADocxBombIsRefusedNamingTheFile) {
  registerOfficeDocumentFormats();
  const std::string dir = testing::tempDir("bomb");
  const std::string path = dir + "/bomb.docx";
  const std::string bomb = zipBomb();
  EXPECT_LT(bomb.size(), 2u << 20);
  std::ofstream(path, std::ios::binary) << bomb;
  std::string error;
  EXPECT_EQ(loadDocumentFile(path, error), nullptr);
  EXPECT_EQ(error.rfind("cannot read " + path + ": ", 0), 0u) << error;
  EXPECT_NE(error.find("zip bomb"), std::string::npos) << error;
  if (!std::filesystem::exists(QUILLON_CLI_PATH)) return;
  testing::CliResult r = testing::runCli(dir, "scan " + quoted(path));
  EXPECT_EQ(r.code, 2);
  EXPECT_EQ(r.err, "quillon-cli: " + error + "\n");
}
#endif

}  // namespace
}  // namespace quillon
