// An SCC file the station writes, read back by FFmpeg and by ttconv where
// they are installed: the caption texts must come through intact.
#include <gtest/gtest.h>

#include <cstdlib>

#include "captions/caption_checks.h"
#include "captions/scc_export.h"
#include "core/atomic_file.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

bool installed(const std::string& tool) { return std::system(("command -v " + tool + " >/dev/null 2>&1").c_str()) == 0; }

const char16_t kScript[] =
    u"CAP[0NC 00:00:10:00>00:00:12:00]\ncaf\u00e9 au lait\n\n"
    u"CAP[0IL 00:00:14:00>00:00:16:00]\n\u00bfQu\u00e9?\n\n"
    u"CAP[3NR 00:00:18:00>00:00:20:00]\nRow one\nRow two\nRow three\n";
const char* const kTexts[] = {"caf\xc3\xa9 au lait", "\xc2\xbfQu\xc3\xa9?", "Row one", "Row two", "Row three"};

struct SccReaders : ::testing::Test {
  std::string dir = testing::tempDir("scc-readers");
  std::string scc = dir + "/captions.scc";
  void SetUp() override {
    testing::TestStation ts;
    installCaptionChecks(ts.st);
    ts.open(kScript);
    ASSERT_TRUE(scanCaptions(ts.st, ScanMode::WholeScript));
    ASSERT_TRUE(writeSccFile(ts.st, scc));
  }
  void expectTexts(const std::string& srt) {
    for (const char* t : kTexts) EXPECT_NE(srt.find(t), std::string::npos) << t << " missing from:\n" << srt;
  }
};

TEST_F(SccReaders, FfmpegReadsTheCaptionTexts) {
  if (!installed("ffmpeg")) GTEST_SKIP() << "ffmpeg is not installed";
  const std::string srt = dir + "/ffmpeg.srt";
  ASSERT_EQ(std::system(("ffmpeg -nostdin -v error -y -f scc -i '" + scc + "' '" + srt + "'").c_str()), 0);
  expectTexts(testing::readFile(srt));
}

TEST_F(SccReaders, TtconvReadsTheCaptionTexts) {
  if (!installed("ttconv")) GTEST_SKIP() << "ttconv is not installed";
  const std::string srt = dir + "/ttconv.srt";
  ASSERT_EQ(std::system(("ttconv convert -i '" + scc + "' -o '" + srt + "' >/dev/null 2>&1").c_str()), 0);
  const std::string text = testing::readFile(srt);
  expectTexts(text);
  EXPECT_NE(text.find("<i>"), std::string::npos) << "the italic caption lost its style";
}

}  // namespace
}  // namespace quillon
