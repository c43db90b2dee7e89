#include "support/document_contract.h"

#include "docfiles_support.h"
#include "script/document_files.h"
#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

// The text saved as a new file of the format and opened from that file.
std::unique_ptr<DocumentService> reloaded(const std::u16string& text, const std::string& extension) {
  static int serial = 0;
  std::string path = tempDir("contract-" + std::to_string(++serial)) + "/script." + extension;
  MemoryDocument source;
  source.setText(text);
  std::string error;
  EXPECT_TRUE(saveDocumentFile(source, path, error)) << error;
  auto svc = std::make_unique<MemoryDocumentService>();
  auto doc = loadOrFail(path);
  svc->addDocument(doc ? std::move(doc) : std::make_unique<MemoryDocument>());
  return svc;
}

INSTANTIATE_TEST_SUITE_P(
    OfficeFiles, DocumentContract,
    ::testing::Values(DocumentFactory{"docx", [](const std::u16string& t) { return reloaded(t, "docx"); }},
                      DocumentFactory{"odt", [](const std::u16string& t) { return reloaded(t, "odt"); }}),
    factoryName);

}  // namespace
}  // namespace quillon::testing
