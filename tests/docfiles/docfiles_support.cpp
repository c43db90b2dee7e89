#include "docfiles_support.h"

#include <cstdlib>
#include <fstream>

#include "script/document_files.h"
#include "support/station_fixture.h"

namespace quillon::testing {

std::string zipOf(const std::map<std::string, std::string>& parts) {
  docfiles::ZipPackage pkg;
  if (parts.count("mimetype")) pkg.put("mimetype", parts.at("mimetype"), true);
  for (const auto& [name, data] : parts)
    if (name != "mimetype") pkg.put(name, data);
  std::string bytes, problem;
  EXPECT_TRUE(pkg.write(bytes, problem)) << problem;
  return bytes;
}

// The least a reader needs: the content types' presence, the document part
// under its usual name, and the styles through the document's relationships.
std::string docxPackage(const std::string& body, const std::string& styles, std::map<std::string, std::string> extra) {
  const std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
  std::map<std::string, std::string> parts = {
      {"[Content_Types].xml", "<Types/>"},
      {"word/document.xml", xml + "<w:document " + kW + "><w:body>" + body + "<w:sectPr/></w:body></w:document>"}};
  if (!styles.empty()) {
    parts["word/_rels/document.xml.rels"] = xml + goldenFile("in_docx_rels.xml");
    parts["word/styles.xml"] = xml + "<w:styles " + kW + ">" + styles + "</w:styles>";
  }
  for (auto& [k, v] : extra) parts[k] = v;
  return zipOf(parts);
}

std::string odtPackage(const std::string& text, const std::string& automaticStyles, const std::string& commonStyles,
                       const std::string& meta) {
  const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document-";
  const std::string ns = goldenFile("in_odt_namespaces.txt");
  std::map<std::string, std::string> parts = {
      {"mimetype", "application/vnd.oasis.opendocument.text"},
      {"content.xml", head + "content" + ns + "<office:automatic-styles>" + automaticStyles +
                          "</office:automatic-styles><office:body><office:text>" + text +
                          "</office:text></office:body></office:document-content>"},
      {"styles.xml", head + "styles" + ns + "<office:styles>" + commonStyles + "</office:styles></office:document-styles>"}};
  if (!meta.empty())
    parts["meta.xml"] = head + "meta" + ns + "<office:meta>" + meta + "</office:meta></office:document-meta>";
  return zipOf(parts);
}

std::unique_ptr<MemoryDocument> loadPackage(const std::string& bytes, bool odt) {
  std::string problem;
  auto doc = odt ? docfiles::loadOdt(bytes, problem) : docfiles::loadDocx(bytes, problem);
  EXPECT_TRUE(doc) << problem;
  return doc ? std::move(doc) : std::make_unique<MemoryDocument>();
}

std::string buildPackage(const MemoryDocument& doc, bool odt) {
  std::string bytes, problem;
  EXPECT_TRUE(odt ? docfiles::buildOdt(doc, bytes, problem) : docfiles::buildDocx(doc, bytes, problem)) << problem;
  return bytes;
}

std::string partOf(const std::string& packageBytes, const std::string& name) {
  docfiles::ZipPackage pkg;
  std::string problem;
  if (!pkg.read(packageBytes, problem)) return {};
  const docfiles::ZipEntry* e = pkg.find(name);
  return e ? e->data : std::string();
}

std::u16string marked(const MemoryDocument& doc) {
  std::u16string out;
  bool in = false;
  const auto flags = doc.italicFlags();
  const std::u16string text = doc.text();
  for (size_t i = 0; i < text.size(); ++i) {
    const bool it = text[i] != CR && flags[i];
    if (it != in) out += it ? u"<i>" : u"</i>";
    in = it;
    out += text[i] == CR ? u'\n' : text[i];
  }
  return in ? out + u"</i>" : out;
}

std::unique_ptr<MemoryDocument> loadOrFail(const std::string& path) {
  std::string error;
  auto doc = loadDocumentFile(path, error);
  EXPECT_TRUE(doc) << error;
  return doc;
}

std::string goldenFile(const std::string& name) {
  return readFile(std::string(QUILLON_SOURCE_DIR) + "/tests/docfiles/golden/" + name);
}

::testing::AssertionResult matchesGolden(const std::string& name, const std::string& actual) {
  if (std::getenv("QUILLON_UPDATE_GOLDEN")) {
    std::ofstream(std::string(QUILLON_SOURCE_DIR) + "/tests/docfiles/golden/" + name, std::ios::binary) << actual;
    return ::testing::AssertionSuccess();
  }
  const std::string expected = goldenFile(name);
  if (expected == actual) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << name << " differs:\n  expected: " << expected << "\n  actual:   " << actual;
}

}  // namespace quillon::testing

namespace {
const bool kRegistered = (quillon::registerOfficeDocumentFormats(), true);
}
