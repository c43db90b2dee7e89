#include "script/writer/writer_office.h"

#include <chrono>
#include <filesystem>
#include <thread>

#include <com/sun/star/configuration/theDefaultProvider.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>

#include "script/writer/office_process.h"
#include "script/writer/writer_document_service.h"

namespace quillon {

using namespace uno;

const char* writerFilterFor(const std::string& extension) {
  if (extension == "odt") return "writer8";
  if (extension == "docx") return "MS Word 2007 XML";
  if (extension == "doc") return "MS Word 97";
  if (extension == "rtf") return "Rich Text Format";
  if (extension == "txt") return "Text (encoded)";
  return nullptr;
}

namespace {

Reference<css::container::XNameAccess> userData(const Reference<css::uno::XComponentContext>& office) {
  Reference<css::lang::XMultiServiceFactory> config = css::configuration::theDefaultProvider::get(office);
  Any path = Any(css::beans::PropertyValue("nodepath", 0, Any(OUString("/org.openoffice.UserProfile/Data")),
                                           css::beans::PropertyState_DIRECT_VALUE));
  return Reference<css::container::XNameAccess>(
      config->createInstanceWithArguments("com.sun.star.configuration.ConfigurationAccess", Sequence<Any>(&path, 1)),
      UNO_QUERY_THROW);
}

u16 field(const Reference<css::container::XNameAccess>& data, const char* name) {
  OUString value;
  if (data->hasByName(OUString::createFromAscii(name))) data->getByName(OUString::createFromAscii(name)) >>= value;
  return trim(fromOu(value));
}

u16 joined(std::initializer_list<u16> parts, u16v separator) {
  u16 out;
  for (const u16& p : parts) {
    if (p.empty()) continue;
    if (!out.empty()) out += separator;
    out += p;
  }
  return out;
}

}  // namespace

u16 writerUserName(const Reference<css::uno::XComponentContext>& office) {
  auto data = userData(office);
  return joined({field(data, "givenname"), field(data, "sn")}, u" ");
}

u16 writerUserAddress(const Reference<css::uno::XComponentContext>& office) {
  auto data = userData(office);
  const u16 town = joined({field(data, "postalcode"), field(data, "l")}, u" ");
  return joined({field(data, "street"), town, field(data, "st"), field(data, "c")}, u"\r");
}

bool waitForOffice(WriterDocumentService& service, double timeoutSeconds, const std::function<void()>& whileWaiting,
                   std::string& error) {
  using clock = std::chrono::steady_clock;
  const auto until = clock::now() + std::chrono::duration<double>(timeoutSeconds);
  for (;;) {
    if (service.reach(error)) {
      error.clear();
      return true;
    }
    if (clock::now() >= until) {
      error = "LibreOffice did not start listening at " + service.options().connection + " within " +
              std::to_string(static_cast<int>(timeoutSeconds)) + " seconds";
      return false;
    }
    // A quarter of a second between tries, with the window kept alive.
    for (int i = 0; i < 5; ++i) {
      if (whileWaiting) whileWaiting();
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  }
}

bool startHeadlessOffice(OfficeProcess& process, const std::string& connection, const std::string& profileDir,
                         double timeoutSeconds, std::string& error) {
  OfficeLaunch launch;
  launch.connection = connection;
  launch.profileDir = profileDir;
  launch.headless = true;
  launch.restore = false;
  launch.endsWithThisProcess = true;
  // A fresh profile's first start restarts the office, which a listener
  // should not see: the profile is set up alone first.
  if (!std::filesystem::exists(profileDir + "/user")) {
    launch.initialiseOnly = true;
    OfficeProcess init;
    if (!init.start(launch, error)) return false;
    if (!init.waitForEnd(timeoutSeconds)) {
      init.stop(1);
      error = "LibreOffice did not set its profile up within " + std::to_string(static_cast<int>(timeoutSeconds)) +
              " seconds";
      return false;
    }
    launch.initialiseOnly = false;
  }
  WriterOptions o;
  o.connection = connection;
  WriterDocumentService probe(o);
  if (process.start(launch, error) && waitForOffice(probe, timeoutSeconds, {}, error)) return true;
  process.stop(1);
  return false;
}

void stopHeadlessOffice(OfficeProcess& process, const std::string& connection) {
  if (!process.running()) return;
  WriterOptions o;
  o.connection = connection;
  WriterDocumentService(o).terminateOffice();
  process.stop(20);
}

}  // namespace quillon
