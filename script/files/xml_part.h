// XML parts of a package: parsing with the encoding checked first, writing
// back without indentation, and element names under whatever prefix a part
// binds to a namespace.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "core/text.h"

namespace quillon::docfiles {

// False with the problem naming the part ("word/document.xml is not
// well-formed XML (line 3: ...)"). Only UTF-8 (with or without a mark) and
// UTF-16 with a mark are read; anything else is an unknown encoding.
bool parsePart(const std::string& partName, std::string_view bytes, pugi::xml_document& doc, std::string& problem);

// The part as UTF-8 bytes with an XML declaration.
std::string serializePart(const pugi::xml_document& doc);

// The prefix a document's root binds to `uri`, "" for the default
// namespace, `fallback` when the root does not declare it.
std::string prefixFor(pugi::xml_node root, const char* uri, const std::string& fallback);

// Qualified names under one prefix: Names w("w"); w("p") == "w:p".
class Names {
 public:
  Names() = default;
  explicit Names(std::string prefix) : prefix_(std::move(prefix)) {}
  std::string operator()(std::string_view local) const {
    return prefix_.empty() ? std::string(local) : prefix_ + ":" + std::string(local);
  }
  const std::string& prefix() const { return prefix_; }

 private:
  std::string prefix_;
};

// Station text to XML text: characters XML cannot carry are dropped.
std::string xmlText(u16v text);
inline u16 nodeText(pugi::xml_node n) { return fromUtf8(n.text().get()); }
inline bool sameName(pugi::xml_node n, const std::string& name) { return name == n.name(); }

// Part names inside a package: "word/document.xml" relative to "word/_rels/..".
std::string resolvePartName(const std::string& baseDir, const std::string& target);
std::string dirOf(const std::string& partName);  // "word/" for "word/document.xml"

}  // namespace quillon::docfiles
