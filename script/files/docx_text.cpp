// Reading the text and italics of a WordprocessingML main story.
#include <cstring>

#include "script/files/docx_internal.h"
#include "script/files/office_source.h"

namespace quillon::docfiles::docx {

WordNames::WordNames(const std::string& prefix) : q(prefix) {
  document = q("document");
  body = q("body");
  p = q("p");
  r = q("r");
  t = q("t");
  tab = q("tab");
  ptab = q("ptab");
  br = q("br");
  cr = q("cr");
  pPr = q("pPr");
  rPr = q("rPr");
  pStyle = q("pStyle");
  rStyle = q("rStyle");
  i = q("i");
  iCs = q("iCs");
  val = q("val");
  type = q("type");
  sectPr = q("sectPr");
  pPrChange = q("pPrChange");
  rPrChange = q("rPrChange");
  ins = q("ins");
  del = q("del");
  moveFrom = q("moveFrom");
  moveTo = q("moveTo");
  tc = q("tc");
  tbl = q("tbl");
  noBreakHyphen = q("noBreakHyphen");
  softHyphen = q("softHyphen");
  styles = q("styles");
  style = q("style");
  styleId = q("styleId");
  basedOn = q("basedOn");
  default_ = q("default");
  docDefaults = q("docDefaults");
  rPrDefault = q("rPrDefault");
  rFonts = q("rFonts");
  b = q("b");
  bCs = q("bCs");
}

WordNames wordNamesOf(const pugi::xml_document& part) {
  pugi::xml_node root = part.document_element();
  std::string prefix = prefixFor(root, kWordNs, "\x01");
  if (prefix == "\x01") prefix = prefixFor(root, kWordStrictNs, "w");
  return WordNames(prefix);
}

bool toggleOn(pugi::xml_node n, const WordNames& w) {
  pugi::xml_attribute v = n.attribute(w.val.c_str());
  if (!v) return true;
  const char* s = v.value();
  return !(std::strcmp(s, "0") == 0 || std::strcmp(s, "false") == 0 || std::strcmp(s, "off") == 0);
}

std::string styleIdOf(pugi::xml_node props, const std::string& styleName, const WordNames& w) {
  return props.child(styleName.c_str()).attribute(w.val.c_str()).value();
}

void Styles::load(const pugi::xml_document& part) {
  WordNames w = wordNamesOf(part);
  pugi::xml_node root = part.document_element();
  pugi::xml_node defaults = root.child(w.docDefaults.c_str()).child(w.rPrDefault.c_str()).child(w.rPr.c_str());
  if (pugi::xml_node i = defaults.child(w.i.c_str())) documentDefault_ = toggleOn(i, w);
  for (pugi::xml_node s : root.children(w.style.c_str())) {
    std::string id = s.attribute(w.styleId.c_str()).value();
    if (id.empty()) continue;
    Style st;
    st.basedOn = s.child(w.basedOn.c_str()).attribute(w.val.c_str()).value();
    if (pugi::xml_node i = s.child(w.rPr.c_str()).child(w.i.c_str())) st.italic = toggleOn(i, w) ? 1 : 0;
    std::string kind = s.attribute(w.type.c_str()).value();
    std::string isDefault = s.attribute(w.default_.c_str()).value();
    if (kind == "paragraph" && (isDefault == "1" || isDefault == "true" || isDefault == "on") &&
        defaultParagraph_.empty())
      defaultParagraph_ = id;
    styles_.emplace(id, std::move(st));
  }
}

int Styles::chain(const std::string& id) const {
  std::string at = id;
  for (int depth = 0; depth < 32 && !at.empty(); ++depth) {  // a based-on loop ends here
    auto it = styles_.find(at);
    if (it == styles_.end()) return -1;
    if (it->second.italic >= 0) return it->second.italic;
    at = it->second.basedOn;
  }
  return -1;
}

bool Styles::inherited(const std::string& paragraphStyle, const std::string& characterStyle) const {
  if (!characterStyle.empty()) {
    int c = chain(characterStyle);
    if (c >= 0) return c == 1;
  }
  int p = chain(paragraphStyle.empty() ? defaultParagraph_ : paragraphStyle);
  if (p >= 0) return p == 1;
  return documentDefault_;
}

namespace {

bool isWord(pugi::xml_node n, const WordNames& w, const char* local) {
  const char* name = n.name();
  const std::string& pre = w.q.prefix();
  if (!pre.empty()) {
    if (std::strncmp(name, pre.c_str(), pre.size()) != 0 || name[pre.size()] != ':') return false;
    name += pre.size() + 1;
  }
  return std::strcmp(name, local) == 0;
}

// Containers between a paragraph and its runs whose text is the paragraph's.
bool isRunContainer(pugi::xml_node n, const WordNames& w) {
  static const char* kinds[] = {"hyperlink", "ins", "smartTag", "sdt", "sdtContent", "customXml", "fldSimple",
                                "moveTo", "dir", "bdo"};
  for (const char* k : kinds)
    if (isWord(n, w, k)) return true;
  return false;
}

struct ParagraphReader {
  const WordNames& w;
  const Styles& styles;
  std::string paragraphStyle;
  ParagraphText out;

