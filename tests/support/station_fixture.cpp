#include "support/station_fixture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "core/timecode.h"
#include "script/tag_grammar.h"

namespace quillon::testing {

TestStation::TestStation(int fps) : st(ui) {
  st.doc = &docs;
  st.s.g_fps = static_cast<int16_t>(fps);
  st.s.framePeriod = 1.0 / fps;
}

MemoryDocument& TestStation::open(std::u16string_view text) {
  auto d = std::make_unique<MemoryDocument>();
  d->setText(script(text));
  d->name = u"Script" + numberText(static_cast<double>(docs.documents().size() + 1)) + u".txt";
  return docs.addDocument(std::move(d));
}

std::u16string script(std::u16string_view text) {
  std::u16string out(text);
  for (auto& c : out)
    if (c == u'\n') c = CR;
  return out;
}

std::u16string generatedSubtitleScript(int count, int fps) {
  std::u16string out;
  out.reserve(static_cast<size_t>(count) * 90);
  for (int i = 0; i < count; ++i) {
    double in = 10.0 + 4.0 * i;
    out += subtitleTag(i % 10, u' ', u'N', in, in + 3.0, fps);
    out += u"Line one of subtitle " + numberText(i + 1) + u"\r";
    out += u"and its second line\r\r";
  }
  return out;
}

std::string readFile(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  std::stringstream ss;
  ss << f.rdbuf();
  return ss.str();
}

std::string tempDir(const std::string& name) {
  const char* base = std::getenv("TMPDIR");
  std::filesystem::path p = std::filesystem::path(base && *base ? base : "/tmp") /
                            ("quillon-test-" + std::to_string(::getpid()) + "-" + name);
  std::filesystem::remove_all(p);
  std::filesystem::create_directories(p);
  return p.string();
}

}  // namespace quillon::testing
