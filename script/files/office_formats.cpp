#include "script/files/office_formats.h"

#include "core/atomic_file.h"
#include "script/document_files.h"
#include "script/files/xml_part.h"

namespace quillon {

namespace docfiles {

namespace {

// Files larger than this are not script documents.
constexpr size_t kMaxFileBytes = 256u << 20;

bool isOdt(const std::string& path) { return fileExtension(path) == "odt"; }

}  // namespace

std::unique_ptr<MemoryDocument> loadOfficeFile(const std::string& path, std::string& error) {
  std::string bytes;
  if (!readWholeFile(path, bytes, &error, kMaxFileBytes)) return nullptr;
  std::string problem;
  std::unique_ptr<MemoryDocument> doc = isOdt(path) ? loadOdt(bytes, problem) : loadDocx(bytes, problem);
  if (!doc) error = "cannot read " + path + ": " + problem;
  return doc;
}

bool saveOfficeFile(const MemoryDocument& doc, const std::string& path, std::string& error) {
  bool odt = isOdt(path);
  std::string bytes, problem;
  std::vector<ParagraphText> written;
  if (!(odt ? buildOdt(doc, bytes, problem, &written) : buildDocx(doc, bytes, problem, &written))) {
    error = "cannot write " + path + ": " + problem;
    return false;
  }
  // Nothing replaces the file unless it reads back as what was meant.
  auto back = odt ? loadOdt(bytes, problem) : loadDocx(bytes, problem);
  if (!back) {
    error = "cannot write " + path + ": the file built could not be read back (" + problem + ")";
    return false;
  }
  bool same = documentParagraphs(*back) == written;
  std::vector<std::pair<u16, u16>> expected;
  for (const auto& [k, v] : doc.customProperties)
    if (!(odt && k == u"Company")) expected.emplace_back(fromUtf8(xmlText(k)), fromUtf8(xmlText(v)));
  same = same && back->customProperties == expected;
  if (!same) {
    error = "cannot write " + path + ": the file built did not read back the same";
    return false;
  }
  return writeFile(path, bytes).asFlag(&error);
}

}  // namespace docfiles

void registerOfficeDocumentFormats() {
  for (const char* ext : {"docx", "odt"}) registerDocumentFormat(ext, docfiles::loadOfficeFile, docfiles::saveOfficeFile);
}

}  // namespace quillon
