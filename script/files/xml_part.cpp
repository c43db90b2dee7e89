#include "script/files/xml_part.h"

#include <sstream>
#include <vector>

#include "script/document_files.h"

namespace quillon::docfiles {

namespace {

std::string lower(std::string s) {
  for (char& c : s)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return s;
}

// The encoding named in the declaration, lower case; empty when none.
std::string declaredEncoding(std::string_view head) {
  if (head.substr(0, 5) != "<?xml") return {};
  auto end = head.find("?>");
  if (end == std::string_view::npos) return {};
  std::string_view decl = head.substr(0, end);
  auto at = decl.find("encoding");
  if (at == std::string_view::npos) return {};
  auto q = decl.find_first_of("\"'", at);
  if (q == std::string_view::npos) return {};
  auto q2 = decl.find(decl[q], q + 1);
  if (q2 == std::string_view::npos) return {};
  return lower(std::string(decl.substr(q + 1, q2 - q - 1)));
}

struct StringWriter : pugi::xml_writer {
  std::string out;
  void write(const void* data, size_t size) override { out.append(static_cast<const char*>(data), size); }
};

}  // namespace

bool parsePart(const std::string& partName, std::string_view bytes, pugi::xml_document& doc, std::string& problem) {
  pugi::xml_encoding enc = pugi::encoding_utf8;
  bool utf16 = bytes.size() >= 2 && ((bytes[0] == '\xFF' && bytes[1] == '\xFE') || (bytes[0] == '\xFE' && bytes[1] == '\xFF'));
  if (utf16) {
    enc = pugi::encoding_auto;
  } else {
    std::string_view body = bytes.substr(0, 3) == "\xEF\xBB\xBF" ? bytes.substr(3) : bytes;
    std::string e = declaredEncoding(body.substr(0, 200));
    if (!e.empty() && e != "utf-8" && e != "utf8" && e != "us-ascii" && e != "ascii") {
      problem = partName + " is in an unknown encoding (" + e + ")";
      return false;
    }
    if (!isValidUtf8(body)) {
      problem = partName + " is not valid UTF-8 text";
      return false;
    }
  }
  unsigned flags = pugi::parse_default | pugi::parse_declaration | pugi::parse_ws_pcdata;
  pugi::xml_parse_result r = doc.load_buffer(bytes.data(), bytes.size(), flags, enc);
  if (!r) {
    long line = 1;
    for (ptrdiff_t i = 0; i < r.offset && static_cast<size_t>(i) < bytes.size(); ++i)
      if (bytes[static_cast<size_t>(i)] == '\n') ++line;
    problem = partName + " is not well-formed XML (line " + std::to_string(line) + ": " + r.description() + ")";
    return false;
  }
  if (!doc.document_element()) {
    problem = partName + " holds no XML element";
    return false;
  }
  return true;
}

std::string serializePart(const pugi::xml_document& doc) {
  StringWriter w;
  bool hasDecl = doc.first_child().type() == pugi::node_declaration;
  if (!hasDecl) w.out = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
  doc.save(w, "", pugi::format_raw | (hasDecl ? 0u : pugi::format_no_declaration), pugi::encoding_utf8);
  // A declaration kept from the source may name another encoding; the bytes are UTF-8 now.
  if (hasDecl) {
    auto end = w.out.find("?>");
    auto at = w.out.find("encoding=");
    if (at != std::string::npos && at < end) {
      auto q = at + 9;
      auto q2 = w.out.find(w.out[q], q + 1);
      if (q2 != std::string::npos) w.out.replace(q + 1, q2 - q - 1, "UTF-8");
    }
    if (w.out.compare(end + 2, 1, "\n") != 0) w.out.insert(end + 2, "\n");
  }
  return w.out;
}

std::string prefixFor(pugi::xml_node root, const char* uri, const std::string& fallback) {
  for (pugi::xml_attribute a : root.attributes()) {
    std::string_view n = a.name();
    if (std::string_view(a.value()) != uri) continue;
    if (n == "xmlns") return {};
    if (n.substr(0, 6) == "xmlns:") return std::string(n.substr(6));
  }
  return fallback;
}

std::string xmlText(u16v text) {
  u16 clean;
  clean.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    char16_t c = text[i];
    if (c < 0x20 && c != u'\t' && c != u'\n' && c != u'\r') continue;
    if (c == 0xFFFE || c == 0xFFFF) continue;
    if (c >= 0xD800 && c <= 0xDBFF) {
      if (i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
        clean += c;
        clean += text[++i];
      }
      continue;
    }
    if (c >= 0xDC00 && c <= 0xDFFF) continue;
    clean += c;
  }
  return toUtf8(clean);
}

std::string dirOf(const std::string& partName) {
  auto slash = partName.rfind('/');
  return slash == std::string::npos ? std::string() : partName.substr(0, slash + 1);
}

std::string resolvePartName(const std::string& baseDir, const std::string& target) {
  std::string path = !target.empty() && target[0] == '/' ? target.substr(1) : baseDir + target;
  std::vector<std::string> parts;
  std::stringstream ss(path);
  std::string seg;
  while (std::getline(ss, seg, '/')) {
    if (seg.empty() || seg == ".") continue;
    if (seg == "..") {
      if (!parts.empty()) parts.pop_back();
      continue;
    }
    parts.push_back(seg);
  }
  std::string out;
  for (size_t i = 0; i < parts.size(); ++i) out += (i ? "/" : "") + parts[i];
  return out;
}

}  // namespace quillon::docfiles
