#include "script/files/docx_internal.h"
#include "script/files/office_body.h"
#include "script/files/office_formats.h"
#include "script/files/office_source.h"

namespace quillon::docfiles {

namespace {

// Control characters a .docx carries; the rest are dropped, as they would be.
char16_t docxControl(char16_t c) {
  switch (c) {
    case u'\n':
      return u' ';
    case u'\t':
    case u'\v':
    case u'\f':
    case u'\x0E':
      return c;
    default:
      return 0;
  }
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
  return loadedDocument(
      std::move(source), nodes, [&](pugi::xml_node p) { return docx::readParagraph(p, w, main.styles); },
      [&](const ZipPackage& package, MemoryDocument& doc) {
        return docx::readProperties(package, rootRels, doc, problem);
      });
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
  std::vector<ParagraphText> after = fileSafe(documentParagraphs(doc), docxControl);
  std::vector<ParagraphText> out;
  if (!docx::writeBody(main.xml, nodes.empty() ? none : before, after, main.styles, out, problem)) return false;
  pkg.put(main.name, serializePart(main.xml));
  if (!docx::writeProperties(doc, pkg, problem)) return false;
  if (!pkg.write(bytes, problem)) return false;
  if (written) *written = std::move(out);
  return true;
}

}  // namespace quillon::docfiles
