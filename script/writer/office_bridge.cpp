#include "script/writer/office_bridge.h"

#include <filesystem>
#include <mutex>

#include <cppuhelper/bootstrap.hxx>
#include <osl/file.hxx>
#include <rtl/bootstrap.hxx>

#include <com/sun/star/bridge/BridgeFactory.hpp>
#include <com/sun/star/bridge/XBridgeFactory2.hpp>
#include <com/sun/star/connection/Connector.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/connection/XConnection.hpp>
#include <com/sun/star/connection/XConnector.hpp>
#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/uno/Exception.hpp>

#include "core/atomic_file.h"
#include "script/document_files.h"

namespace quillon::uno {

namespace {

// This process's UNO runtime, from the office's own type libraries and
// services: started once, kept for the life of the process.
Reference<css::uno::XComponentContext> localContext(std::string& error) {
  static std::once_flag once;
  static Reference<css::uno::XComponentContext> context;
  static std::string failure;
  std::call_once(once, [] {
    try {
      rtl::Bootstrap::set("URE_BOOTSTRAP",
                          ou(std::string("vnd.sun.star.pathname:") + QUILLON_LIBREOFFICE_PROGRAM + "/fundamentalrc"));
      context = cppu::defaultBootstrap_InitialComponentContext();
    } catch (const css::uno::Exception& e) {
      failure = "the UNO runtime of LibreOffice could not be started: " + reason(e);
    }
  });
  if (!context.is()) error = failure;
  return context;
}

std::string normalPath(const std::string& path) {
  std::error_code ec;
  auto p = std::filesystem::weakly_canonical(std::filesystem::absolute(path, ec), ec);
  return ec ? path : p.string();
}

}  // namespace

OUString fileUrl(const std::string& path) {
  OUString url;
  if (osl::FileBase::getFileURLFromSystemPath(ou(normalPath(path)), url) != osl::FileBase::E_None) return {};
  return url;
}

std::string systemPath(const OUString& url) {
  OUString path;
  if (url.isEmpty() || osl::FileBase::getSystemPathFromFileURL(url, path) != osl::FileBase::E_None) return {};
  return utf8(path);
}

OfficeBridge::~OfficeBridge() { drop(); }

// The bridge is made by hand, not through a URL resolver, so that it can be
// disposed: an office calling back into a process on its way out would find
// its UNO runtime gone.
bool OfficeBridge::connect(const std::string& connection, std::string& error) {
  drop();
  Reference<css::uno::XComponentContext> local = localContext(error);
  if (!local.is()) return false;
  try {
    Reference<css::connection::XConnection> link = css::connection::Connector::create(local)->connect(ou(connection));
    bridge_ = css::bridge::BridgeFactory::create(local)->createBridge("", "urp", link, {});
    remote_.set(bridge_->getInstance("StarOffice.ComponentContext"), UNO_QUERY_THROW);
    desktop_ = css::frame::Desktop::create(remote_);
    return true;
  } catch (const css::connection::NoConnectException&) {
    error = "LibreOffice does not answer at " + connection;
  } catch (const css::uno::Exception& e) {
    error = "LibreOffice does not answer at " + connection;
    if (!e.Message.isEmpty()) error += ": " + reason(e);
  }
  drop();
  return false;
}

void OfficeBridge::drop() {
  desktop_.clear();
  remote_.clear();
  if (Reference<css::lang::XComponent> bridge{bridge_, UNO_QUERY}; bridge.is()) {
    try {
      bridge->dispose();
    } catch (const css::uno::Exception&) {
    }
  }
  bridge_.clear();
}

std::vector<Reference<css::text::XTextDocument>> OfficeBridge::textDocuments() {
  std::vector<Reference<css::text::XTextDocument>> out;
  Reference<css::container::XEnumeration> all = desktop_->getComponents()->createEnumeration();
  while (all->hasMoreElements()) {
    Reference<css::text::XTextDocument> doc(all->nextElement(), UNO_QUERY);
    if (doc.is()) out.push_back(doc);
  }
  return out;
}

Reference<css::text::XTextDocument> OfficeBridge::frontDocument() {
  return Reference<css::text::XTextDocument>(desktop_->getCurrentComponent(), UNO_QUERY);
}

Reference<css::text::XTextDocument> OfficeBridge::documentOfFile(const std::string& path) {
  const std::string wanted = normalPath(path);
  for (auto& doc : textDocuments()) {
    Reference<css::frame::XModel> model(doc, UNO_QUERY);
    if (model.is() && normalPath(systemPath(model->getURL())) == wanted) return doc;
  }
  return {};
}

Reference<css::text::XTextDocument> OfficeBridge::load(const std::string& path, bool hidden, std::string& error) {
  std::vector<std::pair<const char*, Any>> props{{"Hidden", Any(hidden)}};
  OUString url("private:factory/swriter");
  if (!path.empty()) {
    std::string bytes;
    if (!readWholeFile(path, bytes, &error)) return {};
    url = fileUrl(path);
    // Plain text is read as the station reads it, without Writer asking.
    if (fileExtension(path) == "txt") {
      props.emplace_back("FilterName", Any(OUString("Text (encoded)")));
      props.emplace_back("FilterOptions", Any(OUString(isValidUtf8(bytes) ? "UTF8,LF" : "ANSI,LF")));
    }
  }
  try {
    Reference<css::lang::XComponent> loaded = desktop_->loadComponentFromURL(url, "_blank", 0, properties(props));
    Reference<css::text::XTextDocument> doc(loaded, UNO_QUERY);
    if (!doc.is()) {
      error = path.empty() ? "LibreOffice could not make a new text document"
                           : "LibreOffice Writer could not open " + path + " as a text document";
      if (loaded.is()) loaded->dispose();
    }
    return doc;
  } catch (const css::uno::Exception& e) {
    error = "LibreOffice Writer could not open " + (path.empty() ? std::string("a new document") : path) + ": " +
            reason(e);
    return {};
  }
}

}  // namespace quillon::uno

namespace quillon {

const char* unoRuntimeLeakSuppressions() {
  return "leak:libuno_cppu.so\n"
         "leak:libuno_cppuhelpergcc3.so\n"
         "leak:libuno_sal.so\n"
         "leak:libuno_salhelpergcc3.so\n"
         "leak:libunoidllo.so\n"
         "leak:libbinaryurplo.so\n"
         "leak:libuuresolverlo.so\n"
         "leak:libgcc3_uno.so\n";
}

}  // namespace quillon
