// The bridge to one running office: this process's own UNO runtime (started
// once), the connection to the office's component context, its desktop, and
// the text documents open in it.
#pragma once

#include <com/sun/star/bridge/XBridge.hpp>
#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

#include "script/writer/uno_support.h"

namespace quillon::uno {

class OfficeBridge {
 public:
  OfficeBridge() = default;
  ~OfficeBridge();
  OfficeBridge(const OfficeBridge&) = delete;
  OfficeBridge& operator=(const OfficeBridge&) = delete;

  // False with a reason; any earlier connection is dropped first.
  bool connect(const std::string& connection, std::string& error);
  bool connected() const { return desktop_.is(); }
  // Forgets the office and closes the bridge to it.
  void drop();

  const Reference<css::frame::XDesktop2>& desktop() const { return desktop_; }
  const Reference<css::uno::XComponentContext>& context() const { return remote_; }

  // The Writer documents open in the office, in the desktop's order.
  std::vector<Reference<css::text::XTextDocument>> textDocuments();
  // The document in front, when it is a Writer document.
  Reference<css::text::XTextDocument> frontDocument();
  // The open document whose file is `path`.
  Reference<css::text::XTextDocument> documentOfFile(const std::string& path);
  // Opens a file, or a new document for an empty path.
  Reference<css::text::XTextDocument> load(const std::string& path, bool hidden, std::string& error);

 private:
  Reference<css::bridge::XBridge> bridge_;
  Reference<css::uno::XComponentContext> remote_;
  Reference<css::frame::XDesktop2> desktop_;
};

}  // namespace quillon::uno
