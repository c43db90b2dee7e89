#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/wait.h>

#include "captions/caption_checks.h"
#include "captions/scc_export.h"
#include "captions/scc_preflight.h"
#include "golden.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

struct SccExport : ::testing::Test {
  testing::TestStation ts;
  void SetUp() override { installCaptionChecks(ts.st); }
};

// Each script's file under its name, and the boxes the export showed.
// Captions one second apart share no clear; italics follow every row's PAC;
// right alignment indents by the longest row; four rows at position 1 take
// rows 11 to 14; a position out of range reports and leaves the PAC out; an
// early first caption clears at time zero. The paint-on writer loads each
// caption at its cue-in. Bytes carry odd parity. The boxes include the
// warning of the captions an encoder plays late, sending one word a frame
// from each line's own time or from the end of the line before: three
// characters are 8 words from 3 frames ahead, nineteen are 16 words from 19
// frames ahead, and four rows of twenty are 49 words from 20 frames ahead,
// which makes the next caption late too.
TEST_F(SccExport, ScriptsMatchTheGoldenFile) {
  const std::pair<const char*, const char16_t*> cases[] = {
      {"three captions", u"CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n\nCAP[0NC 00:00:13:00>00:00:15:00]\nYes\n\n"
                         u"CAP[0NC 00:00:20:00>00:00:22:00]\nNo\n"},
      {"italics", u"CAP[0IL 00:00:10:00>00:00:12:00]\nAh\nOh!\n"},
      {"right", u"CAP[2NR 00:00:30:00>00:00:33:00]\nRight side\nok\n"},
      {"four rows", u"CAP[1NC 00:00:10:00>00:00:14:00]\nA\nBB\nCCC\nDDDD\n"},
      {"out of range", u"CAP[FNC 00:00:10:00>00:00:12:00]\nHi!\n"},
      {"early", u"CAP[0NL 00:00:02:00>00:00:04:00]\nHi\n"},
      // Specials and extended characters take two bytes, not aligned to the
      // pairs; á is '*', which is not mapped again; œ has no code.
      {"characters", u"CAP[0NL 00:00:40:00>00:00:43:00]\ncaf\u00e9_'\u00e1*\u00ae\u00bf\u00c1\u00fb{|}~\\^\n"
                     u"a\u00b0\u00c4\u00df\u00f8\u00d1\u00f1\u00e7\u00f7\u0153 i\n"},
      {"nineteen characters", u"CAP[0NC 00:00:10:00>00:00:12:00]\nLong enough to load\n"},
      {"heavy", u"CAP[0NC 00:00:10:00>00:00:11:00]\nABCDEFGHIJKLMNOPQRST\nABCDEFGHIJKLMNOPQRST\nABCDEFGHIJKLMNOPQRST\n"
                u"ABCDEFGHIJKLMNOPQRST\n\nCAP[0NC 00:00:11:00>00:00:13:00]\nLong enough to load\n\n"
                u"CAP[0NC 00:00:20:00>00:00:22:00]\nLong enough to load\n"},
  };
  std::string all;
  for (const auto& [name, script] : cases) {
    ts.ui.boxes.clear();
    ts.open(script);
    EXPECT_TRUE(scanCaptions(ts.st, ScanMode::WholeScript)) << name;
    all += std::string("# ") + name + "\r\n" + sccText(ts.st);
    warnLateSccCaptions(ts.st);
    for (const u16& box : ts.ui.boxTexts()) all += "box: " + toUtf8(box) + "\r\n";
    if (name == std::string("three captions")) all += "# paint-on\r\n" + sccWithPaintOn(ts.st);
  }
  EXPECT_TRUE(testing::matchesCaptionGolden("scc_cases.txt", all));
  EXPECT_EQ(ts.st.view.panel(3).text, u"");
}

struct SccCommand : SccExport {
  std::string dir = testing::tempDir("scc-command");
};

// Late captions are a warning: the file is written all the same.
TEST_F(SccCommand, WritesTheChosenFileAfterTheLateWarning) {
  ts.open(u"CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n");
  const std::string path = dir + "/out.scc";
  ts.ui.savePaths.push_back(path);
  EXPECT_TRUE(mnu_cc_scc(ts.st));
  ASSERT_EQ(ts.ui.saveRequests.size(), 1u);
  EXPECT_EQ(ts.ui.saveRequests[0].defaultName, u"Script1.scc");
  ASSERT_EQ(ts.ui.boxes.size(), 1u);
  EXPECT_EQ(ts.ui.lastBox().icon, Icon::Exclamation);
  EXPECT_EQ(testing::readFile(path), sccText(ts.st));
}

