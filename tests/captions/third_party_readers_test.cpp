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

TEST(SccReaders, FfmpegAndTtconvReadTheCaptionTexts) {
  const std::string dir = testing::tempDir("scc-readers"), scc = dir + "/captions.scc";
  testing::TestStation ts;
  installCaptionChecks(ts.st);
  ts.open(kScript);
  ASSERT_TRUE(scanCaptions(ts.st, ScanMode::WholeScript));
  ASSERT_TRUE(writeSccFile(ts.st, scc));
  const std::pair<const char*, std::string> readers[] = {
      {"ffmpeg", "ffmpeg -nostdin -v error -y -f scc -i '" + scc + "' '" + dir + "/out.srt'"},
      {"ttconv", "ttconv convert -i '" + scc + "' -o '" + dir + "/out.srt' >/dev/null 2>&1"},
  };
  int ran = 0;
  for (const auto& [tool, command] : readers) {
    if (!installed(tool)) continue;
    ++ran;
    ASSERT_EQ(std::system(command.c_str()), 0) << tool;
    const std::string srt = testing::readFile(dir + "/out.srt");
    for (const char* t : kTexts) EXPECT_NE(srt.find(t), std::string::npos) << tool << ": " << t << " missing from:\n" << srt;
    // FFmpeg drops the style; ttconv keeps the italic caption's.
    if (std::string(tool) == "ttconv") {
      EXPECT_NE(srt.find("<i>"), std::string::npos);
    }
  }
  if (ran == 0) GTEST_SKIP() << "neither ffmpeg nor ttconv is installed";
}

}  // namespace
}  // namespace quillon
