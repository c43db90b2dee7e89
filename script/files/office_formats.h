// .docx (Office Open XML) and .odt (OpenDocument Text) script files for the
// memory document.
//
// What the scanners see: paragraphs in document order, table cells included
// (each cell paragraph is a paragraph); a manual line break is a vertical
// tab (11), a page break a form feed (12), a column break 14, a tab 9, as a
// word processor gives them in its text; text in text boxes, footnotes,
// comments and deleted tracked changes is not part of the script. A
// character is italic when its run says so directly, else when its
// character style or, failing that, its paragraph style does (through the
// styles they are based on), else as the document default.
//
// Properties: custom properties are docProps/custom.xml or ODF user-defined
// metadata, in order. Built-in 1 title, 3 author, 5 comments, 8 revision
// number, 11 creation time, 12 last save time come from docProps/core.xml or
// meta.xml; 21 company from docProps/app.xml, or in ODF from the
// user-defined entry "Company" (as LibreOffice keeps it), which is then not
// a custom property. Times are local, "YYYY-MM-DD HH:MM:SS". A save sets the
// file's last save time to the time of saving.
//
// A save writes back everything the station does not read: untouched
// paragraphs keep their XML, edited ones keep their paragraph formatting,
// and every other part of the package is copied. The file is built in
// memory and read back before it replaces anything.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "script/files/paragraph_match.h"
#include "script/memory_document.h"

namespace quillon {

// Makes loadDocumentFile and saveDocumentFile handle "docx" and "odt".
void registerOfficeDocumentFormats();

namespace docfiles {

// From the bytes of a file; nullptr with the problem in words.
std::unique_ptr<MemoryDocument> loadDocx(std::string_view bytes, std::string& problem);
std::unique_ptr<MemoryDocument> loadOdt(std::string_view bytes, std::string& problem);

// The file for `doc`; `written` gets the paragraphs the file holds.
bool buildDocx(const MemoryDocument& doc, std::string& bytes, std::string& problem,
               std::vector<ParagraphText>* written = nullptr);
bool buildOdt(const MemoryDocument& doc, std::string& bytes, std::string& problem,
              std::vector<ParagraphText>* written = nullptr);

// Load and save by path, as registered; errors name the file.
std::unique_ptr<MemoryDocument> loadOfficeFile(const std::string& path, std::string& error);
bool saveOfficeFile(const MemoryDocument& doc, const std::string& path, std::string& error);

}  // namespace docfiles
}  // namespace quillon
