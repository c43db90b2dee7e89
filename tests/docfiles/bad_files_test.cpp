#include <gtest/gtest.h>

#include <fstream>

#include "docfiles_support.h"
#include "script/document_files.h"
#include "script/files/office_source.h"
#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

void writeBytes(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

// The one-line message for a bad file, which must name it.
std::string loadError(const std::string& dir, const std::string& name, const std::string& bytes) {
  std::string path = dir + "/" + name;
  writeBytes(path, bytes);
  std::string error;
  auto doc = loadDocumentFile(path, error);
  EXPECT_FALSE(doc) << name;
  EXPECT_EQ(error.rfind("cannot read " + path + ": ", 0), 0u) << error;
  EXPECT_EQ(error.find('\n'), std::string::npos) << error;
  return error.substr(std::min(error.size(), ("cannot read " + path + ": ").size()));
}

std::string documentXml(const std::string& body) {
  return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?><w:document ") + kW + "><w:body>" + body +
         "</w:body></w:document>";
}

TEST(BadFiles, EachProblemGetsOneMessageNamingTheFile) {
  std::string dir = tempDir("docfiles-bad");
  std::string good = docxPackage("<w:p><w:r><w:t>text</w:t></w:r></w:p>");

  EXPECT_EQ(loadError(dir, "text.docx", "just some text, not an archive"), "not a zip archive");
  std::string truncated = good.substr(0, good.size() / 2);
  EXPECT_FALSE(loadError(dir, "truncated.docx", truncated).empty());
  std::string flipped = good;
  for (size_t i = 60; i < 90 && i < flipped.size(); ++i) flipped[i] = static_cast<char>(~flipped[i]);
  EXPECT_FALSE(loadError(dir, "flipped.docx", flipped).empty());

  EXPECT_EQ(loadError(dir, "nodoc.docx", zipOf({{"[Content_Types].xml", "<Types/>"}})),
            "the document part word/document.xml is missing");
  EXPECT_EQ(loadError(dir, "notword.docx", zipOf({{"a.txt", "x"}})),
            "not a .docx package ([Content_Types].xml is missing)");
  EXPECT_EQ(loadError(dir, "broken.docx",
                      docxPackage("", "", {{"word/document.xml", "<w:document " + std::string(kW) + ">\n<w:body>"}})),
            "word/document.xml is not well-formed XML (line 2: Start-end tags mismatch)");
  EXPECT_EQ(loadError(dir, "cp1252.docx",
                      docxPackage("", "", {{"word/document.xml",
                                            "<?xml version=\"1.0\" encoding=\"windows-1252\"?><w:document " +
                                                std::string(kW) + "><w:body/></w:document>"}})),
            "word/document.xml is in an unknown encoding (windows-1252)");
  EXPECT_EQ(loadError(dir, "latin.docx",
                      docxPackage("", "", {{"word/document.xml", documentXml("<w:p><w:r><w:t>caf\xE9</w:t></w:r></w:p>")}})),
            "word/document.xml is not valid UTF-8 text");

  EXPECT_EQ(loadError(dir, "sheet.odt", zipOf({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
                                               {"content.xml", "<x/>"}})),
            "not an OpenDocument text (its type is application/vnd.oasis.opendocument.spreadsheet)");
  EXPECT_EQ(loadError(dir, "empty.odt", zipOf({{"mimetype", "application/vnd.oasis.opendocument.text"}})),
            "the part content.xml is missing");
  EXPECT_EQ(loadError(dir, "locked.odt",
                      zipOf({{"mimetype", "application/vnd.oasis.opendocument.text"},
                             {"META-INF/manifest.xml", "<manifest><encryption-data/></manifest>"},
                             {"content.xml", "binary"}})),
            "the document is password-protected");
}

TEST(BadFiles, AZipBombIsRefusedBeforeItIsInflated) {
  std::string dir = tempDir("docfiles-bomb");
  std::string zeros(32u << 20, '\0');
  std::string error = loadError(dir, "bomb.docx", docxPackage("", "", {{"word/fonts.bin", zeros}}));
  EXPECT_NE(error.find("zip bomb"), std::string::npos) << error;

  // Many entries, each modest, still add up to too much.
  docfiles::ZipPackage pkg;
  std::string problem;
  docfiles::ZipLimits small;
  small.maxTotalBytes = 1000;
  EXPECT_FALSE(pkg.read(docxPackage("<w:p/>", "", {{"a.bin", std::string(2000, 'x')}}), problem, small));
  EXPECT_NE(problem.find("expands beyond"), std::string::npos) << problem;
}

TEST(BadFiles, ASaveThatCannotBeBuiltLeavesTheOldFileAsItWas) {
  std::string dir = tempDir("docfiles-save");
  std::string path = dir + "/script.docx";
  writeBytes(path, "the operator's earlier file");
  // A document whose kept package has lost its document part.
  auto doc = docfiles::documentFrom({{u"text", {0, 0, 0, 0}}});
  docfiles::OfficeSource source;
  source.package.put("[Content_Types].xml", "<Types/>");
  source.paragraphs = {{u"text", {0, 0, 0, 0}}};
  docfiles::attachSource(*doc, std::move(source));
  std::string error;
  EXPECT_FALSE(saveDocumentFile(*doc, path, error));
  EXPECT_EQ(error, "cannot write " + path + ": the document part word/document.xml is missing");
  EXPECT_EQ(readFile(path), "the operator's earlier file");
}

TEST(BadFiles, ADocxWithoutRelationshipsOrStylesStillOpens) {
  auto bytes = zipOf({{"[Content_Types].xml", "<Types/>"},
                      {"word/document.xml", documentXml("<w:p><w:r><w:t>bare</w:t></w:r></w:p>")}});
  std::string problem;
  auto doc = docfiles::loadDocx(bytes, problem);
  ASSERT_TRUE(doc) << problem;
  EXPECT_EQ(doc->text(), u"bare\r");
}

}  // namespace
}  // namespace quillon::testing

