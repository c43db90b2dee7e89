#include "script/files/docx_internal.h"
#include "script/files/office_formats.h"
#include "script/files/office_source.h"

namespace quillon::docfiles {

namespace {

// Characters a .docx carries; the rest are dropped, as they would be.
std::vector<ParagraphText> docxSafe(std::vector<ParagraphText> paragraphs) {
  for (auto& p : paragraphs) {
    ParagraphText clean;
    clean.text.reserve(p.text.size());
    for (size_t i = 0; i < p.text.size(); ++i) {
      char16_t c = p.text[i];
      if (c == u'\n') c = u' ';
      bool keep = c >= 0x20 || c == u'\t' || c == u'\v' || c == u'\f' || c == u'\x0E';
      if (c == 0xFFFE || c == 0xFFFF) keep = false;
      if (c >= 0xD800 && c <= 0xDBFF) {
        if (i + 1 < p.text.size() && p.text[i + 1] >= 0xDC00 && p.text[i + 1] <= 0xDFFF) {
          clean.text += c;
          clean.italic.push_back(p.italic[i]);
          c = p.text[++i];
        } else {
          keep = false;
        }
      } else if (c >= 0xDC00 && c <= 0xDFFF) {
        keep = false;
      }
      if (!keep) continue;
      clean.text += c;
      clean.italic.push_back(p.italic[i]);
    }
    p = std::move(clean);
  }
  return paragraphs;
}

struct MainPart {
  std::string name;
  pugi::xml_document xml;
  docx::Styles styles;
};

bool openMainPart(const ZipPackage& pkg, MainPart& main, std::vector<docx::Relationship>& rootRels,
                  std::string& problem) {
  if (!pkg.has("[Content_Types].xml")) {
    problem = "not a .docx package ([Content_Types].xml is missing)";
    return false;
  }
  if (!docx::readRelationships(pkg, "_rels/.rels", rootRels, problem)) return false;
  main.name = docx::partOfType(rootRels, "/officeDocument", "");
  if (main.name.empty()) main.name = "word/document.xml";
  const ZipEntry* e = pkg.find(main.name);
  if (!e) {
    problem = "the document part " + main.name + " is missing";
    return false;
  }
  if (!parsePart(main.name, e->data, main.xml, problem)) return false;
  docx::WordNames w = docx::wordNamesOf(main.xml);
  if (!sameName(main.xml.document_element(), w.document) || !main.xml.document_element().child(w.body.c_str())) {
    problem = main.name + " is not a word-processing document";
    return false;
  }
  std::vector<docx::Relationship> mainRels;
  if (!docx::readRelationships(pkg, docx::relsPartOf(main.name), mainRels, problem)) return false;
  std::string stylesPart = docx::partOfType(mainRels, "/styles", dirOf(main.name));
  if (const ZipEntry* s = stylesPart.empty() ? nullptr : pkg.find(stylesPart)) {
    pugi::xml_document styles;
    if (!parsePart(stylesPart, s->data, styles, problem)) return false;
    main.styles.load(styles);
  }
  return true;
}

}  // namespace

std::unique_ptr<MemoryDocument> loadDocx(std::string_view bytes, std::string& problem) {
  OfficeSource source;
  source.kind = OfficeKind::Docx;
  if (!source.package.read(bytes, problem)) return nullptr;
  MainPart main;
  std::vector<docx::Relationship> rootRels;
  if (!openMainPart(source.package, main, rootRels, problem)) return nullptr;
  docx::WordNames w = docx::wordNamesOf(main.xml);
  std::vector<pugi::xml_node> nodes;
  docx::collectParagraphs(main.xml.document_element().child(w.body.c_str()), w, nodes);
  source.paragraphs.reserve(nodes.size());
  for (pugi::xml_node p : nodes) source.paragraphs.push_back(docx::readParagraph(p, w, main.styles));
  if (source.paragraphs.empty()) source.paragraphs.emplace_back();
  auto doc = documentFrom(source.paragraphs);
  if (!docx::readProperties(source.package, rootRels, *doc, problem)) return nullptr;
  attachSource(*doc, std::move(source));
  return doc;
}

bool buildDocx(const MemoryDocument& doc, std::string& bytes, std::string& problem,
               std::vector<ParagraphText>* written) {
  const OfficeSource* source = sourceOf(doc, OfficeKind::Docx);
  ZipPackage pkg = source ? source->package : docx::emptyPackage(doc.fontName);
  static const std::vector<ParagraphText> none;
  const std::vector<ParagraphText>& before = source ? source->paragraphs : none;
  MainPart main;
  std::vector<docx::Relationship> rootRels;
  if (!openMainPart(pkg, main, rootRels, problem)) return false;
  // A source whose body was empty was loaded as one empty paragraph.
  docx::WordNames w = docx::wordNamesOf(main.xml);
  std::vector<pugi::xml_node> nodes;
  docx::collectParagraphs(main.xml.document_element().child(w.body.c_str()), w, nodes);
  std::vector<ParagraphText> after = docxSafe(documentParagraphs(doc));
  std::vector<ParagraphText> out;
  if (!docx::writeBody(main.xml, nodes.empty() ? none : before, after, main.styles, out, problem)) return false;
  pkg.put(main.name, serializePart(main.xml));
  if (!docx::writeProperties(doc, pkg, problem)) return false;
  if (!pkg.write(bytes, problem)) return false;
  if (written) *written = std::move(out);
  return true;
}

}  // namespace quillon::docfiles
