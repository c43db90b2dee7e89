// Reading the text and italics of an OpenDocument text body.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "script/files/odt_internal.h"
#include "script/files/office_source.h"

namespace quillon::docfiles::odt {

OdfNames::OdfNames(pugi::xml_node root)
    : office(prefixFor(root, kOfficeNs, "office")),
      text(prefixFor(root, kTextNs, "text")),
      style(prefixFor(root, kStyleNs, "style")),
      fo(prefixFor(root, kFoNs, "fo")) {
  body = office("body");
  officeText = office("text");
  automaticStyles = office("automatic-styles");
  styles = office("styles");
  p = text("p");
  h = text("h");
  span = text("span");
  s = text("s");
  c = text("c");
  tab = text("tab");
  lineBreak = text("line-break");
  styleName = text("style-name");
  styleStyle = style("style");
  defaultStyle = style("default-style");
  family = style("family");
  name = style("name");
  parentStyleName = style("parent-style-name");
  textProperties = style("text-properties");
  fontStyle = fo("font-style");
  list = text("list");
  listItem = text("list-item");
  listHeader = text("list-header");
}

bool OdfNames::inText(pugi::xml_node n) const {
  const std::string& pre = text.prefix();
  const char* name = n.name();
  if (pre.empty()) return std::strchr(name, ':') == nullptr;
  return std::strncmp(name, pre.c_str(), pre.size()) == 0 && name[pre.size()] == ':';
}

std::string OdfNames::local(pugi::xml_node n) const {
  const char* name = n.name();
  const char* colon = std::strchr(name, ':');
  return colon ? colon + 1 : name;
}

void Styles::load(pugi::xml_node container, const OdfNames& n) {
  for (pugi::xml_node s : container.children()) {
    bool isDefault = sameName(s, n.defaultStyle);
    if (!isDefault && !sameName(s, n.styleStyle)) continue;
    int italic = -1;
    std::string fs = s.child(n.textProperties.c_str()).attribute(n.fontStyle.c_str()).value();
    if (fs == "italic" || fs == "oblique") italic = 1;
    if (fs == "normal") italic = 0;
    std::string family = s.attribute(n.family.c_str()).value();
    if (isDefault) {
      if (family == "paragraph") defaultParagraph_ = italic;
      continue;
    }
    styles_[family + "/" + s.attribute(n.name.c_str()).value()] = {s.attribute(n.parentStyleName.c_str()).value(), italic};
  }
}

void Styles::loadCommon(const pugi::xml_document& part) {
  OdfNames n(part.document_element());
  load(part.document_element().child(n.styles.c_str()), n);
}

void Styles::loadAutomatic(const pugi::xml_document& part) {
  OdfNames n(part.document_element());
  load(part.document_element().child(n.automaticStyles.c_str()), n);
}

int Styles::chain(const std::string& family, const std::string& name) const {
  std::string at = name;
  for (int depth = 0; depth < 32 && !at.empty(); ++depth) {
    auto it = styles_.find(family + "/" + at);
    if (it == styles_.end()) return -1;
    if (it->second.italic >= 0) return it->second.italic;
    at = it->second.parent;
  }
  return -1;
}

bool Styles::paragraphItalic(const std::string& styleName) const {
  int v = chain("paragraph", styleName);
  if (v < 0) v = defaultParagraph_;
  return v == 1;
}

bool Styles::spanItalic(const std::string& styleName, bool around) const {
  int v = chain("text", styleName);
  return v < 0 ? around : v == 1;
}

bool Styles::has(const std::string& family, const std::string& name) const {
  return styles_.count(family + "/" + name) > 0;
}

int Styles::italicOf(const std::string& family, const std::string& name) const {
  auto it = styles_.find(family + "/" + name);
  return it == styles_.end() ? -1 : it->second.italic;
}

namespace {

// Elements whose content is not running text of the paragraph or body.
bool skipped(const std::string& local) {
  static const char* names[] = {"note", "tracked-changes", "sequence-decls", "variable-decls", "user-field-decls",
                                "dde-connection-decls", "ruby-text", "bookmark", "bookmark-start", "bookmark-end",
                                "reference-mark", "reference-mark-start", "reference-mark-end", "soft-page-break",
                                "change", "change-start", "change-end", "toc-mark", "alphabetical-index-mark",
                                "user-index-mark", "index-title-template"};
  for (const char* n : names)
    if (local == n) return true;
  return local.size() > 7 && local.compare(local.size() - 7, 7, "-source") == 0;
}

bool isWhite(char16_t c) { return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r'; }

struct ParagraphReader {
  const OdfNames& n;
  const Styles& styles;
  ParagraphText out;
  bool lastWhite = true;  // white space opening a paragraph is dropped

  void walk(pugi::xml_node parent, bool italic) {
    for (pugi::xml_node c : parent.children()) {
      if (c.type() == pugi::node_pcdata || c.type() == pugi::node_cdata) {
        u16 t = fromUtf8(c.value());
        for (char16_t ch : t) {
          if (isWhite(ch)) {
            if (lastWhite) continue;
            ch = u' ';
            lastWhite = true;
          } else {
            lastWhite = false;
          }
          out.text += ch;
          out.italic.push_back(italic ? 1 : 0);
        }
        continue;
      }
      if (c.type() != pugi::node_element || !n.inText(c)) continue;  // frames, annotations
      if (sameName(c, n.s)) {
        long count = std::strtol(c.attribute(n.c.c_str()).value(), nullptr, 10);
        if (!c.attribute(n.c.c_str())) count = 1;
        count = std::clamp(count, 1L, 1000L);
        appendFileText(out, u16(static_cast<size_t>(count), u' '), italic);
        lastWhite = false;
      } else if (sameName(c, n.tab)) {
        appendFileText(out, u"\t", italic);
        lastWhite = false;
      } else if (sameName(c, n.lineBreak)) {
        appendFileText(out, u"\v", italic);
        lastWhite = false;
      } else if (sameName(c, n.span)) {
        walk(c, styles.spanItalic(c.attribute(n.styleName.c_str()).value(), italic));
      } else if (!skipped(n.local(c))) {
        walk(c, italic);  // links, fields, metadata spans: their text is the paragraph's
      }
    }
  }
};

}  // namespace

void collectParagraphs(pugi::xml_node container, const OdfNames& n, std::vector<pugi::xml_node>& out) {
  for (pugi::xml_node c : container.children()) {
    if (c.type() != pugi::node_element) continue;
    if (sameName(c, n.p) || sameName(c, n.h)) {
      out.push_back(c);
      continue;
    }
    std::string local = n.local(c);
    if (skipped(local) || local == "forms" || local == "annotation" || local == "table-columns" ||
        local == "table-column" || local == "table-header-columns")
      continue;
    if (std::strncmp(c.name(), "draw:", 5) == 0) continue;
    collectParagraphs(c, n, out);  // lists, sections, tables, indexes
  }
}

ParagraphText readParagraph(pugi::xml_node p, const OdfNames& n, const Styles& styles) {
  ParagraphReader reader{n, styles, {}};
  reader.walk(p, styles.paragraphItalic(p.attribute(n.styleName.c_str()).value()));
  return std::move(reader.out);
}

bool opensWithDroppedSpace(pugi::xml_node p, const OdfNames& n) {
  for (pugi::xml_node c = p.first_child(); c;) {
    if (c.type() == pugi::node_pcdata || c.type() == pugi::node_cdata) {
      const char* v = c.value();
      if (*v) return isWhite(static_cast<char16_t>(*v));
    } else if (c.type() == pugi::node_element && n.inText(c)) {
      if (sameName(c, n.s) || sameName(c, n.tab) || sameName(c, n.lineBreak)) return false;
      if (!skipped(n.local(c)) && c.first_child()) {
        c = c.first_child();
        continue;
      }
    }
    // Next in document order, climbing out of finished elements.
    while (c && !c.next_sibling() && c != p) c = c.parent();
    if (!c || c == p) return false;
    c = c.next_sibling();
  }
  return false;
}

}  // namespace quillon::docfiles::odt
