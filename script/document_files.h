// Script files: loading a file into a memory document and saving it back.
// Plain text is built in; word-processor formats register their own loader
// and saver, so the logic libraries stay free of archive and XML code.
#pragma once

#include <ctime>
#include <functional>
#include <memory>
#include <string>

#include "script/memory_document.h"

namespace quillon {

using DocumentLoader = std::function<std::unique_ptr<MemoryDocument>(const std::string& path, std::string& error)>;
using DocumentSaver = std::function<bool(const MemoryDocument& doc, const std::string& path, std::string& error)>;

// `extension` in lower case without the dot ("docx").
void registerDocumentFormat(const std::string& extension, DocumentLoader load, DocumentSaver save);
bool isRegisteredDocumentFormat(const std::string& extension);

// By the file's extension; anything unregistered is read as plain text.
// nullptr with a one-line reason naming the file on failure.
std::unique_ptr<MemoryDocument> loadDocumentFile(const std::string& path, std::string& error);
bool saveDocumentFile(const MemoryDocument& doc, const std::string& path, std::string& error);

// Plain text: UTF-8 with or without a byte-order mark, otherwise
// Windows-1252; CR, LF or CRLF ends a paragraph. Saved as UTF-8 without a
// mark, one paragraph a line, each ended by LF.
std::unique_ptr<MemoryDocument> loadPlainText(const std::string& path, std::string& error);
std::unique_ptr<MemoryDocument> plainTextDocument(std::string_view bytes);
std::string plainTextBytes(const MemoryDocument& doc);
bool savePlainText(const MemoryDocument& doc, const std::string& path, std::string& error);

// A time as the station holds it in a document's properties: local time,
// "YYYY-MM-DD HH:MM:SS".
u16 stationTime(time_t t);

bool isValidUtf8(std::string_view bytes);
std::string fileExtension(const std::string& path);  // lower case, no dot
std::string fileName(const std::string& path);

}  // namespace quillon
