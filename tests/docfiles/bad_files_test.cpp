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
  const std::string path = dir + "/" + name, head = "cannot read " + path + ": ";
  writeBytes(path, bytes);
  std::string error;
  EXPECT_FALSE(loadDocumentFile(path, error)) << name;
  EXPECT_EQ(error.rfind(head, 0), 0u) << error;
  EXPECT_EQ(error.find('\n'), std::string::npos) << error;
  return error.substr(std::min(error.size(), head.size()));
}

TEST(BadFiles, EachProblemGetsOneMessageNamingTheFile) {
  const std::string dir = tempDir("docfiles-bad");
  const std::string good = docxPackage("<w:p><w:r><w:t>text</w:t></w:r></w:p>");
  std::string flipped = good;
  for (size_t i = 60; i < 90 && i < flipped.size(); ++i) flipped[i] = static_cast<char>(~flipped[i]);
  const std::string odtType = "application/vnd.oasis.opendocument.text";
  const auto withDocument = [](const std::string& xml) { return docxPackage("", "", {{"word/document.xml", xml}}); };
  const struct {
    const char* name;
    std::string bytes, expected;  // empty: any message
  } cases[] = {
      {"text.docx", "just some text, not an archive", "not a zip archive"},
      {"truncated.docx", good.substr(0, good.size() / 2), ""},
      {"flipped.docx", flipped, ""},
      {"nodoc.docx", zipOf({{"[Content_Types].xml", "<Types/>"}}), "the document part word/document.xml is missing"},
      {"notword.docx", zipOf({{"a.txt", "x"}}), "not a .docx package ([Content_Types].xml is missing)"},
      {"broken.docx", withDocument("<w:document " + std::string(kW) + ">\n<w:body>"),
       "word/document.xml is not well-formed XML (line 2: Start-end tags mismatch)"},
      {"cp1252.docx",
       withDocument("<?xml version=\"1.0\" encoding=\"windows-1252\"?><w:document " + std::string(kW) +
                    "><w:body/></w:document>"),
       "word/document.xml is in an unknown encoding (windows-1252)"},
      {"latin.docx",
       withDocument("<w:document " + std::string(kW) + "><w:body><w:p><w:r><w:t>caf\xE9</w:t></w:r></w:p></w:body>"
                    "</w:document>"),
       "word/document.xml is not valid UTF-8 text"},
      {"sheet.odt", zipOf({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}, {"content.xml", "<x/>"}}),
       "not an OpenDocument text (its type is application/vnd.oasis.opendocument.spreadsheet)"},
      {"empty.odt", zipOf({{"mimetype", odtType}}), "the part content.xml is missing"},
      {"locked.odt",
       zipOf({{"mimetype", odtType},
              {"META-INF/manifest.xml", "<manifest><encryption-data/></manifest>"},
              {"content.xml", "binary"}}),
       "the document is password-protected"},
  };
  for (const auto& c : cases) {
    const std::string message = loadError(dir, c.name, c.bytes);
    if (c.expected.empty())
      EXPECT_FALSE(message.empty()) << c.name;
    else
      EXPECT_EQ(message, c.expected) << c.name;
  }
}

TEST(BadFiles, ASaveThatCannotBeBuiltLeavesTheOldFileAsItWas) {
  const std::string path = tempDir("docfiles-save") + "/script.docx";
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

}  // namespace
}  // namespace quillon::testing