TEST_F(SccCommand, AnExistingFileIsReplacedOnlyOnYes) {
  ts.open(u"CAP[0NC 00:00:10:00>00:00:12:00]\nLong enough to load\n");
  const std::string path = dir + "/old.scc";
  std::ofstream(path) << "old";
  ts.ui.savePaths.push_back(path);
  ts.ui.answers.push_back(Answer::No);
  // No reopens the dialog, which is then cancelled.
  EXPECT_FALSE(mnu_cc_scc(ts.st));
  EXPECT_EQ(testing::readFile(path), "old");
  ASSERT_EQ(ts.ui.boxes.size(), 1u);
  EXPECT_EQ(ts.ui.lastBox().text, u16(u"Do you want to replace the existing ") + fromUtf8(path) + u"?");
  EXPECT_EQ(ts.ui.lastBox().title, u"Create .scc file");
  EXPECT_EQ(ts.ui.lastBox().buttons, Buttons::YesNo);

  ts.ui.savePaths.push_back(path);
  ts.ui.answers.push_back(Answer::Yes);
  EXPECT_TRUE(mnu_cc_scc(ts.st));
  EXPECT_EQ(testing::readFile(path).substr(0, 18), "Scenarist_SCC V1.0");
}

TEST_F(SccCommand, AScanFaultWritesNothing) {
  ts.open(u"CAP[0NC 00:00:10:00>00:00:30:00]\nToo long\n");
  const std::string path = dir + "/never.scc";
  ts.ui.savePaths.push_back(path);
  EXPECT_FALSE(mnu_cc_scc(ts.st));
  EXPECT_TRUE(ts.ui.saveRequests.empty());
  EXPECT_FALSE(std::filesystem::exists(path));
}

// The station's SCC file read back by FFmpeg and by ttconv where they are
// installed: the caption texts must come through intact.
bool installed(const std::string& tool) { return std::system(("command -v " + tool + " >/dev/null 2>&1").c_str()) == 0; }

const char16_t kScript[] =
    u"CAP[0NC 00:00:10:00>00:00:12:00]\ncaf\u00e9 au lait\n\n"
    u"CAP[0IL 00:00:14:00>00:00:16:00]\n\u00bfQu\u00e9?\n\n"
    u"CAP[3NR 00:00:18:00>00:00:20:00]\nRow one\nRow two\nRow three\n";
const char* const kTexts[] = {"caf\xc3\xa9 au lait", "\xc2\xbfQu\xc3\xa9?", "Row one", "Row two", "Row three"};

TEST_F(SccExport, FfmpegAndTtconvReadTheCaptionTexts) {
  const std::string dir = testing::tempDir("scc-readers"), scc = dir + "/captions.scc";
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

// `quillon-cli export scc` and `export ult` write what the station writes.
int run(const std::string& args) {
  int st = std::system((std::string(QUILLON_CLI_PATH) + " " + args + " 2>/dev/null").c_str());
  return WIFEXITED(st) ? WEXITSTATUS(st) : -1;
}

TEST(CliExport, SccFileOnTheAnswerAndUltRefusals) {
  if (!std::filesystem::exists(QUILLON_CLI_PATH)) GTEST_SKIP() << "quillon-cli is not built";
  const std::string dir = testing::tempDir("cli-export"), script = dir + "/captions.txt";
  std::ofstream(script, std::ios::binary) << "CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n";
  const std::string scc = dir + "/out.scc";
  std::ofstream(scc) << "keep";
  EXPECT_EQ(run("export scc --answer no '" + script + "' -o '" + scc + "'"), 1);
  EXPECT_EQ(testing::readFile(scc), "keep");
  ASSERT_EQ(run("export scc --answer yes '" + script + "' -o '" + scc + "'"), 0);
  EXPECT_EQ(testing::readFile(scc),
            "Scenarist_SCC V1.0\r\n\r\n00:00:05:00\t942c\r\n\r\n"
            "00:00:09:27\t9420 94f8 c8e9 a180 942c 8080 8080 942f\r\n\r\n00:00:12:00\t942c\r\n\r\n");

  EXPECT_EQ(run("export ult --field Nonsense=1 '" + script + "' -o '" + dir + "/x.ult'"), 2);
  EXPECT_EQ(run("export ult '" + script + "' -o '" + dir + "/x.ULT'"), 1);
}

}  // namespace
}  // namespace quillon
