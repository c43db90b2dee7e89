// Writing the edited paragraphs back into an OpenDocument text body, on the
// same plan as for .docx: untouched paragraphs stay as they are, text added
// at either end joins the old content, other edits rewrite the paragraph's
// content under its own style, and new paragraphs take the style of their
// neighbour. Spaces a reader would collapse are written as text:s.
#include <unordered_map>

#include "script/files/odt_internal.h"
#include "script/files/office_body.h"

namespace quillon::docfiles::odt {

namespace {

struct Formatting {
  std::string paragraphStyle;
  std::string firstSpan, lastSpan;  // text style around the first and last text, if any
};

class BodyWriter {
 public:
  BodyWriter(pugi::xml_document& content, Styles& styles) : content_(content), n_(content.document_element()), styles_(styles) {}

  const Formatting& formattingOf(long index, pugi::xml_node p) {
    auto it = cache_.find(index);
    if (it != cache_.end()) return it->second;
    Formatting f;
    f.paragraphStyle = p.attribute(n_.styleName.c_str()).value();
    bool first = true;
    findSpans(p, {}, f, first);
    return cache_.emplace(index, std::move(f)).first->second;
  }

  void edit(pugi::xml_node p, const ParagraphText& was, const ParagraphText& now, const Formatting& f) {
    size_t at = opensWithDroppedSpace(p, n_) ? u16::npos : keptWithin(was, now);
    bool paraItalic = styles_.paragraphItalic(f.paragraphStyle);
    if (at != u16::npos) {
      addText(p, p.first_child(), now, 0, at, f.firstSpan, paraItalic);
      addText(p, {}, now, at + was.text.size(), now.text.size(), f.lastSpan, paraItalic);
      return;
    }
    while (p.first_child()) p.remove_child(p.first_child());
    addText(p, {}, now, 0, now.text.size(), f.firstSpan, paraItalic);
  }

  void fill(pugi::xml_node p, const ParagraphText& now, const Formatting* f, bool useLast) {
    std::string style = f ? f->paragraphStyle : std::string();
    if (!style.empty()) p.append_attribute(n_.styleName.c_str()) = style.c_str();
    std::string span = f ? (useLast ? f->lastSpan : f->firstSpan) : std::string();
    addText(p, {}, now, 0, now.text.size(), span, styles_.paragraphItalic(style));
  }

 private:
  void findSpans(pugi::xml_node parent, const std::string& around, Formatting& f, bool& first) {
    for (pugi::xml_node c : parent.children()) {
      bool isText = (c.type() == pugi::node_pcdata && *c.value()) || sameName(c, n_.s) || sameName(c, n_.tab);
      if (isText) {
        if (first) f.firstSpan = around;
        f.lastSpan = around;
        first = false;
      } else if (sameName(c, n_.span)) {
        findSpans(c, c.attribute(n_.styleName.c_str()).value(), f, first);
      } else if (c.type() == pugi::node_element && n_.inText(c) && !sameName(c, n_.lineBreak)) {
        findSpans(c, around, f, first);
      }
    }
  }

  // An automatic text style that only sets italic on or off.
  std::string overrideStyle(bool italic) {
    std::string& known = italic ? italicStyle_ : uprightStyle_;
    if (!known.empty()) return known;
    std::string base = italic ? "QuillonItalic" : "QuillonUpright";
    std::string name = base;
    for (int k = 2; styles_.has("text", name) && styles_.italicOf("text", name) != (italic ? 1 : 0); ++k)
      name = base + std::to_string(k);
    if (!styles_.has("text", name)) {
      pugi::xml_node root = content_.document_element();
      if (prefixFor(root, kStyleNs, "").empty() && !root.attribute(("xmlns:" + n_.style.prefix()).c_str()))
        root.append_attribute(("xmlns:" + n_.style.prefix()).c_str()) = kStyleNs;
      if (prefixFor(root, kFoNs, "").empty() && !root.attribute(("xmlns:" + n_.fo.prefix()).c_str()))
        root.append_attribute(("xmlns:" + n_.fo.prefix()).c_str()) = kFoNs;
      pugi::xml_node autos = root.child(n_.automaticStyles.c_str());
      if (!autos) {
        pugi::xml_node body = root.child(n_.body.c_str());
        autos = body ? root.insert_child_before(n_.automaticStyles.c_str(), body)
                     : root.append_child(n_.automaticStyles.c_str());
      }
      pugi::xml_node s = autos.append_child(n_.styleStyle.c_str());
      s.append_attribute(n_.name.c_str()) = name.c_str();
      s.append_attribute(n_.family.c_str()) = "text";
      pugi::xml_node tp = s.append_child(n_.textProperties.c_str());
      const char* v = italic ? "italic" : "normal";
      tp.append_attribute(n_.fontStyle.c_str()) = v;
      tp.append_attribute(n_.style("font-style-asian").c_str()) = v;
      tp.append_attribute(n_.style("font-style-complex").c_str()) = v;
      reload();
    }
    known = name;
    return name;
  }