  void run(pugi::xml_node r) {
    pugi::xml_node rPr = r.child(w.rPr.c_str());
    bool italic;
    if (pugi::xml_node i = rPr.child(w.i.c_str()))
      italic = toggleOn(i, w);
    else
      italic = styles.inherited(paragraphStyle, styleIdOf(rPr, w.rStyle, w));
    for (pugi::xml_node c : r.children()) {
      if (c.type() != pugi::node_element) continue;
      if (sameName(c, w.t)) {
        appendFileText(out, fromUtf8(c.text().get()), italic);
      } else if (sameName(c, w.tab) || sameName(c, w.ptab)) {
        appendFileText(out, u"\t", italic);
      } else if (sameName(c, w.br)) {
        std::string type = c.attribute(w.type.c_str()).value();
        appendFileText(out, type == "page" ? u"\f" : type == "column" ? u"\x0E" : u"\v", italic);
      } else if (sameName(c, w.cr)) {
        appendFileText(out, u"\v", italic);
      } else if (sameName(c, w.noBreakHyphen)) {
        appendFileText(out, u"\u2011", italic);
      } else if (sameName(c, w.softHyphen)) {
        appendFileText(out, u"\u00AD", italic);
      }
    }
  }

  void walk(pugi::xml_node parent) {
    for (pugi::xml_node c : parent.children()) {
      if (c.type() != pugi::node_element) continue;
      if (sameName(c, w.r))
        run(c);
      else if (isRunContainer(c, w))
        walk(c);
    }
  }
};

}  // namespace

void collectParagraphs(pugi::xml_node container, const WordNames& w, std::vector<pugi::xml_node>& out) {
  for (pugi::xml_node c : container.children()) {
    if (c.type() != pugi::node_element) continue;
    if (sameName(c, w.p)) {
      out.push_back(c);
    } else if (std::strstr(c.name(), ":Fallback") || sameName(c, w.sectPr) || sameName(c, w.del) || sameName(c, w.moveFrom) ||
               isWord(c, w, "tblPr") || isWord(c, w, "tblGrid") || isWord(c, w, "trPr") || isWord(c, w, "tcPr") ||
               isWord(c, w, "sdtPr") || isWord(c, w, "sdtEndPr")) {
      continue;
    } else {
      collectParagraphs(c, w, out);  // tables, rows, cells, content controls
    }
  }
}

ParagraphText readParagraph(pugi::xml_node p, const WordNames& w, const Styles& styles) {
  ParagraphReader reader{w, styles, styleIdOf(p.child(w.pPr.c_str()), w.pStyle, w), {}};
  reader.walk(p);
  return std::move(reader.out);
}

}  // namespace quillon::docfiles::docx
