// .odt files: the package, its metadata, loading and building.
#include <ctime>

#include "script/files/odt_internal.h"
#include "script/files/office_body.h"
#include "script/files/office_formats.h"
#include "script/files/office_source.h"

namespace quillon::docfiles {

namespace {

constexpr const char* kTextMime = "application/vnd.oasis.opendocument.text";
constexpr const char* kTemplateMime = "application/vnd.oasis.opendocument.text-template";
constexpr const char* kManifestNs = "urn:oasis:names:tc:opendocument:xmlns:manifest:1.0";
// LibreOffice keeps a .docx company as this user-defined entry.
const u16 kCompany = u"Company";

// Control characters an .odt carries: breaks other than the line break
// become one.
char16_t odtControl(char16_t c) {
  switch (c) {
    case u'\f':
    case u'\x0E':
      return u'\v';
    case u'\n':
    case u'\r':
      return u' ';
    case u'\t':
    case u'\v':
      return c;
    default:
      return 0;
  }
}

struct Parts {
  pugi::xml_document content;
  odt::Styles styles;
};

bool openParts(const ZipPackage& pkg, Parts& parts, std::string& problem) {
  if (const ZipEntry* m = pkg.find("mimetype")) {
    std::string mime = m->data;
    while (!mime.empty() && (mime.back() == '\n' || mime.back() == '\r' || mime.back() == ' ')) mime.pop_back();
    if (mime != kTextMime && mime != kTemplateMime) {
      problem = "not an OpenDocument text (its type is " + (mime.size() > 80 ? mime.substr(0, 80) : mime) + ")";
      return false;
    }
  }
  if (const ZipEntry* m = pkg.find("META-INF/manifest.xml"))
    if (m->data.find("encryption-data") != std::string::npos) {
      problem = "the document is password-protected";
      return false;
    }
  const ZipEntry* c = pkg.find("content.xml");
  if (!c) {
    problem = "the part content.xml is missing";
    return false;
  }
  if (!parsePart("content.xml", c->data, parts.content, problem)) return false;
  odt::OdfNames n(parts.content.document_element());
  if (!parts.content.document_element().child(n.body.c_str()).child(n.officeText.c_str())) {
    problem = "content.xml holds no text document";
    return false;
  }
  if (const ZipEntry* s = pkg.find("styles.xml")) {
    pugi::xml_document styles;
    if (!parsePart("styles.xml", s->data, styles, problem)) return false;
    parts.styles.loadCommon(styles);
  }
  parts.styles.loadAutomatic(parts.content);
  return true;
}

bool readMeta(const ZipPackage& pkg, MemoryDocument& doc, std::string& problem) {
  const ZipEntry* e = pkg.find("meta.xml");
  if (!e) return true;
  pugi::xml_document meta;
  if (!parsePart("meta.xml", e->data, meta, problem)) return false;
  pugi::xml_node root = meta.document_element();
  Names office(prefixFor(root, odt::kOfficeNs, "office")), m(prefixFor(root, odt::kMetaNs, "meta")),
      dc(prefixFor(root, odt::kDcNs, "dc"));
  pugi::xml_node info = root.child(office("meta").c_str());
  auto text = [&](const std::string& name) -> std::optional<u16> {
    pugi::xml_node n = info.child(name.c_str());
    if (!n) return std::nullopt;
    return nodeText(n);
  };
  if (auto v = text(dc("title"))) setBuiltin(doc, wdPropertyTitle, *v);
  if (auto v = text(m("initial-creator")))
    setBuiltin(doc, wdPropertyAuthor, *v);
  else if (auto c = text(dc("creator")))
    setBuiltin(doc, wdPropertyAuthor, *c);
  if (auto v = text(dc("description"))) setBuiltin(doc, wdPropertyComments, *v);
  if (auto v = text(m("editing-cycles"))) setBuiltin(doc, wdPropertyRevision, *v);
  if (auto v = text(m("creation-date"))) setBuiltin(doc, wdPropertyTimeCreated, stationTimeFromFile(toUtf8(*v)));
  if (auto v = text(dc("date"))) setBuiltin(doc, wdPropertyTimeLastSaved, stationTimeFromFile(toUtf8(*v)));
  std::string userDefined = m("user-defined"), nameAttr = m("name");
  for (pugi::xml_node u : info.children(userDefined.c_str())) {
    u16 name = fromUtf8(u.attribute(nameAttr.c_str()).value());
    if (name == kCompany)
      setBuiltin(doc, wdPropertyCompany, nodeText(u));
    else
      doc.customProperties.emplace_back(name, nodeText(u));
  }
  return true;
}

bool writeMeta(const MemoryDocument& doc, ZipPackage& pkg, std::string& problem) {
  pugi::xml_document meta;
  const ZipEntry* e = pkg.find("meta.xml");
  if (e) {
    if (!parsePart("meta.xml", e->data, meta, problem)) return false;
  } else {
    pugi::xml_node root = meta.append_child("office:document-meta");
    root.append_attribute("xmlns:office") = odt::kOfficeNs;
    root.append_attribute("xmlns:meta") = odt::kMetaNs;
    root.append_attribute("xmlns:dc") = odt::kDcNs;
    root.append_attribute("office:version") = "1.2";
  }
  pugi::xml_node root = meta.document_element();
  auto declare = [&](const char* uri, const char* fallback) {
    std::string p = prefixFor(root, uri, "\x01");
    if (p != "\x01") return p;
    root.append_attribute((std::string("xmlns:") + fallback).c_str()) = uri;
    return std::string(fallback);
  };
  Names office(declare(odt::kOfficeNs, "office")), m(declare(odt::kMetaNs, "meta")), dc(declare(odt::kDcNs, "dc"));
  pugi::xml_node info = root.child(office("meta").c_str());
  if (!info) info = root.append_child(office("meta").c_str());
  auto setText = [&](const std::string& name, const std::string& value) {
    pugi::xml_node n = info.child(name.c_str());
    if (!n) n = info.append_child(name.c_str());
    n.text().set(value.c_str());
  };
  if (auto v = builtinOf(doc, wdPropertyTitle)) setText(dc("title"), xmlText(*v));
  if (auto v = builtinOf(doc, wdPropertyAuthor)) setText(m("initial-creator"), xmlText(*v));
  if (auto v = builtinOf(doc, wdPropertyComments)) setText(dc("description"), xmlText(*v));
  if (auto v = builtinOf(doc, wdPropertyRevision)) setText(m("editing-cycles"), xmlText(*v));
  if (auto v = builtinOf(doc, wdPropertyTimeCreated))
    if (auto t = parseStationTime(*v)) setText(m("creation-date"), localFileTime(*t));
  setText(dc("date"), localFileTime(time(nullptr)));

  // User-defined entries in order; one unchanged keeps its value type.
  std::string userDefined = m("user-defined"), nameAttr = m("name");
  pugi::xml_document old;
  for (pugi::xml_node u = info.child(userDefined.c_str()); u;) {
    pugi::xml_node next = u.next_sibling(userDefined.c_str());
    old.append_copy(u);
    info.remove_child(u);
    u = next;
  }
  auto add = [&](const u16& name, const u16& value) {
    std::string nm = xmlText(name), v = xmlText(value);
    for (pugi::xml_node u : old.children())
      if (nm == u.attribute(nameAttr.c_str()).value() && v == u.text().get()) {
        info.append_copy(u);
        return;
      }
    pugi::xml_node u = info.append_child(userDefined.c_str());
    u.append_attribute(nameAttr.c_str()) = nm.c_str();
    u.append_attribute(m("value-type").c_str()) = "string";
    u.text().set(v.c_str());
  };
  if (auto company = builtinOf(doc, wdPropertyCompany)) add(kCompany, *company);
  for (const auto& [k, v] : doc.customProperties)
    if (k != kCompany) add(k, v);
  pkg.put("meta.xml", serializePart(meta));

  // A package that had no meta.xml lists it now.
  if (!e) {
    if (const ZipEntry* man = pkg.find("META-INF/manifest.xml")) {
      pugi::xml_document manifest;
      if (!parsePart("META-INF/manifest.xml", man->data, manifest, problem)) return false;
      pugi::xml_node mroot = manifest.document_element();
      Names mn(prefixFor(mroot, kManifestNs, "manifest"));
      pugi::xml_node entry = mroot.append_child(mn("file-entry").c_str());
      entry.append_attribute(mn("full-path").c_str()) = "meta.xml";
      entry.append_attribute(mn("media-type").c_str()) = "text/xml";
      pkg.put("META-INF/manifest.xml", serializePart(manifest));
    }
  }
  return true;
}

ZipPackage emptyOdt(const u16& fontName) {
  ZipPackage pkg;
  pkg.put("mimetype", kTextMime, true);
  pkg.put("META-INF/manifest.xml",
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<manifest:manifest xmlns:manifest=\"urn:oasis:names:tc:opendocument:xmlns:manifest:1.0\" "
          "manifest:version=\"1.2\">"
          "<manifest:file-entry manifest:full-path=\"/\" manifest:version=\"1.2\" "
          "manifest:media-type=\"application/vnd.oasis.opendocument.text\"/>"
          "<manifest:file-entry manifest:full-path=\"content.xml\" manifest:media-type=\"text/xml\"/>"
          "<manifest:file-entry manifest:full-path=\"styles.xml\" manifest:media-type=\"text/xml\"/>"
          "<manifest:file-entry manifest:full-path=\"meta.xml\" manifest:media-type=\"text/xml\"/>"
          "</manifest:manifest>");
  const char* ns =
      "xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
      "xmlns:style=\"urn:oasis:names:tc:opendocument:xmlns:style:1.0\" "
      "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" "
      "xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\" "
      "xmlns:fo=\"urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0\" office:version=\"1.2\"";
  pkg.put("content.xml", std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<office:document-content ") + ns +
                             "><office:automatic-styles/><office:body><office:text/></office:body>"
                             "</office:document-content>");
  pugi::xml_document styles;
  styles.load_string((std::string("<office:document-styles ") + ns +
                      "><office:styles><style:default-style style:family=\"paragraph\">"
                      "<style:text-properties fo:font-size=\"12pt\"/></style:default-style>"
                      "<style:style style:name=\"Standard\" style:family=\"paragraph\" style:class=\"text\"/>"
                      "</office:styles></office:document-styles>")
                         .c_str());
  styles.document_element().first_child().first_child().first_child().append_attribute("fo:font-family") =
      xmlText(fontName).c_str();
  pkg.put("styles.xml", serializePart(styles));
  return pkg;
}

}  // namespace

std::unique_ptr<MemoryDocument> loadOdt(std::string_view bytes, std::string& problem) {
  OfficeSource source;
  source.kind = OfficeKind::Odt;
  if (!source.package.read(bytes, problem)) return nullptr;
  Parts parts;
  if (!openParts(source.package, parts, problem)) return nullptr;
  odt::OdfNames n(parts.content.document_element());
  std::vector<pugi::xml_node> nodes;
  odt::collectParagraphs(parts.content.document_element().child(n.body.c_str()).child(n.officeText.c_str()), n,
                         nodes);
  return loadedDocument(
      std::move(source), nodes, [&](pugi::xml_node p) { return odt::readParagraph(p, n, parts.styles); },
      [&](const ZipPackage& package, MemoryDocument& doc) { return readMeta(package, doc, problem); });
}

bool buildOdt(const MemoryDocument& doc, std::string& bytes, std::string& problem,
              std::vector<ParagraphText>* written) {
  const OfficeSource* source = sourceOf(doc, OfficeKind::Odt);
  ZipPackage pkg = source ? source->package : emptyOdt(doc.fontName);
  static const std::vector<ParagraphText> none;
  Parts parts;
  if (!openParts(pkg, parts, problem)) return false;
  std::vector<ParagraphText> after = fileSafe(documentParagraphs(doc), odtControl);
  if (!odt::writeBody(parts.content, parts.styles, source ? source->paragraphs : none, after, problem)) return false;
  pkg.put("content.xml", serializePart(parts.content));
  if (!writeMeta(doc, pkg, problem)) return false;
  // The type must come first and uncompressed for the file to be recognised.
  if (const ZipEntry* m = pkg.find("mimetype")) {
    std::string mime = m->data;
    pkg.putFirst("mimetype", mime, true);
  }
  if (!pkg.write(bytes, problem)) return false;
  if (written) *written = std::move(after);
  return true;
}

}  // namespace quillon::docfiles
