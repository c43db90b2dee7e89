// A headless LibreOffice for the Writer tests: started on first use with a
// profile and a pipe of its own, shared by every test of the program (its
// first start takes seconds), and ended with the program. Tests skip, saying
// so, only where soffice is not installed.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "script/writer/office_process.h"
#include "script/writer/writer_document_service.h"

namespace quillon::testing {

class HeadlessOffice {
 public:
  // The program's shared office.
  static HeadlessOffice& shared();

  HeadlessOffice();  // not started yet
  ~HeadlessOffice();
  // Starts it (once); false with the reason in failure().
  bool start();
  void stop();
  // Its process is gone at once, as in a crash.
  void crash();

  bool installed() const;
  const std::string& failure() const { return failure_; }
  const std::string& connection() const { return connection_; }
  // A service on this office whose documents have no windows.
  std::unique_ptr<WriterDocumentService> service(bool followFront = false);
  // Closes every document open in it.
  void closeAll();

 private:
  std::string connection_, profile_, failure_;
  OfficeProcess process_;
  bool failed_ = false;  // a start that failed is not tried again
};

#define QUILLON_NEED_OFFICE(office)                                              \
  do {                                                                           \
    if (!(office).installed()) GTEST_SKIP() << "soffice is not installed";       \
    ASSERT_TRUE((office).start()) << (office).failure();                         \
  } while (0)

// A document file under the test's temporary folder.
std::string writeFile(const std::string& name, const std::string& bytes);

// The station's offsets of the first `what` in the service's text.
TextRange rangeOf(DocumentService& d, std::u16string_view what);

}  // namespace quillon::testing
