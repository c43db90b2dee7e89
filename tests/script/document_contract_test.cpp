#include "support/document_contract.h"

#include "script/document_files.h"
#include "script/memory_document.h"

namespace quillon::testing {
namespace {

std::unique_ptr<DocumentService> memoryDocument(const std::u16string& text) {
  auto svc = std::make_unique<MemoryDocumentService>();
  auto d = std::make_unique<MemoryDocument>();
  d->setText(text);
  svc->addDocument(std::move(d));
  return svc;
}

// The same text after a trip through a plain-text file.
std::unique_ptr<DocumentService> reloadedPlainText(const std::u16string& text) {
  MemoryDocument source;
  source.setText(text);
  auto svc = std::make_unique<MemoryDocumentService>();
  svc->addDocument(plainTextDocument(plainTextBytes(source)));
  return svc;
}

INSTANTIATE_TEST_SUITE_P(Embedded, DocumentContract,
                         ::testing::Values(DocumentFactory{"memory", memoryDocument},
                                           DocumentFactory{"plaintext", reloadedPlainText}),
                         factoryName);

}  // namespace
}  // namespace quillon::testing
