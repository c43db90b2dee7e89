#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "captions/caption_checks.h"
#include "captions/scc_export.h"
#include "captions/scc_preflight.h"
#include "script/tag_grammar.h"
#include "golden.h"
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
// caption at its cue-in. Bytes carry odd parity.
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
  };
  std::string all;
  for (const auto& [name, script] : cases) {
    ts.ui.boxes.clear();
    ts.open(script);
    EXPECT_TRUE(scanCaptions(ts.st, ScanMode::WholeScript)) << name;
    all += std::string("# ") + name + "\r\n" + sccText(ts.st);
    for (const u16& box : ts.ui.boxTexts()) all += "box: " + toUtf8(box) + "\r\n";
    if (name == std::string("three captions")) all += "# paint-on\r\n" + sccWithPaintOn(ts.st);
  }
  EXPECT_TRUE(testing::matchesCaptionGolden("scc_cases.txt", all));
  EXPECT_EQ(ts.st.view.panel(3).text, u"");
}

// Four rows of twenty characters: 49 words sent from 20 frames ahead.
const std::u16string kHeavy = u"CAP[0NC 00:00:10:00>00:00:11:00]\nABCDEFGHIJKLMNOPQRST\nABCDEFGHIJKLMNOPQRST\n"
                         u"ABCDEFGHIJKLMNOPQRST\nABCDEFGHIJKLMNOPQRST\n\n";

// One word a frame from each line's own time, or from the end of the line
// before: the end-of-caption word against the cue-in, warned of in one box.
TEST_F(SccExport, PreflightWarnsOfTheCaptionsAnEncoderPlaysLate) {
  const u16 head = u"Warning: An SCC encoder sends one word of caption data a frame, so these captions will come on late:";
  const struct {
    const char* name;
    std::u16string script;
    std::vector<u16> boxes;
  } cases[] = {
      {"three characters: 8 words from 3 frames ahead", u"CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n",
       {head + u"\r[00:00:10:00] 4 frames late"}},
      {"nineteen characters: 16 words from 19 frames ahead", u"CAP[0NC 00:00:10:00>00:00:12:00]\nLong enough to load\n",
       {}},
      {"a line waits for the one before, which makes it late too",
       kHeavy + u"CAP[0NC 00:00:11:00>00:00:13:00]\nLong enough to load\n\n"
                u"CAP[0NC 00:00:20:00>00:00:22:00]\nLong enough to load\n",
       {head + u"\r[00:00:10:00] 28 frames late\r[00:00:11:00] 14 frames late"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ts.ui.boxes.clear();
    ts.open(c.script);
    ASSERT_TRUE(scanCaptions(ts.st, ScanMode::WholeScript));
    warnLateSccCaptions(ts.st);
    EXPECT_EQ(ts.ui.boxTexts(), c.boxes);
  }
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

}  // namespace
}  // namespace quillon
