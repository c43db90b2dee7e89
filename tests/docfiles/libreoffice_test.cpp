// Round trips on real files: LibreOffice turns a fixture into .docx and .odt,
// the station loads them, inserts a tag, saves, and both the station and
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

const char* kFixture = R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0" xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:meta="urn:oasis:names:tc:opendocument:xmlns:meta:1.0" office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.text">
<office:meta><dc:title>Pilot episode</dc:title><meta:initial-creator>Ana Author</meta:initial-creator><dc:description>Dubbing notes</dc:description><meta:editing-cycles>7</meta:editing-cycles><meta:creation-date>2023-04-05T06:07:08</meta:creation-date><meta:user-defined meta:name="OPT">Original title</meta:user-defined><meta:user-defined meta:name="Company">ACME Dub</meta:user-defined></office:meta>
<office:styles><style:style style:name="Voice" style:family="paragraph"><style:text-properties fo:font-style="italic"/></style:style><style:style style:name="Emph" style:family="text"><style:text-properties fo:font-style="italic"/></style:style></office:styles>
<office:automatic-styles><style:style style:name="T1" style:family="text"><style:text-properties fo:font-weight="bold" fo:font-style="italic"/></style:style><style:style style:name="P1" style:family="paragraph"><style:paragraph-properties fo:text-align="center"/></style:style></office:automatic-styles>
<office:body><office:text>
<text:p text:style-name="P1">Plain <text:span text:style-name="T1">bold italic</text:span> and <text:span text:style-name="Emph">emph</text:span>.</text:p>
<text:p text:style-name="Voice">Whole italic paragraph</text:p>
<text:p>Tab<text:tab/>here and break<text:line-break/>there <text:s text:c="2"/>spaces</text:p>
<table:table><table:table-column table:number-columns-repeated="2"/><table:table-row><table:table-cell><text:p>JOHN</text:p></table:table-cell><table:table-cell><text:p>Hello <text:span text:style-name="Emph">there</text:span></text:p></table:table-cell></table:table-row></table:table>
<text:p>Ñandú — ünïcode</text:p>
</office:text></office:body></office:document>
)";

const std::u16string kExpected =
    u"Plain <i>bold italic</i> and <i>emph</i>.\n<i>Whole italic paragraph</i>\nTab\there and break\vthere   spaces\n"
    u"JOHN\nHello <i>there</i>\nÑandú — ünïcode\n";

bool haveSoffice() { return std::system("command -v soffice >/dev/null 2>&1") == 0; }

// soffice --convert-to into `outDir`; the converted file's path, empty on failure.
std::string convert(const std::string& dir, const std::string& input, const std::string& format,
                    const std::string& outDir) {
  std::string cmd = "cd '" + dir + "' && soffice -env:UserInstallation=file://" + dir +
                    "/profile --headless --convert-to " + format + " --outdir '" + outDir + "' '" + input +
                    "' >/dev/null 2>&1";
  if (std::system(cmd.c_str()) != 0) return {};
  std::string stem = std::filesystem::path(input).stem().string();
  std::string ext = format.substr(0, format.find(':'));
  std::string out = outDir + "/" + stem + "." + ext;
  return std::filesystem::exists(out) ? out : std::string();
}

class LibreOfficeFiles : public ::testing::TestWithParam<std::string> {
 protected:
  static void SetUpTestSuite() {
    setenv("TZ", "UTC", 1);
    tzset();
    if (!haveSoffice()) return;
    dir_ = tempDir("libreoffice");
    std::ofstream(dir_ + "/fixture.fodt", std::ios::binary) << kFixture;
    for (const char* ext : {"docx", "odt"}) convert(dir_, dir_ + "/fixture.fodt", ext, dir_);
  }
  void SetUp() override {
    if (dir_.empty()) GTEST_SKIP() << "soffice is not installed";
  }
  static std::string dir_;
};
std::string LibreOfficeFiles::dir_;

TEST_P(LibreOfficeFiles, TextItalicsAndPropertiesSurviveATagInsertAndASave) {
  const std::string ext = GetParam();
  std::string converted = dir_ + "/fixture." + ext;
  ASSERT_TRUE(std::filesystem::exists(converted)) << "LibreOffice did not convert the fixture to " << ext;
  auto loaded = loadOrFail(converted);
  ASSERT_TRUE(loaded);
  EXPECT_EQ(marked(*loaded), kExpected);

  TestStation t;
  MemoryDocument& d = t.docs.addDocument(std::move(loaded));
  auto checkProperties = [&](const char* when) {
    SCOPED_TRACE(when);
    EXPECT_EQ(t.docs.builtinProperty(wdPropertyTitle), u"Pilot episode");
    EXPECT_EQ(t.docs.builtinProperty(wdPropertyAuthor), u"Ana Author");
    EXPECT_EQ(t.docs.builtinProperty(wdPropertyComments), u"Dubbing notes");
    EXPECT_EQ(t.docs.builtinProperty(wdPropertyRevision), u"7");
    EXPECT_EQ(t.docs.builtinProperty(wdPropertyTimeCreated), u"2023-04-05 06:07:08");
    EXPECT_EQ(t.docs.builtinProperty(wdPropertyCompany), u"ACME Dub");
    EXPECT_EQ(t.docs.customProperty(u"OPT"), u"Original title");
  };
  checkProperties("as converted");

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

  std::string saved = dir_ + "/saved-" + ext + "." + ext;
  std::string error;
  ASSERT_TRUE(saveDocumentFile(d, saved, error)) << error;
  auto back = loadOrFail(saved);
  ASSERT_TRUE(back);
  EXPECT_EQ(marked(*back), expected);
  t.docs.addDocument(std::move(back));
  checkProperties("after the save");
  EXPECT_EQ(t.docs.customProperty(u"TN"), u"Translator");

  // LibreOffice reads what the station wrote, italics included.
  std::string other = ext == "docx" ? "odt" : "docx";
  std::string outDir = dir_ + "/check-" + ext;
  std::filesystem::create_directories(outDir);
  std::string reconverted = convert(dir_, saved, other, outDir);
  ASSERT_FALSE(reconverted.empty()) << "LibreOffice could not read " << saved;
  auto seen = loadOrFail(reconverted);
  ASSERT_TRUE(seen);
  EXPECT_EQ(marked(*seen), expected);
  MemoryDocumentService svc;
  svc.addDocument(std::move(seen));
  EXPECT_EQ(svc.customProperty(u"TN"), u"Translator");
  EXPECT_EQ(svc.builtinProperty(wdPropertyTitle), u"Pilot episode");
}

INSTANTIATE_TEST_SUITE_P(Formats, LibreOfficeFiles, ::testing::Values("docx", "odt"));

}  // namespace
}  // namespace quillon::testing
