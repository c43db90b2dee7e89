// Office Open XML word-processing packages: the pieces shared by the
// .docx reader, the body writer and the property parts.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <unordered_map>
#include <vector>

#include "script/files/paragraph_match.h"
#include "script/files/xml_part.h"
#include "script/files/zip_package.h"
#include "script/memory_document.h"

namespace quillon::docfiles::docx {

inline constexpr const char* kWordNs = "http://schemas.openxmlformats.org/wordprocessingml/2006/main";
inline constexpr const char* kWordStrictNs = "http://purl.oclc.org/ooxml/wordprocessingml/main";

// Element and attribute names under the prefix a part uses for WordprocessingML.
struct WordNames {
  explicit WordNames(const std::string& prefix = "w");
  Names q;
  std::string document, body, p, r, t, tab, ptab, br, cr, pPr, rPr, pStyle, rStyle, i, iCs, val, type, sectPr,
      pPrChange, rPrChange, ins, del, moveFrom, moveTo, tc, tbl, noBreakHyphen, softHyphen, styles, style, styleId,
      basedOn, default_, docDefaults, rPrDefault, rFonts, b, bCs;
};
WordNames wordNamesOf(const pugi::xml_document& part);

// Italic as the styles give it: a run's character style (and the styles it
// is based on) first, then its paragraph's style, then the document
// defaults. Direct formatting on the run wins over all of these.
class Styles {
 public:
  void load(const pugi::xml_document& stylesPart);
  bool inherited(const std::string& paragraphStyle, const std::string& characterStyle) const;

 private:
  struct Style {
    std::string basedOn;
    int italic = -1;  // -1 when the style does not say
  };
  int chain(const std::string& id) const;
  std::unordered_map<std::string, Style> styles_;
  std::string defaultParagraph_;
  bool documentDefault_ = false;
};

// A w:i-like toggle: on unless w:val says 0, false or off.
bool toggleOn(pugi::xml_node n, const WordNames& w);
std::string styleIdOf(pugi::xml_node props, const std::string& styleName, const WordNames& w);

// Paragraphs of the main story in document order, table cells included.
void collectParagraphs(pugi::xml_node container, const WordNames& w, std::vector<pugi::xml_node>& out);
ParagraphText readParagraph(pugi::xml_node p, const WordNames& w, const Styles& styles);

// Rewrites the body of `doc` from `source` (its paragraphs as loaded) to
// `after`. `written` gets the paragraphs the body now holds in order, which
// is `after` plus an empty paragraph wherever a table cell would otherwise
// have been left without one.
bool writeBody(pugi::xml_document& doc, const std::vector<ParagraphText>& source,
               const std::vector<ParagraphText>& after, const Styles& styles, std::vector<ParagraphText>& written,
               std::string& problem);

// Package relationships.
struct Relationship {
  std::string id, type, target;
  bool external = false;
};
std::string relsPartOf(const std::string& partName);  // word/_rels/document.xml.rels
bool readRelationships(const ZipPackage& pkg, const std::string& relsPart, std::vector<Relationship>& out,
                       std::string& problem);
// The part named by the first relationship whose type ends with `typeTail`.
std::string partOfType(const std::vector<Relationship>& rels, const std::string& typeTail, const std::string& baseDir);
// Makes sure the package names `partName` with `type` from its root and gives it `contentType`.
bool ensurePackagePart(ZipPackage& pkg, const std::string& partName, const std::string& relType,
                       const std::string& contentType, std::string& problem);

// Document properties: docProps/core.xml, app.xml and custom.xml.
bool readProperties(const ZipPackage& pkg, const std::vector<Relationship>& rootRels, MemoryDocument& doc,
                    std::string& problem);
bool writeProperties(const MemoryDocument& doc, ZipPackage& pkg, std::string& problem);

// A package holding an empty document whose default font is `fontName`.
ZipPackage emptyPackage(const u16& fontName);

}  // namespace quillon::docfiles::docx
