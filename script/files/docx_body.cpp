// Writing the edited paragraphs back into a WordprocessingML body. Paragraphs
// the station left alone keep their XML untouched; text added at either end
// of a paragraph becomes new runs beside the old ones; other edited
// paragraphs are rewritten with the paragraph properties and the first
// run's formatting they had; new paragraphs take the formatting of the
// paragraph they were inserted in front of (or behind, at the end).
#include <unordered_map>

#include "script/files/docx_internal.h"
#include "script/files/office_body.h"

namespace quillon::docfiles::docx {

namespace {

struct Formatting {
  pugi::xml_node pPr;       // copies held in the writer's scratch document
  pugi::xml_node firstRPr;  // formatting of the paragraph's first text
  pugi::xml_node lastRPr;   // and of its last
  std::string paragraphStyle;
};

class BodyWriter {
 public:
  BodyWriter(const WordNames& w, const Styles& styles) : w_(w), styles_(styles) {}

  // Formatting of a source paragraph, taken before the paragraph is edited.
  const Formatting& formattingOf(long index, pugi::xml_node p) {
    auto it = cache_.find(index);
    if (it != cache_.end()) return it->second;
    Formatting f;
    pugi::xml_node pPr = p.child(w_.pPr.c_str());
    if (pPr) {
      f.pPr = scratch_.append_copy(pPr);
      f.pPr.remove_child(w_.sectPr.c_str());  // a section ends only once
      f.pPr.remove_child(w_.pPrChange.c_str());
      f.paragraphStyle = styleIdOf(pPr, w_.pStyle, w_);
      if (pugi::xml_node markRPr = f.pPr.child(w_.rPr.c_str())) stripRevisions(markRPr);
    }
    std::vector<pugi::xml_node> runs;
    textRuns(p, runs);
    auto copyRPr = [&](pugi::xml_node run) -> pugi::xml_node {
      pugi::xml_node rPr = run ? run.child(w_.rPr.c_str()) : pPr.child(w_.rPr.c_str());
      if (!rPr) return {};
      pugi::xml_node c = scratch_.append_copy(rPr);
      stripRevisions(c);
      return c;
    };
    f.firstRPr = copyRPr(runs.empty() ? pugi::xml_node() : runs.front());
    f.lastRPr = copyRPr(runs.empty() ? pugi::xml_node() : runs.back());
    return cache_.emplace(index, std::move(f)).first->second;
  }

  // New runs for text[from, to) in front of `before` (at the end when empty).
  void addRuns(pugi::xml_node p, pugi::xml_node before, const ParagraphText& text, size_t from, size_t to,
               pugi::xml_node rPrTemplate, const std::string& paragraphStyle) {
    size_t i = from;
    while (i < to) {
      size_t j = i;
      while (j < to && text.italic[j] == text.italic[i]) ++j;
      pugi::xml_node r = before ? p.insert_child_before(w_.r.c_str(), before) : p.append_child(w_.r.c_str());
      pugi::xml_node rPr;
      if (rPrTemplate) rPr = r.append_copy(rPrTemplate);
      bool want = text.italic[i] != 0;
      std::string charStyle = rPr ? styleIdOf(rPr, w_.rStyle, w_) : std::string();
      bool inherited = styles_.inherited(paragraphStyle, charStyle);
      if (rPr) {
        rPr.remove_child(w_.i.c_str());
        rPr.remove_child(w_.iCs.c_str());
      }
      if (want != inherited) {
        if (!rPr) rPr = r.append_child(w_.rPr.c_str());
        setItalic(rPr, want);
      }
      if (rPr && !rPr.first_child()) r.remove_child(rPr);
      fillRun(r, u16v(text.text).substr(i, j - i));
      i = j;
    }
  }

  // Brings paragraph `p` from `old` to `now`.
  void edit(pugi::xml_node p, const ParagraphText& old, const ParagraphText& now, const Formatting& f) {
    size_t at = keptWithin(old, now);
    if (at != u16::npos) {
      pugi::xml_node first = p.first_child();
      while (first && sameName(first, w_.pPr)) first = first.next_sibling();
      addRuns(p, first, now, 0, at, f.firstRPr, f.paragraphStyle);
      addRuns(p, {}, now, at + old.text.size(), now.text.size(), f.lastRPr, f.paragraphStyle);
      return;
    }
    for (pugi::xml_node c = p.first_child(); c;) {
      pugi::xml_node next = c.next_sibling();
      if (!sameName(c, w_.pPr)) p.remove_child(c);
      c = next;
    }
    addRuns(p, {}, now, 0, now.text.size(), f.firstRPr, f.paragraphStyle);
  }

  // A new paragraph with the given formatting, placed by the caller.
  void fill(pugi::xml_node p, const ParagraphText& now, const Formatting* f, bool useLast) {
    if (f && f->pPr) p.append_copy(f->pPr);
    pugi::xml_node rPr = f ? (useLast ? f->lastRPr : f->firstRPr) : pugi::xml_node();
    addRuns(p, {}, now, 0, now.text.size(), rPr, f ? f->paragraphStyle : std::string());
  }

