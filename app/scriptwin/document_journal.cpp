#include "app/scriptwin/document_journal.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "core/atomic_file.h"

namespace quillon {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kMagic = "QUILLON-JOURNAL 1\n";
constexpr std::string_view kPrefix = "journal-";
constexpr std::string_view kSuffix = ".qjl";

// Each field is its tag, a blank, its byte count and a line end, then the
// bytes and a line end: any text, any binary, no escaping.
void putField(std::string& out, std::string_view tag, std::string_view bytes) {
  out += tag;
  out += ' ';
  out += std::to_string(bytes.size());
  out += '\n';
  out += bytes;
  out += '\n';
}

std::string utf16Bytes(u16v text) {
  std::string b;
  b.reserve(text.size() * 2);
  for (char16_t c : text) {
    b += static_cast<char>(c & 0xFF);
    b += static_cast<char>(c >> 8);
  }
  return b;
}

u16 fromUtf16Bytes(std::string_view b) {
  u16 t(b.size() / 2, u' ');
  for (size_t i = 0; i < t.size(); ++i)
    t[i] = static_cast<char16_t>(static_cast<unsigned char>(b[2 * i]) | static_cast<unsigned char>(b[2 * i + 1]) << 8);
  return t;
}

struct FieldReader {
  std::string_view rest;
  bool ok = true;

  bool next(std::string_view& tag, std::string_view& bytes) {
    if (rest.empty()) return false;
    const size_t blank = rest.find(' ');
    const size_t eol = rest.find('\n');
    if (blank == std::string_view::npos || eol == std::string_view::npos || blank > eol) return fail();
    tag = rest.substr(0, blank);
    char* end = nullptr;
    const std::string countText(rest.substr(blank + 1, eol - blank - 1));
    const unsigned long long n = std::strtoull(countText.c_str(), &end, 10);
    if (countText.empty() || *end != '\0' || n > rest.size() - eol - 1) return fail();
    bytes = rest.substr(eol + 1, n);
    if (eol + 1 + n >= rest.size() || rest[eol + 1 + n] != '\n') return fail();
    rest.remove_prefix(eol + 2 + n);
    return true;
  }
  bool fail() {
    ok = false;
    return false;
  }
};

long pidOfJournal(const std::string& file) {
  if (file.rfind(kPrefix, 0) != 0 || file.size() <= kPrefix.size() + kSuffix.size() ||
      file.compare(file.size() - kSuffix.size(), kSuffix.size(), kSuffix) != 0)
    return -1;
  const std::string digits = file.substr(kPrefix.size(), file.size() - kPrefix.size() - kSuffix.size());
  if (digits.find_first_not_of("0123456789") != std::string::npos) return -1;
  return std::atol(digits.c_str());
}

bool processRuns(long pid) { return pid > 0 && (::kill(static_cast<pid_t>(pid), 0) == 0 || errno != ESRCH); }

}  // namespace

std::string defaultJournalFolder() {
  std::string base;
  if (const char* d = std::getenv("QUILLON_STATE_DIR"); d && *d) base = d;
  else if (const char* x = std::getenv("XDG_STATE_HOME"); x && *x) base = std::string(x) + "/quillon";
  else if (const char* h = std::getenv("HOME"); h && *h) base = std::string(h) + "/.local/state/quillon";
  else return {};
  return base + "/journal";
}

std::string journalBytes(const std::vector<const MemoryDocument*>& docs) {
  std::string out(kMagic);
  for (const MemoryDocument* d : docs) {
    putField(out, "document", {});
    putField(out, "name", toUtf8(d->name));
    putField(out, "path", d->path);
    putField(out, "font", toUtf8(d->fontName));
    putField(out, "text", utf16Bytes(d->text()));
    const auto flags = d->italicFlags();
    putField(out, "italic", std::string_view(reinterpret_cast<const char*>(flags.data()), flags.size()));
    putField(out, "selection", std::to_string(d->selection().start) + " " + std::to_string(d->selection().end));
    for (const auto& [k, v] : d->customProperties) {
      putField(out, "custom-name", toUtf8(k));
      putField(out, "custom-value", toUtf8(v));
    }
    for (const auto& [k, v] : d->builtinProperties) {
      putField(out, "builtin-index", std::to_string(k));
      putField(out, "builtin-value", toUtf8(v));
    }
  }
  return out;
}