  void reload() {
    Styles fresh = styles_;
    fresh.loadAutomatic(content_);
    styles_ = fresh;
  }

  // Text[from, to) in front of `before` (at the end when empty), inside a
  // span of `spanStyle` when given, with italic overridden where needed.
  void addText(pugi::xml_node p, pugi::xml_node before, const ParagraphText& text, size_t from, size_t to,
               const std::string& spanStyle, bool paragraphItalic) {
    bool base = spanStyle.empty() ? paragraphItalic : styles_.spanItalic(spanStyle, paragraphItalic);
    size_t i = from;
    while (i < to) {
      size_t j = i;
      while (j < to && text.italic[j] == text.italic[i]) ++j;
      auto place = [&](pugi::xml_node parent, const char* name) {
        return before && parent == p ? parent.insert_child_before(name, before) : parent.append_child(name);
      };
      pugi::xml_node target = p;
      if (!spanStyle.empty()) {
        target = place(p, n_.span.c_str());
        target.append_attribute(n_.styleName.c_str()) = spanStyle.c_str();
      }
      bool want = text.italic[i] != 0;
      if (want != base) {
        std::string style = overrideStyle(want);
        pugi::xml_node inner = target == p ? place(p, n_.span.c_str()) : target.append_child(n_.span.c_str());
        inner.append_attribute(n_.styleName.c_str()) = style.c_str();
        target = inner;
      }
      writeRun(target, target == p ? before : pugi::xml_node(), text.text, i, j);
      i = j;
    }
  }

  // Characters with spaces a reader would collapse made explicit: a space
  // is literal only right after a visible character.
  void writeRun(pugi::xml_node parent, pugi::xml_node before, const u16& text, size_t from, size_t to) {
    auto add = [&](pugi::xml_node_type type) {
      return before ? parent.insert_child_before(type, before) : parent.append_child(type);
    };
    auto addElement = [&](const std::string& name) {
      return before ? parent.insert_child_before(name.c_str(), before) : parent.append_child(name.c_str());
    };
    u16 pending;
    auto flush = [&] {
      if (pending.empty()) return;
      add(pugi::node_pcdata).set_value(xmlText(pending).c_str());
      pending.clear();
    };
    for (size_t k = from; k < to;) {
      char16_t ch = text[k];
      if (ch == u'\t' || ch == u'\v') {
        flush();
        addElement(ch == u'\t' ? n_.tab : n_.lineBreak);
        ++k;
        continue;
      }
      if (ch != u' ') {
        pending += ch;
        ++k;
        continue;
      }
      size_t end = k;
      while (end < to && text[end] == u' ') ++end;
      char16_t prev = k > 0 ? text[k - 1] : u'\0';
      bool literal = k > 0 && prev != u' ' && prev != u'\t' && prev != u'\v';
      long count = static_cast<long>(end - k);
      if (literal) {
        pending += u' ';
        --count;
      }
      if (count > 0) {
        flush();
        pugi::xml_node s = addElement(n_.s);
        if (count > 1) s.append_attribute(n_.c.c_str()) = count;
      }
      k = end;
    }
    flush();
  }

  pugi::xml_document& content_;
  OdfNames n_;
  Styles& styles_;
  std::unordered_map<long, Formatting> cache_;
  std::string italicStyle_, uprightStyle_;
};

// A list item left without paragraphs goes, and so does a list left empty.
void pruneEmpty(pugi::xml_node parent, const OdfNames& n) {
  while (parent && (sameName(parent, n.listItem) || sameName(parent, n.listHeader) || sameName(parent, n.list))) {
    for (pugi::xml_node c : parent.children())
      if (c.type() == pugi::node_element && n.local(c) != "number" && n.local(c) != "list-header") return;
    if (sameName(parent, n.list) && parent.child(n.listHeader.c_str())) return;
    pugi::xml_node up = parent.parent();
    up.remove_child(parent);
    parent = up;
  }
}

}  // namespace

bool writeBody(pugi::xml_document& content, Styles& styles, const std::vector<ParagraphText>& source,
               const std::vector<ParagraphText>& after, std::string& problem) {
  OdfNames n(content.document_element());
  pugi::xml_node text = content.document_element().child(n.body.c_str()).child(n.officeText.c_str());
  if (!text) {
    problem = "content.xml holds no text document";
    return false;
  }
  std::vector<pugi::xml_node> nodes;
  collectParagraphs(text, n, nodes);
  const std::vector<ParagraphText> none;
  BodyWriter writer(content, styles);
  std::vector<pugi::xml_node> placed;
  std::vector<char> used;
  auto firstNew = [&] { return text.append_child(n.p.c_str()); };
  if (!placeParagraphs(nodes, nodes.empty() ? none : source, after, writer, n.p, firstNew, placed, used, problem))
    return false;
  for (size_t i = 0; i < nodes.size(); ++i) {
    if (used[i]) continue;
    pugi::xml_node parent = nodes[i].parent();
    parent.remove_child(nodes[i]);
    pruneEmpty(parent, n);
  }
  return true;
}

}  // namespace quillon::docfiles::odt
