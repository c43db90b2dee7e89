// Package plumbing of a .docx: relationships, content types, the document
// properties, and the empty package a new file starts from.
#include <ctime>

#include "script/files/docx_internal.h"
#include "script/files/office_source.h"

namespace quillon::docfiles::docx {

namespace {

constexpr const char* kRelsNs = "http://schemas.openxmlformats.org/package/2006/relationships";
constexpr const char* kTypesNs = "http://schemas.openxmlformats.org/package/2006/content-types";
constexpr const char* kCoreNs = "http://schemas.openxmlformats.org/package/2006/metadata/core-properties";
constexpr const char* kDcNs = "http://purl.org/dc/elements/1.1/";
constexpr const char* kDcTermsNs = "http://purl.org/dc/terms/";
constexpr const char* kXsiNs = "http://www.w3.org/2001/XMLSchema-instance";
constexpr const char* kAppNs = "http://schemas.openxmlformats.org/officeDocument/2006/extended-properties";
constexpr const char* kCustomNs = "http://schemas.openxmlformats.org/officeDocument/2006/custom-properties";
constexpr const char* kVtNs = "http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes";
constexpr const char* kCustomFmtId = "{D5CDD505-2E9C-101B-9397-08002B2CF9AE}";

constexpr const char* kCoreRel = "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";
constexpr const char* kAppRel = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/extended-properties";
constexpr const char* kCustomRel = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/custom-properties";

bool parseIfPresent(const ZipPackage& pkg, const std::string& part, pugi::xml_document& doc, bool& present,
                    std::string& problem) {
  const ZipEntry* e = part.empty() ? nullptr : pkg.find(part);
  present = e != nullptr;
  return !e || parsePart(part, e->data, doc, problem);
}

pugi::xml_node childNamed(pugi::xml_node parent, const std::string& name, bool create) {
  pugi::xml_node c = parent.child(name.c_str());
  if (!c && create) c = parent.append_child(name.c_str());
  return c;
}

// The part a root relationship of type `typeTail` names, else its usual name.
std::string propertyPart(const std::vector<Relationship>& rootRels, const char* typeTail, const char* usual) {
  std::string part = partOfType(rootRels, typeTail, "");
  return part.empty() ? usual : part;
}

}  // namespace

std::string relsPartOf(const std::string& partName) {
  auto slash = partName.rfind('/');
  std::string dir = slash == std::string::npos ? std::string() : partName.substr(0, slash + 1);
  std::string file = slash == std::string::npos ? partName : partName.substr(slash + 1);
  return dir + "_rels/" + file + ".rels";
}

bool readRelationships(const ZipPackage& pkg, const std::string& relsPart, std::vector<Relationship>& out,
                       std::string& problem) {
  out.clear();
  pugi::xml_document doc;
  bool present = false;
  if (!parseIfPresent(pkg, relsPart, doc, present, problem)) return false;
  for (pugi::xml_node r : doc.document_element().children()) {
    if (r.type() != pugi::node_element) continue;
    std::string_view name = r.name();
    if (name.size() < 12 || name.substr(name.size() - 12) != "Relationship") continue;
    out.push_back({r.attribute("Id").value(), r.attribute("Type").value(), r.attribute("Target").value(),
                   std::string_view(r.attribute("TargetMode").value()) == "External"});
  }
  return true;
}

std::string partOfType(const std::vector<Relationship>& rels, const std::string& typeTail, const std::string& baseDir) {
  for (const auto& r : rels) {
    if (r.external || r.type.size() < typeTail.size()) continue;
    if (r.type.compare(r.type.size() - typeTail.size(), typeTail.size(), typeTail) == 0)
      return resolvePartName(baseDir, r.target);
  }
  return {};
}

bool ensurePackagePart(ZipPackage& pkg, const std::string& partName, const std::string& relType,
                       const std::string& contentType, std::string& problem) {
  // The relationship from the package root.
  pugi::xml_document rels;
  bool present = false;
  if (!parseIfPresent(pkg, "_rels/.rels", rels, present, problem)) return false;
  if (!present) rels.append_child("Relationships").append_attribute("xmlns") = kRelsNs;
  pugi::xml_node root = rels.document_element();
  bool found = false;
  int highest = 0;
  for (pugi::xml_node r : root.children()) {
    if (r.type() != pugi::node_element) continue;
    if (resolvePartName("", r.attribute("Target").value()) == partName) found = true;
    std::string id = r.attribute("Id").value();
    if (id.rfind("rId", 0) == 0) highest = std::max(highest, std::atoi(id.c_str() + 3));
  }
  if (!found) {
    pugi::xml_node r = root.append_child("Relationship");
    r.append_attribute("Id") = ("rId" + std::to_string(highest + 1)).c_str();
    r.append_attribute("Type") = relType.c_str();
    r.append_attribute("Target") = partName.c_str();
    pkg.put("_rels/.rels", serializePart(rels));
  }
  // Its content type.
  pugi::xml_document types;
  if (!parseIfPresent(pkg, "[Content_Types].xml", types, present, problem)) return false;
  if (!present) types.append_child("Types").append_attribute("xmlns") = kTypesNs;
  pugi::xml_node troot = types.document_element();
  std::string slashName = "/" + partName;
  for (pugi::xml_node o : troot.children())
    if (std::string_view(o.attribute("PartName").value()) == slashName) return true;
  pugi::xml_node o = troot.append_child("Override");
  o.append_attribute("PartName") = slashName.c_str();
  o.append_attribute("ContentType") = contentType.c_str();
  pkg.put("[Content_Types].xml", serializePart(types));
  return true;
}

bool readProperties(const ZipPackage& pkg, const std::vector<Relationship>& rootRels, MemoryDocument& doc,
                    std::string& problem) {
  bool present = false;
  pugi::xml_document core;
  const std::string corePart = propertyPart(rootRels, "/metadata/core-properties", "docProps/core.xml");
  if (!parseIfPresent(pkg, corePart, core, present, problem)) return false;
  if (present) {
    pugi::xml_node root = core.document_element();
    Names dc(prefixFor(root, kDcNs, "dc")), cp(prefixFor(root, kCoreNs, "cp")),
        terms(prefixFor(root, kDcTermsNs, "dcterms"));
    auto text = [&](const std::string& name) -> std::optional<u16> {
      pugi::xml_node n = root.child(name.c_str());
      if (!n) return std::nullopt;
      return nodeText(n);
    };
    if (auto v = text(dc("title"))) setBuiltin(doc, wdPropertyTitle, *v);
    if (auto v = text(dc("creator"))) setBuiltin(doc, wdPropertyAuthor, *v);
    if (auto v = text(dc("description"))) setBuiltin(doc, wdPropertyComments, *v);
    if (auto v = text(cp("revision"))) setBuiltin(doc, wdPropertyRevision, *v);
    if (auto v = text(terms("created"))) setBuiltin(doc, wdPropertyTimeCreated, stationTimeFromFile(toUtf8(*v)));
    if (auto v = text(terms("modified"))) setBuiltin(doc, wdPropertyTimeLastSaved, stationTimeFromFile(toUtf8(*v)));
  }
  pugi::xml_document app;
  const std::string appPart = propertyPart(rootRels, "/extended-properties", "docProps/app.xml");
  if (!parseIfPresent(pkg, appPart, app, present, problem)) return false;
  if (present) {
    pugi::xml_node root = app.document_element();
    Names ep(prefixFor(root, kAppNs, ""));
    if (pugi::xml_node c = root.child(ep("Company").c_str())) setBuiltin(doc, wdPropertyCompany, nodeText(c));
  }
  pugi::xml_document custom;
  const std::string customPart = propertyPart(rootRels, "/custom-properties", "docProps/custom.xml");
  if (!parseIfPresent(pkg, customPart, custom, present, problem)) return false;
  if (present) {
    for (pugi::xml_node p : custom.document_element().children()) {
      if (p.type() != pugi::node_element || !p.attribute("name")) continue;
      u16 name = fromUtf8(p.attribute("name").value());
      pugi::xml_node value = p.first_child();
      while (value && value.type() != pugi::node_element) value = value.next_sibling();
      doc.customProperties.emplace_back(name, value ? nodeText(value) : u16{});
    }
  }
  return true;
}

bool writeProperties(const MemoryDocument& doc, ZipPackage& pkg, std::string& problem) {
  std::vector<Relationship> rootRels;
  if (!readRelationships(pkg, "_rels/.rels", rootRels, problem)) return false;
  bool present = false;

  // Core: title, author, comments, revision and the two times.
  const std::string corePart = propertyPart(rootRels, "/metadata/core-properties", "docProps/core.xml");
  pugi::xml_document core;
  if (!parseIfPresent(pkg, corePart, core, present, problem)) return false;
  if (!present) {
    pugi::xml_node root = core.append_child("cp:coreProperties");
    root.append_attribute("xmlns:cp") = kCoreNs;
    root.append_attribute("xmlns:dc") = kDcNs;
    root.append_attribute("xmlns:dcterms") = kDcTermsNs;
    root.append_attribute("xmlns:dcmitype") = "http://purl.org/dc/dcmitype/";
    root.append_attribute("xmlns:xsi") = kXsiNs;
  }
  {
    pugi::xml_node root = core.document_element();
    Names dc(prefixFor(root, kDcNs, "dc")), cp(prefixFor(root, kCoreNs, "cp")),
        terms(prefixFor(root, kDcTermsNs, "dcterms"));
    std::string xsi = prefixFor(root, kXsiNs, "");
    if (xsi.empty()) {
      xsi = "xsi";
      root.append_attribute("xmlns:xsi") = kXsiNs;
    }
    if (prefixFor(root, kDcTermsNs, "").empty() && !root.attribute("xmlns:dcterms"))
      root.append_attribute("xmlns:dcterms") = kDcTermsNs;
    if (prefixFor(root, kDcNs, "").empty() && !root.attribute("xmlns:dc")) root.append_attribute("xmlns:dc") = kDcNs;
    auto setText = [&](const std::string& name, int index) {
      if (auto v = builtinOf(doc, index)) childNamed(root, name, true).text().set(xmlText(*v).c_str());
    };
    auto setTime = [&](const std::string& name, std::optional<time_t> t) {
      if (!t) return;
      pugi::xml_node n = childNamed(root, name, true);
      n.text().set(utcFileTime(*t).c_str());
      std::string typeAttr = xsi + ":type";
      if (!n.attribute(typeAttr.c_str())) n.append_attribute(typeAttr.c_str()) = (terms.prefix() + ":W3CDTF").c_str();
    };
    setText(dc("title"), wdPropertyTitle);
    setText(dc("creator"), wdPropertyAuthor);
    setText(dc("description"), wdPropertyComments);
    setText(cp("revision"), wdPropertyRevision);
    auto created = builtinOf(doc, wdPropertyTimeCreated);
    setTime(terms("created"), created ? parseStationTime(*created) : std::nullopt);
    setTime(terms("modified"), time(nullptr));  // saved now
  }
  if (!ensurePackagePart(pkg, corePart, kCoreRel, "application/vnd.openxmlformats-package.core-properties+xml", problem))
    return false;
  pkg.put(corePart, serializePart(core));

  // Application properties: the company.
  if (auto company = builtinOf(doc, wdPropertyCompany)) {
    const std::string appPart = propertyPart(rootRels, "/extended-properties", "docProps/app.xml");
    pugi::xml_document app;
    if (!parseIfPresent(pkg, appPart, app, present, problem)) return false;
    if (!present) {
      pugi::xml_node root = app.append_child("Properties");
      root.append_attribute("xmlns") = kAppNs;
      root.append_attribute("xmlns:vt") = kVtNs;
    }
    pugi::xml_node root = app.document_element();
    Names ep(prefixFor(root, kAppNs, ""));
    childNamed(root, ep("Company"), true).text().set(xmlText(*company).c_str());
    if (!ensurePackagePart(pkg, appPart, kAppRel,
                           "application/vnd.openxmlformats-officedocument.extended-properties+xml", problem))
      return false;
    pkg.put(appPart, serializePart(app));
  }

  // Custom properties in their order; one unchanged keeps its type.
  const std::string customPart = propertyPart(rootRels, "/custom-properties", "docProps/custom.xml");
  pugi::xml_document custom;
  if (!parseIfPresent(pkg, customPart, custom, present, problem)) return false;
  if (!present && doc.customProperties.empty()) return true;
  pugi::xml_document old;
  old.reset(custom);
  if (!present) {
    pugi::xml_node root = custom.append_child("Properties");
    root.append_attribute("xmlns") = kCustomNs;
    root.append_attribute("xmlns:vt") = kVtNs;
  }
  pugi::xml_node root = custom.document_element();
  while (root.first_child()) root.remove_child(root.first_child());
  std::string vt = prefixFor(root, kVtNs, "");
  if (vt.empty()) {
    vt = "vt";
    if (!root.attribute("xmlns:vt")) root.append_attribute("xmlns:vt") = kVtNs;
  }
  std::string propertyName = Names(prefixFor(root, kCustomNs, ""))("property");
  int pid = 2;
  for (const auto& [name, value] : doc.customProperties) {
    std::string n = xmlText(name), v = xmlText(value);
    pugi::xml_node kept;
    for (pugi::xml_node p : old.document_element().children()) {
      if (p.type() != pugi::node_element || n != p.attribute("name").value()) continue;
      pugi::xml_node val = p.first_child();
      while (val && val.type() != pugi::node_element) val = val.next_sibling();
      if (val && v == val.text().get()) kept = p;
      break;
    }
    pugi::xml_node p;
    if (kept) {
      p = root.append_copy(kept);
      p.attribute("pid").set_value(pid);
    } else {
      p = root.append_child(propertyName.c_str());
      p.append_attribute("fmtid") = kCustomFmtId;
      p.append_attribute("pid") = pid;
      p.append_attribute("name") = n.c_str();
      p.append_child((vt + ":lpwstr").c_str()).text().set(v.c_str());
    }
    ++pid;
  }
  if (!ensurePackagePart(pkg, customPart, kCustomRel,
                         "application/vnd.openxmlformats-officedocument.custom-properties+xml", problem))
    return false;
  pkg.put(customPart, serializePart(custom));
  return true;
}

ZipPackage emptyPackage(const u16& fontName) {
  ZipPackage pkg;
  pkg.put("[Content_Types].xml",
          "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
          "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
          "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
          "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
          "<Override PartName=\"/word/document.xml\" "
          "ContentType=\"application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml\"/>"
          "<Override PartName=\"/word/styles.xml\" "
          "ContentType=\"application/vnd.openxmlformats-officedocument.wordprocessingml.styles+xml\"/>"
          "</Types>");
  pkg.put("_rels/.rels",
          "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
          "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
          "<Relationship Id=\"rId1\" "
          "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
          "Target=\"word/document.xml\"/></Relationships>");
  pkg.put("word/_rels/document.xml.rels",
          "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
          "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
          "<Relationship Id=\"rId1\" "
          "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles\" "
          "Target=\"styles.xml\"/></Relationships>");
  pkg.put("word/document.xml",
          "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
          "<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\"><w:body>"
          "<w:sectPr><w:pgSz w:w=\"11906\" w:h=\"16838\"/>"
          "<w:pgMar w:top=\"1417\" w:right=\"1417\" w:bottom=\"1417\" w:left=\"1417\" w:header=\"708\" "
          "w:footer=\"708\" w:gutter=\"0\"/></w:sectPr></w:body></w:document>");
  std::string font = xmlText(fontName);
  pugi::xml_document styles;
  styles.load_string(
      "<w:styles xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\">"
      "<w:docDefaults><w:rPrDefault><w:rPr><w:rFonts/><w:sz w:val=\"24\"/><w:szCs w:val=\"24\"/></w:rPr>"
      "</w:rPrDefault><w:pPrDefault/></w:docDefaults>"
      "<w:style w:type=\"paragraph\" w:default=\"1\" w:styleId=\"Normal\"><w:name w:val=\"Normal\"/></w:style>"
      "</w:styles>");
  pugi::xml_node fonts = styles.document_element().first_child().first_child().first_child().first_child();
  for (const char* a : {"w:ascii", "w:hAnsi", "w:cs"}) fonts.append_attribute(a) = font.c_str();
  pkg.put("word/styles.xml", serializePart(styles));
  return pkg;
}

}  // namespace quillon::docfiles::docx
