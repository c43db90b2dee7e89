#include "formats_fixture.h"

#include <cstdlib>
#include <fstream>

#include "script/tag_grammar.h"

namespace quillon::testing {

std::string goldenPath(const std::string& name) {
  return std::string(QUILLON_SOURCE_DIR) + "/tests/formats/golden/" + name;
}

::testing::AssertionResult matchesGolden(const std::string& name, const std::string& actual) {
  const std::string path = goldenPath(name);
  if (std::getenv("QUILLON_UPDATE_GOLDEN")) {
    std::ofstream(path, std::ios::binary) << actual;
    return ::testing::AssertionSuccess() << "rewrote " << path;
  }
  if (readFile(path) == actual && !actual.empty()) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << name << " differs from " << path;
}

const std::u16string& sampleScript() {
  static const std::u16string text = fromUtf8(readFile(goldenPath("sample_script.txt")));
  return text;
}

std::u16string numberedScript(int count, int fps) {
  std::u16string out;
  for (int i = 1; i <= count; ++i) {
    double in = 3.0 * i;
    out += subtitleTag(0, u' ', u'N', in, in + 2.0, fps);
    out += u"Subtitle " + numberText(i) + u"\r\r";
  }
  return out + u"SUB[\r";
}

}  // namespace quillon::testing
