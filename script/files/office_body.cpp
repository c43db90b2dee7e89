#include "script/files/office_body.h"

#include <algorithm>

namespace quillon::docfiles {

std::vector<ParagraphText> fileSafe(std::vector<ParagraphText> paragraphs, char16_t (*control)(char16_t)) {
  for (auto& p : paragraphs) {
    ParagraphText clean;
    clean.text.reserve(p.text.size());
    for (size_t i = 0; i < p.text.size(); ++i) {
      char16_t c = p.text[i];
      if (c < 0x20) c = control(c);
      bool keep = c != 0 && c != 0xFFFE && c != 0xFFFF;
      if (c >= 0xD800 && c <= 0xDBFF) {
        if (i + 1 < p.text.size() && p.text[i + 1] >= 0xDC00 && p.text[i + 1] <= 0xDFFF) {
          clean.text += c;
          clean.italic.push_back(p.italic[i]);
          c = p.text[++i];
        } else {
          keep = false;
        }
      } else if (c >= 0xDC00 && c <= 0xDFFF) {
        keep = false;
      }
      if (!keep) continue;
      clean.text += c;
      clean.italic.push_back(p.italic[i]);
    }
    p = std::move(clean);
  }
  return paragraphs;
}

size_t keptWithin(const ParagraphText& old, const ParagraphText& now) {
  if (now.text.size() < old.text.size()) return u16::npos;
  auto fits = [&](size_t at) {
    return now.text.compare(at, old.text.size(), old.text) == 0 &&
           std::equal(old.italic.begin(), old.italic.end(), now.italic.begin() + static_cast<long>(at));
  };
  const size_t front = now.text.size() - old.text.size();
  if (fits(front)) return front;
  if (fits(0)) return 0;
  for (size_t at = now.text.find(old.text); at != u16::npos; at = now.text.find(old.text, at + 1))
    if (fits(at)) return at;
  return u16::npos;
}

}  // namespace quillon::docfiles
