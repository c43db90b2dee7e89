#include "script/document_files.h"

#include <cstdio>
#include <ctime>
#include <map>
#include <sys/stat.h>

#include "core/atomic_file.h"
#include "script/codepage.h"

namespace quillon {

namespace {

struct Format {
  DocumentLoader load;
  DocumentSaver save;
};

std::map<std::string, Format>& formats() {
  static std::map<std::string, Format> f;
  return f;
}

}  // namespace

void registerDocumentFormat(const std::string& extension, DocumentLoader load, DocumentSaver save) {
  formats()[extension] = {std::move(load), std::move(save)};
}

bool isRegisteredDocumentFormat(const std::string& extension) { return formats().count(extension) > 0; }

std::string fileExtension(const std::string& path) {
  std::string name = fileName(path);
  auto dot = name.rfind('.');
  if (dot == std::string::npos) return {};
  std::string e = name.substr(dot + 1);
  for (char& c : e)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return e;
}

std::string fileName(const std::string& path) {
  auto slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::unique_ptr<MemoryDocument> loadDocumentFile(const std::string& path, std::string& error) {
  auto it = formats().find(fileExtension(path));
  std::unique_ptr<MemoryDocument> doc = it != formats().end() && it->second.load ? it->second.load(path, error)
                                                                                : loadPlainText(path, error);
  if (doc) {
    doc->name = fromUtf8(fileName(path));
    doc->path = path;
    doc->modified = false;
  }
  return doc;
}

bool saveDocumentFile(const MemoryDocument& doc, const std::string& path, std::string& error) {
  auto it = formats().find(fileExtension(path));
  if (it != formats().end() && it->second.save) return it->second.save(doc, path, error);
  return savePlainText(doc, path, error);
}

bool isValidUtf8(std::string_view s) {
  size_t i = 0;
  while (i < s.size()) {
    auto b = static_cast<unsigned char>(s[i]);
    size_t n = b < 0x80 ? 1 : (b >> 5) == 6 ? 2 : (b >> 4) == 14 ? 3 : (b >> 3) == 30 ? 4 : 0;
    if (n == 0 || i + n > s.size()) return false;
    if (n == 2 && b < 0xC2) return false;  // overlong
    for (size_t k = 1; k < n; ++k)
      if ((static_cast<unsigned char>(s[i + k]) >> 6) != 2) return false;
    i += n;
  }
  return true;
}

std::unique_ptr<MemoryDocument> plainTextDocument(std::string_view bytes) {
  if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
  u16 raw = isValidUtf8(bytes) ? fromUtf8(bytes) : cp1252ToUnicode(bytes);
  u16 text;
  text.reserve(raw.size() + 1);
  for (size_t i = 0; i < raw.size(); ++i) {
    char16_t c = raw[i];
    if (c == u'\r') {
      text += CR;
      if (i + 1 < raw.size() && raw[i + 1] == u'\n') ++i;
    } else if (c == u'\n') {
      text += CR;
    } else {
      text += c;
    }
  }
  // A last line without its line end still ends in a paragraph mark.
  if (text.empty() || text.back() != CR) text += CR;
  auto doc = std::make_unique<MemoryDocument>();
  doc->setText(text);
  return doc;
}

std::unique_ptr<MemoryDocument> loadPlainText(const std::string& path, std::string& error) {
  std::string bytes;
  if (!readWholeFile(path, bytes, &error)) return nullptr;
  auto doc = plainTextDocument(bytes);
  struct stat st {};
  if (stat(path.c_str(), &st) == 0) {
    doc->builtinProperties.emplace_back(wdPropertyTimeCreated, stationTime(st.st_ctime < st.st_mtime ? st.st_ctime : st.st_mtime));
    doc->builtinProperties.emplace_back(wdPropertyTimeLastSaved, stationTime(st.st_mtime));
  }
  return doc;
}

u16 stationTime(time_t t) {
  char buf[80];
  struct tm tmv {};
  localtime_r(&t, &tmv);
  std::snprintf(buf, sizeof buf, "%04d-%02d-%02d %02d:%02d:%02d", tmv.tm_year + 1900, tmv.tm_mon + 1, tmv.tm_mday,
                tmv.tm_hour, tmv.tm_min, tmv.tm_sec);
  return fromLatin1(buf);
}

std::string plainTextBytes(const MemoryDocument& doc) {
  std::string out = toUtf8(doc.text());
  for (char& c : out)
    if (c == '\r') c = '\n';
  return out;
}

bool savePlainText(const MemoryDocument& doc, const std::string& path, std::string& error) {
  return writeFile(path, plainTextBytes(doc)).asFlag(&error);
}

}  // namespace quillon