namespace quillon::testing {
namespace {

// Damage anywhere in a file gives a message or a document, never a crash.
TEST(BadFiles, DamageAnywhereIsSurvived) {
  MemoryDocument d;
  d.setText(u"SUB[0 N 00:00:01:00>00:00:02:00]\rSome text\r\rMore\r");
  d.setItalic({34, 38}, true);
  d.customProperties.emplace_back(u"OPT", u"Title");
  for (bool odt : {false, true}) {
    std::string bytes, problem;
    ASSERT_TRUE(odt ? docfiles::buildOdt(d, bytes, problem) : docfiles::buildDocx(d, bytes, problem)) << problem;
    int loaded = 0, refused = 0;
    for (size_t at = 0; at < bytes.size(); at += 7) {
      std::string damaged = bytes;
      damaged[at] = static_cast<char>(damaged[at] ^ 0x5A);
      auto doc = odt ? docfiles::loadOdt(damaged, problem) : docfiles::loadDocx(damaged, problem);
      if (doc) {
        ++loaded;
      } else {
        ++refused;
        EXPECT_FALSE(problem.empty());
      }
    }
    EXPECT_GT(refused, 0);
    (void)loaded;
  }
}

TEST(BadFiles, ADocxSavedAsOdtKeepsTextItalicsAndProperties) {
  auto docx = docxPackage("<w:p><w:r><w:t xml:space=\"preserve\">Hello </w:t></w:r><w:r><w:rPr><w:i/></w:rPr>"
                          "<w:t>world</w:t></w:r></w:p>");
  std::string problem;
  auto doc = docfiles::loadDocx(docx, problem);
  ASSERT_TRUE(doc) << problem;
  doc->customProperties.emplace_back(u"TN", u"Name");
  std::string odt;
  ASSERT_TRUE(docfiles::buildOdt(*doc, odt, problem)) << problem;
  auto back = docfiles::loadOdt(odt, problem);
  ASSERT_TRUE(back) << problem;
  EXPECT_EQ(marked(*back), u"Hello <i>world</i>\n");
  EXPECT_EQ(back->customProperties, doc->customProperties);
}

}  // namespace
}  // namespace quillon::testing