 private:
  void stripRevisions(pugi::xml_node rPr) {
    for (const std::string* n : {&w_.ins, &w_.del, &w_.moveFrom, &w_.moveTo, &w_.rPrChange})
      while (rPr.remove_child(n->c_str())) {
      }
  }

  // Runs holding text, in order, through hyperlinks and the like.
  void textRuns(pugi::xml_node parent, std::vector<pugi::xml_node>& out) {
    for (pugi::xml_node c : parent.children()) {
      if (c.type() != pugi::node_element || sameName(c, w_.pPr) || sameName(c, w_.del) || sameName(c, w_.moveFrom))
        continue;
      if (sameName(c, w_.r)) {
        if (c.child(w_.t.c_str()) || c.child(w_.tab.c_str())) out.push_back(c);
      } else {
        textRuns(c, out);
      }
    }
  }

  // w:i goes after rStyle, rFonts, b and bCs: Word insists on the order.
  void setItalic(pugi::xml_node rPr, bool on) {
    pugi::xml_node after;
    for (pugi::xml_node c : rPr.children()) {
      if (sameName(c, w_.rStyle) || sameName(c, w_.rFonts) || sameName(c, w_.b) || sameName(c, w_.bCs))
        after = c;
      else
        break;
    }
    pugi::xml_node i = after ? rPr.insert_child_after(w_.i.c_str(), after) : rPr.prepend_child(w_.i.c_str());
    pugi::xml_node iCs = rPr.insert_child_after(w_.iCs.c_str(), i);
    if (!on) {
      i.append_attribute(w_.val.c_str()) = "0";
      iCs.append_attribute(w_.val.c_str()) = "0";
    }
  }

  void fillRun(pugi::xml_node r, u16v text) {
    u16 pending;
    auto flush = [&] {
      if (pending.empty()) return;
      pugi::xml_node t = r.append_child(w_.t.c_str());
      if (pending.front() == u' ' || pending.back() == u' ') t.append_attribute("xml:space") = "preserve";
      t.text().set(xmlText(pending).c_str());
      pending.clear();
    };
    for (char16_t c : text) {
      const char* breakType = nullptr;
      switch (c) {
        case u'\t':
          flush();
          r.append_child(w_.tab.c_str());
          continue;
        case u'\v': breakType = ""; break;
        case u'\f': breakType = "page"; break;
        case u'\x0E': breakType = "column"; break;
        default: pending += c; continue;
      }
      flush();
      pugi::xml_node br = r.append_child(w_.br.c_str());
      if (*breakType) br.append_attribute(w_.type.c_str()) = breakType;
    }
    flush();
  }

  const WordNames& w_;
  const Styles& styles_;
  pugi::xml_document scratch_;
  std::unordered_map<long, Formatting> cache_;
};

}  // namespace

bool writeBody(pugi::xml_document& doc, const std::vector<ParagraphText>& source,
               const std::vector<ParagraphText>& after, const Styles& styles, std::vector<ParagraphText>& written,
               std::string& problem) {
  WordNames w = wordNamesOf(doc);
  pugi::xml_node body = doc.document_element().child(w.body.c_str());
  if (!body) {
    problem = "the document has no body";
    return false;
  }
  std::vector<pugi::xml_node> nodes;
  collectParagraphs(body, w, nodes);
  BodyWriter writer(w, styles);
  std::vector<pugi::xml_node> placedNodes;
  std::vector<char> used;
  auto firstNew = [&] {
    pugi::xml_node sect = body.child(w.sectPr.c_str());
    return sect ? body.insert_child_before(w.p.c_str(), sect) : body.append_child(w.p.c_str());
  };
  if (!placeParagraphs(nodes, source, after, writer, w.p, firstNew, placedNodes, used, problem)) return false;
  const long n = static_cast<long>(after.size());
  std::unordered_map<pugi::xml_node_struct*, long> placed;
  for (long j = 0; j < n; ++j) placed[placedNodes[static_cast<size_t>(j)].internal_object()] = j;
  for (size_t i = 0; i < nodes.size(); ++i) {
    if (used[i]) continue;
    pugi::xml_node parent = nodes[i].parent();
    parent.remove_child(nodes[i]);
    // A table cell must end with a paragraph.
    if (sameName(parent, w.tc)) {
      pugi::xml_node last = parent.last_child();
      while (last && last.type() != pugi::node_element) last = last.previous_sibling();
      if (!last || !sameName(last, w.p)) parent.append_child(w.p.c_str());
    }
  }

  std::vector<pugi::xml_node> result;
  collectParagraphs(body, w, result);
  written.clear();
  long expect = 0;
  for (pugi::xml_node p : result) {
    auto it = placed.find(p.internal_object());
    if (it == placed.end()) {
      written.push_back({});
      continue;
    }
    if (it->second != expect++) {
      problem = "the paragraphs could not be put back in order";
      return false;
    }
    written.push_back(after[static_cast<size_t>(it->second)]);
  }
  if (expect != n) {
    problem = "some paragraphs could not be placed";
    return false;
  }
  return true;
}

}  // namespace quillon::docfiles::docx
