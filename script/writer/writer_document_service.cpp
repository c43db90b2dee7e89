#include "script/writer/writer_document_service.h"

#include <chrono>
#include <thread>

#include <com/sun/star/beans/PropertyAttribute.hpp>
#include <com/sun/star/beans/XPropertyContainer.hpp>
#include <com/sun/star/document/XDocumentProperties.hpp>
#include <com/sun/star/document/XDocumentPropertiesSupplier.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/frame/XTitle.hpp>
#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/util/DateTime.hpp>
#include <com/sun/star/util/XCloseable.hpp>

#include "script/document_files.h"
#include "script/user_identity.h"
#include "script/writer/office_bridge.h"
#include "script/writer/writer_document.h"
#include "script/writer/writer_office.h"

namespace quillon {

using namespace uno;

struct WriterDocumentService::Impl {
  OfficeBridge bridge;
  std::unique_ptr<WriterDocument> doc;
  int count = 0;        // Writer documents open, as last seen
  bool pinned = false;  // chosen by its file: stays active while open
};

namespace {

css::util::DateTime dateTimeOf(const u16& text) {
  css::util::DateTime d;
  int y = 0, mo = 0, da = 0, h = 0, mi = 0, s = 0;
  if (std::sscanf(toUtf8(text).c_str(), "%d-%d-%d %d:%d:%d", &y, &mo, &da, &h, &mi, &s) >= 3) {
    d.Year = static_cast<sal_Int16>(y);
    d.Month = static_cast<sal_uInt16>(mo);
    d.Day = static_cast<sal_uInt16>(da);
    d.Hours = static_cast<sal_uInt16>(h);
    d.Minutes = static_cast<sal_uInt16>(mi);
    d.Seconds = static_cast<sal_uInt16>(s);
  }
  return d;
}

std::optional<u16> textOfDateTime(const css::util::DateTime& d) {
  if (d.Year == 0) return std::nullopt;
  char buf[40];
  std::snprintf(buf, sizeof buf, "%04d-%02u-%02u %02u:%02u:%02u", d.Year, d.Month, d.Day, d.Hours, d.Minutes,
                d.Seconds);
  return fromLatin1(buf);
}

std::optional<u16> nonEmpty(const OUString& s) {
  if (s.isEmpty()) return std::nullopt;
  return fromOu(s);
}

Reference<css::document::XDocumentProperties> propertiesOf(WriterDocument& d) {
  return Reference<css::document::XDocumentPropertiesSupplier>(d.model(), UNO_QUERY_THROW)->getDocumentProperties();
}

Reference<css::beans::XPropertySet> userDefinedOf(WriterDocument& d) {
  return Reference<css::beans::XPropertySet>(propertiesOf(d)->getUserDefinedProperties(), UNO_QUERY_THROW);
}

std::optional<u16> userDefined(WriterDocument& d, const OUString& name) {
  Reference<css::beans::XPropertySet> set = userDefinedOf(d);
  if (!set->getPropertySetInfo()->hasPropertyByName(name)) return std::nullopt;
  OUString value;
  Any v = set->getPropertyValue(name);
  if (v >>= value) return fromOu(value);
  return u16();
}

void setUserDefined(WriterDocument& d, const OUString& name, const u16& value) {
  Reference<css::beans::XPropertySet> set = userDefinedOf(d);
  if (set->getPropertySetInfo()->hasPropertyByName(name)) {
    set->setPropertyValue(name, Any(ou(value)));
  } else {
    Reference<css::beans::XPropertyContainer>(set, UNO_QUERY_THROW)
        ->addProperty(name, css::beans::PropertyAttribute::REMOVABLE, Any(ou(value)));
  }
}

Reference<css::awt::XWindow> windowOf(WriterDocument& d) {
  Reference<css::frame::XController> c = d.model()->getCurrentController();
  if (!c.is() || !c->getFrame().is()) return {};
  return c->getFrame()->getContainerWindow();
}

}  // namespace

WriterDocumentService::WriterDocumentService(WriterOptions options)
    : options_(std::move(options)), impl_(std::make_unique<Impl>()) {}

WriterDocumentService::~WriterDocumentService() {
  try {
    impl_->doc.reset();
  } catch (...) {
  }
}

// Runs `f` on the active document. A document that has closed, or an
// office that has gone, reads as no document: the pending error, and the
// next attach looks again.
template <class R, class F>
R withDocument(WriterDocumentService& s, WriterDocumentService::Impl& impl, R fallback, F&& f) {
  if (impl.doc && !impl.doc->open()) {
    impl.doc.reset();
    impl.count = 0;
  }
  if (!impl.doc) {
    s.raiseError(kErrNoDocument);
    return fallback;
  }
  try {
    return f(*impl.doc);
  } catch (const InsideTable&) {
    // Tags are not written inside tables: the body text's cursor cannot go there.
    s.raiseError(kErrBadIndex);
    return fallback;
  } catch (const css::uno::RuntimeException&) {
    // Closed under the call, or the bridge broke: which one is told by
    // whether the office still answers.
    impl.doc.reset();
    impl.count = 0;
    try {
      if (impl.bridge.connected()) impl.bridge.desktop()->getCurrentComponent();
    } catch (const css::uno::Exception&) {
      impl.bridge.drop();
    }
  } catch (const css::uno::Exception&) {
  }
  s.raiseError(kErrNoDocument);
  return fallback;
}

#define QUILLON_ON_DOCUMENT(fallback, ...) \
  withDocument(*this, *impl_, fallback, [&](WriterDocument & d) __VA_ARGS__)

bool WriterDocumentService::reach(std::string& error) {
  if (impl_->bridge.connected()) {
    try {
      impl_->bridge.desktop()->getCurrentComponent();
      return true;
    } catch (const css::uno::Exception&) {
      impl_->doc.reset();
      impl_->bridge.drop();
    }
  }
  return impl_->bridge.connect(options_.connection, error);
}

bool WriterDocumentService::connect() {
  lastError_.clear();
  std::string error;
  bool reached = reach(error);
  if (!reached && options_.startOffice) {
    if (!options_.startOffice(error)) {
      lastError_ = error;
      return false;
    }
    reached = waitForOffice(*this, options_.startTimeoutSeconds, options_.whileWaiting, error);
  }
  if (!reached) {
    lastError_ = error;
    return false;
  }
  try {
    std::vector<Reference<css::text::XTextDocument>> docs = impl_->bridge.textDocuments();
    impl_->count = static_cast<int>(docs.size());
    if (impl_->doc && !impl_->doc->open()) impl_->doc.reset();
    if (impl_->doc && impl_->pinned) return true;
    Reference<css::text::XTextDocument> chosen;
    if (options_.followFrontDocument || !impl_->doc) chosen = impl_->bridge.frontDocument();
    if (!chosen.is() && impl_->doc) return true;
    if (!chosen.is() && !docs.empty()) chosen = docs.front();
    impl_->pinned = false;
    if (!chosen.is()) {
      impl_->doc.reset();
    } else if (!impl_->doc || impl_->doc->document() != chosen) {
      impl_->doc = std::make_unique<WriterDocument>(chosen);
    }
    return true;
  } catch (const css::uno::Exception& e) {
    impl_->doc.reset();
    impl_->bridge.drop();
    lastError_ = "LibreOffice stopped answering: " + reason(e);
    return false;
  }
}

int WriterDocumentService::documentsCount() {
  if (impl_->doc && !impl_->doc->open()) {
    impl_->doc.reset();
    impl_->count = 0;
  }
  return impl_->doc ? std::max(impl_->count, 1) : 0;
}

void WriterDocumentService::documentsAdd() {
  if (!impl_->bridge.connected() && !connect()) {
    raiseError(kErrNoDocument);
    return;
  }
  std::string error;
  Reference<css::text::XTextDocument> doc = impl_->bridge.load("", options_.hiddenDocuments, error);
  if (!doc.is()) {
    lastError_ = error;
    raiseError(kErrNoDocument);
    return;
  }
  impl_->doc = std::make_unique<WriterDocument>(doc);
  impl_->pinned = !options_.followFrontDocument;
  impl_->count += 1;
}

bool WriterDocumentService::openFile(const std::string& path, std::string& error) {
  if (!bindFile(path, true, !options_.followFrontDocument, error)) return false;
  activateWindow();
  return true;
}

bool WriterDocumentService::useOpenFile(const std::string& path, std::string& error) {
  return bindFile(path, false, true, error);
}

bool WriterDocumentService::bindFile(const std::string& path, bool load, bool pin, std::string& error) {
  if (!impl_->bridge.connected() && !connect()) {
    error = lastError_;
    return false;
  }
  try {
    Reference<css::text::XTextDocument> doc = impl_->bridge.documentOfFile(path);
    if (!doc.is() && load) doc = impl_->bridge.load(path, options_.hiddenDocuments, error);
    if (!doc.is()) {
      if (!load) error = path + " is not open in LibreOffice Writer at " + options_.connection;
      return false;
    }
    if (!impl_->doc || impl_->doc->document() != doc) impl_->doc = std::make_unique<WriterDocument>(doc);
    impl_->pinned = pin;
    impl_->count = static_cast<int>(impl_->bridge.textDocuments().size());
    return true;
  } catch (const css::uno::Exception& e) {
    error = "LibreOffice Writer could not open " + path + ": " + reason(e);
    return false;
  }
}

bool WriterDocumentService::save(std::string& error) {
  return QUILLON_ON_DOCUMENT(false, {
    Reference<css::frame::XStorable> storable(d.model(), UNO_QUERY_THROW);
    if (!storable->hasLocation()) {
      error = "the document has no file yet";
      return false;
    }
    storable->store();
    return true;
  });
}

bool WriterDocumentService::storeCopy(const std::string& path, std::string& error) {
  const char* filter = writerFilterFor(fileExtension(path));
  if (!filter) {
    error = "LibreOffice Writer cannot store ." + fileExtension(path) + " files (odt, docx, doc, rtf, txt)";
    return false;
  }
  bool stored = QUILLON_ON_DOCUMENT(false, {
    std::vector<std::pair<const char*, Any>> props{{"FilterName", Any(OUString::createFromAscii(filter))},
                                                   {"Overwrite", Any(true)}};
    if (fileExtension(path) == "txt") props.emplace_back("FilterOptions", Any(OUString("UTF8,LF")));
    Reference<css::frame::XStorable>(d.model(), UNO_QUERY_THROW)->storeToURL(fileUrl(path), properties(props));
    return true;
  });
  if (!stored && error.empty()) error = "LibreOffice Writer could not store " + path;
  if (stored) clearError();
  return stored;
}

void WriterDocumentService::showSelection() {
  QUILLON_ON_DOCUMENT(0, {
    d.showSelection();
    return 0;
  });
}

void WriterDocumentService::closeActive() {
  QUILLON_ON_DOCUMENT(0, {
    Reference<css::util::XCloseable> closeable(d.model(), UNO_QUERY_THROW);
    impl_->doc.reset();
    closeable->close(true);
    impl_->count = std::max(0, impl_->count - 1);
    return 0;
  });
}

void WriterDocumentService::terminateOffice() {
  impl_->doc.reset();
  std::string error;
  try {
    if (reach(error)) impl_->bridge.desktop()->terminate();
  } catch (const css::uno::Exception&) {
    // The bridge goes down with the office.
  }
  impl_->bridge.drop();
  impl_->count = 0;
}

void WriterDocumentService::setVisible(bool on) {
  QUILLON_ON_DOCUMENT(0, {
    if (Reference<css::awt::XWindow> w = windowOf(d); w.is() && !options_.hiddenDocuments) w->setVisible(on);
    return 0;
  });
}

void WriterDocumentService::activateWindow() {
  QUILLON_ON_DOCUMENT(0, {
    if (options_.hiddenDocuments) return 0;
    if (Reference<css::awt::XTopWindow> w(windowOf(d), UNO_QUERY); w.is()) w->toFront();
    return 0;
  });
}

u16 WriterDocumentService::userName() {
  // Writer's own user data, where the operator has filled it in.
  try {
    if (impl_->bridge.connected()) {
      u16 name = writerUserName(impl_->bridge.context());
      if (!name.empty()) return name;
    }
  } catch (const css::uno::Exception&) {
  }
  return accountUserName();
}

u16 WriterDocumentService::userAddress() {
  try {
    if (impl_->bridge.connected()) return writerUserAddress(impl_->bridge.context());
  } catch (const css::uno::Exception&) {
  }
  return {};
}

// Every command names the script first (the attach); the document in
// front in Writer is then the script, as the operator last chose it there.
void WriterDocumentService::followFront() {
  if (!options_.followFrontDocument || impl_->pinned || !impl_->bridge.connected()) return;
  try {
    Reference<css::text::XTextDocument> front = impl_->bridge.frontDocument();
    if (!front.is() || (impl_->doc && impl_->doc->open() && impl_->doc->document() == front)) return;
    impl_->doc = std::make_unique<WriterDocument>(front);
    impl_->count = static_cast<int>(impl_->bridge.textDocuments().size());
  } catch (const css::uno::Exception&) {
    // The next call on the document tells what became of the office.
  }
}

u16 WriterDocumentService::name() {
  followFront();
  return QUILLON_ON_DOCUMENT(u16{}, {
    const OUString url = d.model()->getURL();
    if (!url.isEmpty()) return fromUtf8(fileName(systemPath(url)));
    Reference<css::frame::XTitle> title(d.model(), UNO_QUERY);
    return title.is() ? fromOu(title->getTitle()) : u16();
  });
}

u16 WriterDocumentService::fullName() {
  return QUILLON_ON_DOCUMENT(u16{}, {
    const OUString url = d.model()->getURL();
    if (!url.isEmpty()) return fromUtf8(systemPath(url));
    Reference<css::frame::XTitle> title(d.model(), UNO_QUERY);
    return title.is() ? fromOu(title->getTitle()) : u16();
  });
}

long WriterDocumentService::length() {
  return QUILLON_ON_DOCUMENT(0L, { return d.text().length(); });
}

u16 WriterDocumentService::text(TextRange r) {
  return QUILLON_ON_DOCUMENT(u16{}, { return d.text().text(r); });
}

void WriterDocumentService::insertText(long pos, u16v t, bool stickLeft, bool italic) {
  if (t.empty()) return;
  QUILLON_ON_DOCUMENT(0, {
    d.replace({pos, pos}, t, stickLeft, italic);
    return 0;
  });
}

void WriterDocumentService::eraseText(TextRange r) {
  QUILLON_ON_DOCUMENT(0, {
    d.replace(r, u16v(), false, false);
    return 0;
  });
}

void WriterDocumentService::replaceText(TextRange r, u16v t, bool italic) {
  QUILLON_ON_DOCUMENT(0, {
    d.replace(r, t, false, italic);
    return 0;
  });
}

bool WriterDocumentService::italicAt(TextRange r) {
  return QUILLON_ON_DOCUMENT(false, { return d.italic(r); });
}

void WriterDocumentService::setItalic(TextRange r, bool on) {
  QUILLON_ON_DOCUMENT(0, {
    d.setItalic(r, on);
    return 0;
  });
}

u16 WriterDocumentService::fontName() {
  return QUILLON_ON_DOCUMENT(u16{}, {
    OUString font;
    d.wholeTextProperty("CharFontName") >>= font;
    return fromOu(font);
  });
}

void WriterDocumentService::setFontName(const u16& font) {
  QUILLON_ON_DOCUMENT(0, {
    d.setWholeTextProperty("CharFontName", Any(ou(font)));
    return 0;
  });
}

TextRange WriterDocumentService::selectionRange() {
  return QUILLON_ON_DOCUMENT(TextRange{}, { return d.selection(); });
}

void WriterDocumentService::setSelectionRange(TextRange r) {
  QUILLON_ON_DOCUMENT(0, {
    d.select(r);
    return 0;
  });
}

long WriterDocumentService::paragraphsCount() {
  return QUILLON_ON_DOCUMENT(0L, { return d.text().paragraphsCount(); });
}

TextRange WriterDocumentService::paragraphRange(long n) {
  return QUILLON_ON_DOCUMENT(TextRange{}, { return d.text().paragraph(n); });
}

long WriterDocumentService::paragraphIndexAt(long pos) {
  return QUILLON_ON_DOCUMENT(0L, { return d.text().paragraphIndexAt(pos); });
}

void WriterDocumentService::undoClear() {
  QUILLON_ON_DOCUMENT(0, {
    Reference<css::document::XUndoManagerSupplier> undo(d.model(), UNO_QUERY_THROW);
    try {
      undo->getUndoManager()->clear();
    } catch (const css::uno::Exception&) {
      // The operator is in the middle of an undo context: the list stays.
    }
    return 0;
  });
}

std::optional<u16> WriterDocumentService::customProperty(const u16& key) {
  return QUILLON_ON_DOCUMENT(std::optional<u16>{}, { return userDefined(d, ou(key)); });
}

void WriterDocumentService::setCustomProperty(const u16& key, const u16& value) {
  QUILLON_ON_DOCUMENT(0, {
    setUserDefined(d, ou(key), value);
    return 0;
  });
}

std::optional<u16> WriterDocumentService::builtinProperty(int index) {
  return QUILLON_ON_DOCUMENT(std::optional<u16>{}, {
    Reference<css::document::XDocumentProperties> p = propertiesOf(d);
    switch (index) {
      case wdPropertyTitle: return nonEmpty(p->getTitle());
      case wdPropertyAuthor: return nonEmpty(p->getAuthor());
      case wdPropertyComments: return nonEmpty(p->getDescription());
      case wdPropertyRevision: return std::optional<u16>(numberText(p->getEditingCycles()));
      case wdPropertyTimeCreated: return textOfDateTime(p->getCreationDate());
      case wdPropertyTimeLastSaved: return textOfDateTime(p->getModificationDate());
      case wdPropertyCompany: return userDefined(d, "Company");
      default: return std::optional<u16>{};
    }
  });
}

void WriterDocumentService::setBuiltinProperty(int index, const u16& value) {
  QUILLON_ON_DOCUMENT(0, {
    Reference<css::document::XDocumentProperties> p = propertiesOf(d);
    switch (index) {
      case wdPropertyTitle: p->setTitle(ou(value)); break;
      case wdPropertyAuthor: p->setAuthor(ou(value)); break;
      case wdPropertyComments: p->setDescription(ou(value)); break;
      case wdPropertyRevision: p->setEditingCycles(static_cast<sal_Int16>(leadingNumber(value))); break;
      case wdPropertyTimeCreated: p->setCreationDate(dateTimeOf(value)); break;
      case wdPropertyTimeLastSaved: p->setModificationDate(dateTimeOf(value)); break;
      case wdPropertyCompany: setUserDefined(d, "Company", value); break;
      default: break;
    }
    return 0;
  });
}

#undef QUILLON_ON_DOCUMENT

}  // namespace quillon
