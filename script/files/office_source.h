// What a loaded .docx or .odt keeps on its memory document to be written
// back: the whole package as read and the paragraphs as the station saw
// them, so a save can tell which paragraphs the station changed.
#pragma once

#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "script/files/paragraph_match.h"
#include "script/files/zip_package.h"
#include "script/document_files.h"
#include "script/memory_document.h"

namespace quillon::docfiles {

enum class OfficeKind { Docx, Odt };

struct OfficeSource {
  OfficeKind kind = OfficeKind::Docx;
  ZipPackage package;
  std::vector<ParagraphText> paragraphs;
};

// Hangs the source on the document in a way only this library recognises.
void attachSource(MemoryDocument& doc, OfficeSource source);
// The document's source when it came from a file of `kind`, else nullptr.
const OfficeSource* sourceOf(const MemoryDocument& doc, OfficeKind kind);

// A memory document holding `paragraphs`, at least one.
std::unique_ptr<MemoryDocument> documentFrom(const std::vector<ParagraphText>& paragraphs);

// The document a file loads as: the paragraphs read from the body's
// paragraph elements `nodes` (one empty one when there are none), its
// properties read from the package, and `source` with those paragraphs kept
// on it for the save. Null when the properties cannot be read.
std::unique_ptr<MemoryDocument> loadedDocument(
    OfficeSource source, const std::vector<pugi::xml_node>& nodes,
    const std::function<ParagraphText(pugi::xml_node)>& readParagraph,
    const std::function<bool(const ZipPackage& package, MemoryDocument& doc)>& readProperties);

// Paragraph text taken from a file: marks the document would read as
// paragraph ends become spaces.
void appendFileText(ParagraphText& p, u16v text, bool italic);

// Property times. The station holds local time as stationTime writes it.
// A file time with a zone (Z or +hh:mm) is converted to local time; one
// without is taken as local time already.
std::optional<time_t> parseStationTime(u16v text);
u16 stationTimeFromFile(const std::string& text);  // empty when unreadable
std::string utcFileTime(time_t t);                 // 2024-01-02T03:04:05Z
std::string localFileTime(time_t t);               // 2024-01-02T03:04:05

// Setting a built-in property by index, keeping the order of first mention.
void setBuiltin(MemoryDocument& doc, int index, const u16& value);
std::optional<u16> builtinOf(const MemoryDocument& doc, int index);

}  // namespace quillon::docfiles
