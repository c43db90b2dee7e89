#include "script/files/office_source.h"

#include <cstdio>

namespace quillon::docfiles {

namespace {
// Its type marks a source as this library's.
struct OfficeSourceDeleter {
  void operator()(void* p) const { delete static_cast<OfficeSource*>(p); }
};

bool readDigits(const std::string& s, size_t at, size_t n, int& out) {
  if (at + n > s.size()) return false;
  out = 0;
  for (size_t i = at; i < at + n; ++i) {
    if (s[i] < '0' || s[i] > '9') return false;
    out = out * 10 + (s[i] - '0');
  }
  return true;
}

// "YYYY-MM-DD" at the start of `s`.
bool readDate(const std::string& s, int& y, int& mo, int& d) {
  return readDigits(s, 0, 4, y) && s.size() >= 10 && s[4] == '-' && readDigits(s, 5, 2, mo) && s[7] == '-' &&
         readDigits(s, 8, 2, d);
}

struct tm calendarTime(int y, int mo, int d, int h, int mi, int se) {
  struct tm tmv {};
  tmv.tm_year = y - 1900;
  tmv.tm_mon = mo - 1;
  tmv.tm_mday = d;
  tmv.tm_hour = h;
  tmv.tm_min = mi;
  tmv.tm_sec = se;
  return tmv;
}

std::string isoTime(const struct tm& tmv, const char* zone) {
  char buf[80];
  std::snprintf(buf, sizeof buf, "%04d-%02d-%02dT%02d:%02d:%02d%s", tmv.tm_year + 1900, tmv.tm_mon + 1, tmv.tm_mday,
                tmv.tm_hour, tmv.tm_min, tmv.tm_sec, zone);
  return buf;
}
}  // namespace

void attachSource(MemoryDocument& doc, OfficeSource source) {
  OfficeSource* raw = new OfficeSource(std::move(source));
  doc.sourcePackage = std::shared_ptr<void>(raw, OfficeSourceDeleter{});
}

const OfficeSource* sourceOf(const MemoryDocument& doc, OfficeKind kind) {
  if (!doc.sourcePackage || !std::get_deleter<OfficeSourceDeleter>(doc.sourcePackage)) return nullptr;
  auto* s = static_cast<const OfficeSource*>(doc.sourcePackage.get());
  return s->kind == kind ? s : nullptr;
}

std::unique_ptr<MemoryDocument> loadedDocument(
    OfficeSource source, const std::vector<pugi::xml_node>& nodes,
    const std::function<ParagraphText(pugi::xml_node)>& readParagraph,
    const std::function<bool(const ZipPackage& package, MemoryDocument& doc)>& readProperties) {
  source.paragraphs.reserve(nodes.size());
  for (pugi::xml_node p : nodes) source.paragraphs.push_back(readParagraph(p));
  if (source.paragraphs.empty()) source.paragraphs.emplace_back();
  auto doc = documentFrom(source.paragraphs);
  if (!readProperties(source.package, *doc)) return nullptr;
  attachSource(*doc, std::move(source));
  return doc;
}

std::unique_ptr<MemoryDocument> documentFrom(const std::vector<ParagraphText>& paragraphs) {
  u16 text;
  std::vector<uint8_t> flags;
  size_t total = 0;
  for (const auto& p : paragraphs) total += p.text.size() + 1;
  text.reserve(total);
  flags.reserve(total);
  for (const auto& p : paragraphs) {
    text += p.text;
    text += CR;
    flags.insert(flags.end(), p.italic.begin(), p.italic.end());
    flags.push_back(0);
  }
  auto doc = std::make_unique<MemoryDocument>();
  doc->setText(text);
  // Italic runs in one pass each; setText left everything upright.
  long n = static_cast<long>(flags.size());
  for (long i = 0; i < n;) {
    if (!flags[static_cast<size_t>(i)]) {
      ++i;
      continue;
    }
    long j = i;
    while (j < n && flags[static_cast<size_t>(j)]) ++j;
    doc->setItalic({i, j}, true);
    i = j;
  }
  doc->modified = false;
  return doc;
}

void appendFileText(ParagraphText& p, u16v text, bool italic) {
  for (char16_t c : text) p.text += (c == u'\r' || c == u'\n') ? u' ' : c;
  p.italic.insert(p.italic.end(), text.size(), italic ? 1 : 0);
}

std::optional<time_t> parseStationTime(u16v text) {
  std::string s = toUtf8(text);
  int y, mo, d, h = 0, mi = 0, se = 0;
  if (!readDate(s, y, mo, d)) return std::nullopt;
  if (s.size() >= 19 && (s[10] == ' ' || s[10] == 'T')) {
    if (!readDigits(s, 11, 2, h) || !readDigits(s, 14, 2, mi) || !readDigits(s, 17, 2, se)) return std::nullopt;
  }
  struct tm tmv = calendarTime(y, mo, d, h, mi, se);
  tmv.tm_isdst = -1;
  time_t t = mktime(&tmv);
  if (t == static_cast<time_t>(-1)) return std::nullopt;
  return t;
}

u16 stationTimeFromFile(const std::string& s) {
  int y, mo, d, h = 0, mi = 0, se = 0;
  if (!readDate(s, y, mo, d)) return {};
  size_t at = 10;
  if (s.size() > 10 && s[10] == 'T') {
    if (!readDigits(s, 11, 2, h) || s[13] != ':' || !readDigits(s, 14, 2, mi)) return {};
    at = 16;
    if (s.size() >= 19 && s[16] == ':') {
      if (!readDigits(s, 17, 2, se)) return {};
      at = 19;
    }
    if (at < s.size() && s[at] == '.')
      while (++at < s.size() && s[at] >= '0' && s[at] <= '9') {
      }
  }
  struct tm tmv = calendarTime(y, mo, d, h, mi, se);
  if (at >= s.size()) {
    tmv.tm_isdst = -1;
    time_t t = mktime(&tmv);
    return t == static_cast<time_t>(-1) ? u16{} : stationTime(t);
  }
  long offset = 0;
  if (s[at] == '+' || s[at] == '-') {
    int oh, om;
    if (!readDigits(s, at + 1, 2, oh) || at + 3 >= s.size() || s[at + 3] != ':' || !readDigits(s, at + 4, 2, om))
      return {};
    offset = (s[at] == '-' ? -1 : 1) * (oh * 3600L + om * 60L);
  } else if (s[at] != 'Z') {
    return {};
  }
  return stationTime(timegm(&tmv) - offset);
}

std::string utcFileTime(time_t t) {
  struct tm tmv {};
  gmtime_r(&t, &tmv);
  return isoTime(tmv, "Z");
}

std::string localFileTime(time_t t) {
  struct tm tmv {};
  localtime_r(&t, &tmv);
  return isoTime(tmv, "");
}

void setBuiltin(MemoryDocument& doc, int index, const u16& value) {
  for (auto& [k, v] : doc.builtinProperties)
    if (k == index) {
      v = value;
      return;
    }
  doc.builtinProperties.emplace_back(index, value);
}

std::optional<u16> builtinOf(const MemoryDocument& doc, int index) {
  for (const auto& [k, v] : doc.builtinProperties)
    if (k == index) return v;
  return std::nullopt;
}

}  // namespace quillon::docfiles
