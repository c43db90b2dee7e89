#include "transport/file_tag.h"

#include <fstream>

#include "core/session.h"
#include "core/timecode.h"
#include "core/view_state.h"

namespace quillon {

namespace {

constexpr long kTagLength = 18;
// The field starts this many bytes before the end of the file, 1-based.
constexpr long long kTagOffsetFromEnd = 20;

bool isBlank(char c) { return c == ' ' || c == '\t'; }

u16 pairsWithColons(u16v digits8) {
  return mid(digits8, 1, 2) + u":" + mid(digits8, 3, 2) + u":" + mid(digits8, 5, 2) + u":" + mid(digits8, 7, 2);
}

}  // namespace

std::string delimitedField(std::string_view b) {
  size_t i = 0;
  while (i < b.size() && isBlank(b[i])) ++i;
  if (i < b.size() && b[i] == '"') {
    size_t close = b.find('"', i + 1);
    return std::string(b.substr(i + 1, close == std::string_view::npos ? std::string_view::npos : close - i - 1));
  }
  size_t end = b.find_first_of(",\r\n", i);
  std::string field(b.substr(i, end == std::string_view::npos ? std::string_view::npos : end - i));
  while (!field.empty() && isBlank(field.back())) field.pop_back();
  return field;
}

std::optional<u16> readFileTag(const std::string& path) {
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  if (!in) return std::nullopt;
  const long long length = in.tellg();
  const long long start1 = length - kTagOffsetFromEnd;
  if (length < 0 || start1 < 1) return u16();
  std::string tail(static_cast<size_t>(length - (start1 - 1)), '\0');
  in.seekg(start1 - 1);
  if (!in.read(tail.data(), static_cast<std::streamsize>(tail.size()))) return u16();
  return left(fromLatin1(delimitedField(tail)), kTagLength);
}

int16_t fileTagFps(u16v tag) {
  const u16 standard = left(tag, 1);
  if (standard == u"C") return 24;
  if (standard == u"P") return 25;
  return 30;
}

void applyFileTag(Session& s, ViewState& view, u16v tag) {
  s.TCInitial = pairsWithColons(mid(tag, 3, 8));
  s.TCFinal = pairsWithColons(mid(tag, 11, 8));
  s.TCBase = TCaFRAMES(s.TCInitial, s.g_fps);
  s.g_fps = fileTagFps(tag);
  view.menu("mnu_CINE").checked = s.g_fps == 24;
  view.menu("mnu_PAL").checked = s.g_fps == 25;
  view.menu("mnu_NTSC").checked = s.g_fps == 30;
}

}  // namespace quillon
