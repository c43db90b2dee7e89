#include "writer_fixture.h"

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>

#include "support/station_fixture.h"

namespace quillon::testing {

namespace {

// Ends the shared office after the last test, before static destruction.
class OfficeEnvironment : public ::testing::Environment {
 public:
  void TearDown() override { HeadlessOffice::shared().stop(); }
};
const auto* const registered = ::testing::AddGlobalTestEnvironment(new OfficeEnvironment);

}  // namespace

HeadlessOffice& HeadlessOffice::shared() {
  static HeadlessOffice office;
  return office;
}

HeadlessOffice::HeadlessOffice() {
  static std::atomic<int> serial{0};
  const std::string name = "quillon-test-" + std::to_string(getpid()) + "-" + std::to_string(++serial);
  connection_ = "pipe,name=" + name;
  profile_ = tempDir(name + "-profile");
}

HeadlessOffice::~HeadlessOffice() {
  stop();
  std::error_code ec;
  std::filesystem::remove_all(profile_, ec);
}

bool HeadlessOffice::installed() const { return !findProgram("soffice").empty(); }

bool HeadlessOffice::start() {
  if (process_.running()) return true;
  if (failed_) return false;
  failure_.clear();
  // A first start is slow, the more so on a loaded machine.
  failed_ = !startHeadlessOffice(process_, connection_, profile_, 300, failure_);
  return !failed_;
}

void HeadlessOffice::stop() { stopHeadlessOffice(process_, connection_); }

void HeadlessOffice::crash() { process_.stop(0); }

std::unique_ptr<WriterDocumentService> HeadlessOffice::service(bool followFront) {
  WriterOptions o;
  o.connection = connection_;
  o.hiddenDocuments = true;
  o.followFrontDocument = followFront;
  return std::make_unique<WriterDocumentService>(o);
}

void HeadlessOffice::closeAll() {
  auto s = service();
  for (int guard = 0; guard < 100 && s->connect() && s->documentsCount() > 0; ++guard) s->closeActive();
}

std::string writeFile(const std::string& name, const std::string& bytes) {
  static std::atomic<int> serial{0};
  const std::string path = tempDir("writer-" + std::to_string(++serial)) + "/" + name;
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

TextRange rangeOf(DocumentService& d, std::u16string_view what) {
  const long at = static_cast<long>(d.content().find(what));
  return {at, at + static_cast<long>(what.size())};
}

}  // namespace quillon::testing
