// Round trips on real files: LibreOffice turns a fixture into .docx and .odt,
// the station loads them, inserts tags, saves, and both the station and
// LibreOffice read the result back. Skipped where soffice is not installed.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "docfiles_support.h"
#include "script/document_files.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

// soffice --convert-to into `outDir`; the converted file's path, empty on failure.
std::string convert(const std::string& dir, const std::string& input, const std::string& format,
                    const std::string& outDir) {
  const std::string cmd = "cd '" + dir + "' && soffice -env:UserInstallation=file://" + dir +
                          "/profile --headless --convert-to " + format + " --outdir '" + outDir + "' '" + input +
                          "' >/dev/null 2>&1";
  if (std::system(cmd.c_str()) != 0) return {};
  const std::string out = outDir + "/" + std::filesystem::path(input).stem().string() + "." + format;
  return std::filesystem::exists(out) ? out : std::string();
}

class LibreOfficeFiles : public ::testing::TestWithParam<std::string> {
 protected:
  static void SetUpTestSuite() {
    setenv("TZ", "UTC", 1);
    tzset();
    if (std::system("command -v soffice >/dev/null 2>&1") != 0) return;
    dir_ = tempDir("libreoffice");
    std::ofstream(dir_ + "/fixture.fodt", std::ios::binary) << goldenFile("fixture.fodt");
    for (const char* ext : {"docx", "odt"}) convert(dir_, dir_ + "/fixture.fodt", ext, dir_);
  }
  void SetUp() override {
    if (dir_.empty()) GTEST_SKIP() << "soffice is not installed";
  }
  static std::string dir_;
};
std::string LibreOfficeFiles::dir_;

void expectProperties(DocumentService& d) {
  EXPECT_EQ(d.builtinProperty(wdPropertyTitle), u"Pilot episode");
  EXPECT_EQ(d.builtinProperty(wdPropertyAuthor), u"Ana Author");
  EXPECT_EQ(d.builtinProperty(wdPropertyComments), u"Dubbing notes");
  EXPECT_EQ(d.builtinProperty(wdPropertyRevision), u"7");
  EXPECT_EQ(d.builtinProperty(wdPropertyTimeCreated), u"2023-04-05 06:07:08");
  EXPECT_EQ(d.builtinProperty(wdPropertyCompany), u"ACME Dub");
  EXPECT_EQ(d.customProperty(u"OPT"), u"Original title");
}

TEST_P(LibreOfficeFiles, TextItalicsAndPropertiesSurviveATagInsertAndASave) {
  const std::string ext = GetParam();
  const std::string converted = dir_ + "/fixture." + ext;
  ASSERT_TRUE(std::filesystem::exists(converted)) << "LibreOffice did not convert the fixture to " << ext;
  auto loaded = loadOrFail(converted);
  ASSERT_TRUE(loaded);
  EXPECT_EQ(marked(*loaded),
            u"Plain <i>bold italic</i> and <i>emph</i>.\n<i>Whole italic paragraph</i>\nTab\there and break\vthere"
            u"   spaces\nJOHN\nHello <i>there</i>\nÑandú — ünïcode\n");

  TestStation t;
  MemoryDocument& d = t.docs.addDocument(std::move(loaded));
  expectProperties(t.docs);
  // A tag in front of the second paragraph and one inside the table, and a
  // property as the STL export adds it.
  d.setSelection(d.paragraph(2));
  insertSubtitleTag(t.st, u"SUB[0 N 00:00:01:00>00:00:02:00]\r");
  d.setSelection(d.paragraph(6));
  insertSubtitleTag(t.st, u"SUB[1 N 00:00:03:00>00:00:04:00]\r");
  t.docs.setCustomProperty(u"TN", u"Translator");
  const std::u16string expected =
      u"Plain <i>bold italic</i> and <i>emph</i>.\nSUB[0 N 00:00:01:00>00:00:02:00]\n<i>Whole italic paragraph</i>\n"
      u"Tab\there and break\vthere   spaces\nJOHN\nSUB[1 N 00:00:03:00>00:00:04:00]\nHello <i>there</i>\n"
      u"Ñandú — ünïcode\n";
  ASSERT_EQ(marked(d), expected);

  const std::string saved = dir_ + "/saved-" + ext + "." + ext;
  std::string error;
  ASSERT_TRUE(saveDocumentFile(d, saved, error)) << error;
  // The station and LibreOffice (through the other format) read what it wrote.
  const std::string outDir = dir_ + "/check-" + ext;
  std::filesystem::create_directories(outDir);
  const std::string reconverted = convert(dir_, saved, ext == "docx" ? "odt" : "docx", outDir);
  ASSERT_FALSE(reconverted.empty()) << "LibreOffice could not read " << saved;
  for (const std::string& path : {saved, reconverted}) {
    SCOPED_TRACE(path);
    auto back = loadOrFail(path);
    ASSERT_TRUE(back);
    EXPECT_EQ(marked(*back), expected);
    MemoryDocumentService svc;
    svc.addDocument(std::move(back));
    expectProperties(svc);
    EXPECT_EQ(svc.customProperty(u"TN"), u"Translator");
  }
}

INSTANTIATE_TEST_SUITE_P(Formats, LibreOfficeFiles, ::testing::Values("docx", "odt"));

}  // namespace
}  // namespace quillon::testing
