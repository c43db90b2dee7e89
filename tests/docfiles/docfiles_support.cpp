#include "docfiles_support.h"

#include <gtest/gtest.h>

#include "script/document_files.h"

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

std::string docxPackage(const std::string& body, const std::string& styles, std::map<std::string, std::string> extra) {
  std::map<std::string, std::string> parts = {
      {"[Content_Types].xml",
       "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Types "
       "xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default Extension=\"rels\" "
       "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/><Default Extension=\"xml\" "
       "ContentType=\"application/xml\"/><Override PartName=\"/word/document.xml\" "
       "ContentType=\"application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml\"/></Types>"},
      {"_rels/.rels",
       "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Relationships "
       "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship Id=\"rId1\" "
       "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
       "Target=\"word/document.xml\"/></Relationships>"},
      {"word/document.xml",
       std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?><w:document ") + kW + "><w:body>" + body +
           "<w:sectPr/></w:body></w:document>"}};
  if (!styles.empty()) {
    parts["word/_rels/document.xml.rels"] =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Relationships "
        "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship Id=\"rId1\" "
        "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles\" "
        "Target=\"styles.xml\"/></Relationships>";
    parts["word/styles.xml"] =
        std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?><w:styles ") + kW + ">" + styles + "</w:styles>";
  }
  for (auto& [k, v] : extra) parts[k] = v;
  return zipOf(parts);
}

std::string odtPackage(const std::string& text, const std::string& automaticStyles, const std::string& commonStyles,
                       const std::string& meta) {
  const std::string ns =
      "xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
      "xmlns:style=\"urn:oasis:names:tc:opendocument:xmlns:style:1.0\" "
      "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" "
      "xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\" "
      "xmlns:meta=\"urn:oasis:names:tc:opendocument:xmlns:meta:1.0\" "
      "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
      "xmlns:fo=\"urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0\" office:version=\"1.2\"";
  std::map<std::string, std::string> parts = {
      {"mimetype", "application/vnd.oasis.opendocument.text"},
      {"content.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document-content " + ns +
                          "><office:automatic-styles>" + automaticStyles +
                          "</office:automatic-styles><office:body><office:text>" + text +
                          "</office:text></office:body></office:document-content>"},
      {"styles.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document-styles " + ns + "><office:styles>" +
                         commonStyles + "</office:styles></office:document-styles>"}};
  if (!meta.empty())
    parts["meta.xml"] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document-meta " + ns + "><office:meta>" +
                        meta + "</office:meta></office:document-meta>";
  return zipOf(parts);
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
    char16_t c = text[i];
    bool it = c != CR && flags[i];
    if (it != in) out += it ? u"<i>" : u"</i>";
    in = it;
    out += c == CR ? u'\n' : c;
  }
  if (in) out += u"</i>";
  return out;
}

std::unique_ptr<MemoryDocument> loadOrFail(const std::string& path) {
  std::string error;
  auto doc = loadDocumentFile(path, error);
  EXPECT_TRUE(doc) << error;
  return doc;
}

}  // namespace quillon::testing

namespace {
const bool kRegistered = (quillon::registerOfficeDocumentFormats(), true);
}
