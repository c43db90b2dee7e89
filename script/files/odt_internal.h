// OpenDocument text packages: the pieces shared by the .odt reader, the
// body writer and the metadata.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <unordered_map>
#include <vector>

#include "script/files/paragraph_match.h"
#include "script/files/xml_part.h"

namespace quillon::docfiles::odt {

inline constexpr const char* kOfficeNs = "urn:oasis:names:tc:opendocument:xmlns:office:1.0";
inline constexpr const char* kTextNs = "urn:oasis:names:tc:opendocument:xmlns:text:1.0";
inline constexpr const char* kStyleNs = "urn:oasis:names:tc:opendocument:xmlns:style:1.0";
inline constexpr const char* kFoNs = "urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0";
inline constexpr const char* kMetaNs = "urn:oasis:names:tc:opendocument:xmlns:meta:1.0";
inline constexpr const char* kDcNs = "http://purl.org/dc/elements/1.1/";

// Names under the prefixes one part binds.
struct OdfNames {
  explicit OdfNames(pugi::xml_node root);
  Names office, text, style, fo;
  std::string body, officeText, automaticStyles, styles, p, h, span, s, c, tab, lineBreak, styleName, styleStyle,
      defaultStyle, family, name, parentStyleName, textProperties, fontStyle, list, listItem, listHeader;
  bool inText(pugi::xml_node n) const;            // element of the text namespace
  std::string local(pugi::xml_node n) const;      // its name without the prefix
};

// Italic as styles give it: a span's text style (through its parents) or
// else what surrounds it; a paragraph's style, else the default paragraph
// style.
class Styles {
 public:
  // Common styles and defaults from styles.xml, automatic styles from content.xml.
  void loadCommon(const pugi::xml_document& stylesPart);
  void loadAutomatic(const pugi::xml_document& contentPart);
  bool paragraphItalic(const std::string& styleName) const;
  bool spanItalic(const std::string& styleName, bool around) const;
  bool has(const std::string& family, const std::string& name) const;
  int italicOf(const std::string& family, const std::string& name) const;  // -1 when unsaid

 private:
  struct Style {
    std::string parent;
    int italic = -1;
  };
  void load(pugi::xml_node container, const OdfNames& n);
  int chain(const std::string& family, const std::string& name) const;
  std::unordered_map<std::string, Style> styles_;  // "family/name"
  int defaultParagraph_ = -1;
};

// Paragraph elements (text:p, text:h) of office:text in document order.
void collectParagraphs(pugi::xml_node container, const OdfNames& n, std::vector<pugi::xml_node>& out);
ParagraphText readParagraph(pugi::xml_node p, const OdfNames& n, const Styles& styles);
// Whether the paragraph's content opens with white space a reader drops.
bool opensWithDroppedSpace(pugi::xml_node p, const OdfNames& n);

// Rewrites office:text of `content` from `source` to `after`.
bool writeBody(pugi::xml_document& content, Styles& styles, const std::vector<ParagraphText>& source,
               const std::vector<ParagraphText>& after, std::string& problem);

}  // namespace quillon::docfiles::odt