std::vector<std::unique_ptr<MemoryDocument>> documentsFromJournal(std::string_view bytes, bool& ok) {
  std::vector<std::unique_ptr<MemoryDocument>> docs;
  ok = bytes.substr(0, kMagic.size()) == kMagic;
  if (!ok) return docs;
  FieldReader r{bytes.substr(kMagic.size())};
  std::string_view tag, v;
  u16 pendingName;
  int pendingIndex = 0;
  std::string italics;
  auto finish = [&] {
    if (docs.empty()) return;
    MemoryDocument& d = *docs.back();
    for (long i = 0; i < d.length() && i < static_cast<long>(italics.size());) {
      long j = i;
      while (j < static_cast<long>(italics.size()) && j < d.length() && italics[j] == italics[i]) ++j;
      if (italics[i]) d.setItalic({i, j}, true);
      i = j;
    }
    italics.clear();
  };
  while (r.next(tag, v)) {
    if (tag == "document") {
      finish();
      docs.push_back(std::make_unique<MemoryDocument>());
      continue;
    }
    if (docs.empty()) {
      ok = false;
      return {};
    }
    MemoryDocument& d = *docs.back();
    if (tag == "name") d.name = fromUtf8(v);
    else if (tag == "path") d.path = std::string(v);
    else if (tag == "font") d.fontName = fromUtf8(v);
    else if (tag == "text") d.setText(fromUtf16Bytes(v));
    else if (tag == "italic") italics = std::string(v);
    else if (tag == "selection") {
      const std::string s(v);
      const size_t blank = s.find(' ');
      if (blank != std::string::npos) d.setSelection({std::atol(s.c_str()), std::atol(s.c_str() + blank + 1)});
    } else if (tag == "custom-name") pendingName = fromUtf8(v);
    else if (tag == "custom-value") d.customProperties.emplace_back(pendingName, fromUtf8(v));
    else if (tag == "builtin-index") pendingIndex = std::atoi(std::string(v).c_str());
    else if (tag == "builtin-value") d.builtinProperties.emplace_back(pendingIndex, fromUtf8(v));
  }
  finish();
  if (!r.ok) {
    ok = false;
    return {};
  }
  for (auto& d : docs) {
    d->undoClear();
    d->modified = true;  // recovered work has not been saved anywhere yet
  }
  return docs;
}

DocumentJournal::DocumentJournal(std::string folder) : folder_(std::move(folder)) {}

std::string DocumentJournal::path() const {
  if (folder_.empty()) return {};
  return folder_ + "/" + std::string(kPrefix) + std::to_string(::getpid()) + std::string(kSuffix);
}

bool DocumentJournal::write(const std::vector<const MemoryDocument*>& docs) {
  if (folder_.empty()) return true;
  if (docs.empty()) {
    remove();
    return true;
  }
  std::error_code ec;
  fs::create_directories(folder_, ec);
  return writeFile(path(), journalBytes(docs)).written;
}

void DocumentJournal::remove() {
  if (folder_.empty()) return;
  std::error_code ec;
  fs::remove(path(), ec);
}

std::vector<std::string> DocumentJournal::orphans() const {
  std::vector<std::pair<fs::file_time_type, std::string>> found;
  std::error_code ec;
  if (folder_.empty() || !fs::is_directory(folder_, ec)) return {};
  for (const auto& e : fs::directory_iterator(folder_, ec)) {
    const long pid = pidOfJournal(e.path().filename().string());
    if (pid < 0 || pid == ::getpid() || processRuns(pid)) continue;
    found.emplace_back(e.last_write_time(ec), e.path().string());
  }
  std::sort(found.begin(), found.end());
  std::vector<std::string> out;
  for (auto& f : found) out.push_back(std::move(f.second));
  return out;
}

std::vector<std::unique_ptr<MemoryDocument>> DocumentJournal::recoverOrphans() const {
  std::vector<std::unique_ptr<MemoryDocument>> docs;
  for (const auto& file : orphans()) {
    std::string bytes;
    if (!readWholeFile(file, bytes)) continue;
    bool ok = false;
    auto some = documentsFromJournal(bytes, ok);
    for (auto& d : some) docs.push_back(std::move(d));
  }
  return docs;
}

void DocumentJournal::discardOrphans() const {
  std::error_code ec;
  for (const auto& file : orphans()) fs::remove(file, ec);
}

}  // namespace quillon
