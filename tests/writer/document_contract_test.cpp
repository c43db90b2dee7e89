#include "support/document_contract.h"

#include "script/memory_document.h"
#include "writer_fixture.h"

namespace quillon::testing {
namespace {

void skipWithoutOffice() { GTEST_SKIP() << "soffice is not installed"; }

// A new document in the headless Writer holding the text, the cursor at its
// start. Where there is no office the test is marked skipped and runs on a
// memory document instead, which changes nothing of its result.
std::unique_ptr<DocumentService> inWriter(const std::u16string& text) {
  HeadlessOffice& office = HeadlessOffice::shared();
  auto standIn = [&] {
    auto memory = std::make_unique<MemoryDocumentService>();
    memory->documentsAdd();
    memory->active()->setText(text);
    return memory;
  };
  if (!office.installed()) {
    skipWithoutOffice();
    return standIn();
  }
  if (!office.start()) {
    ADD_FAILURE() << office.failure();
    return standIn();
  }
  office.closeAll();
  auto s = office.service();
  s->documentsAdd();
  std::u16string body = text;
  if (!body.empty() && body.back() == CR) body.pop_back();
  s->insertText(0, body, false, false);
  s->select({0, 0});
  EXPECT_EQ(s->pendingError(), 0) << s->lastError();
  return s;
}

INSTANTIATE_TEST_SUITE_P(LibreOffice, DocumentContract, ::testing::Values(DocumentFactory{"writer", inWriter}),
                         factoryName);

}  // namespace
}  // namespace quillon::testing
