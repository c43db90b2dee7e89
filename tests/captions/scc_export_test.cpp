#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "captions/caption_checks.h"
#include "captions/scc_export.h"
#include "captions/scc_preflight.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

const std::string kHead = "Scenarist_SCC V1.0\r\n\r\n";

// Each data line with its empty line behind.
std::string lines(std::initializer_list<const char*> ls) {
  std::string out;
  for (const char* l : ls) out += std::string(l) + "\r\n\r\n";
  return out;
}

struct SccExport : ::testing::Test {
  testing::TestStation ts;
  void SetUp() override { installCaptionChecks(ts.st); }
  std::string scc(std::u16string_view script) {
    ts.open(script);
    EXPECT_TRUE(scanCaptions(ts.st, ScanMode::WholeScript));
    return sccText(ts.st);
  }
};

TEST_F(SccExport, TwoCaptionsOneSecondApartShareNoClear) {
  EXPECT_EQ(scc(u"CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n\n"
                u"CAP[0NC 00:00:13:00>00:00:15:00]\nYes\n\n"
                u"CAP[0NC 00:00:20:00>00:00:22:00]\nNo\n"),
            kHead + lines({"00:00:05:00\t942c", "00:00:09:27\t9420 94f8 c8e9 a180 942c 8080 8080 942f",
                           "00:00:12:27\t9420 94f8 d9e5 7380 942c 8080 8080 942f", "00:00:15:00\t942c",
                           "00:00:19:28\t9420 94f8 ceef 942c 8080 8080 942f", "00:00:22:00\t942c"}));
  EXPECT_TRUE(ts.ui.boxes.empty());
  EXPECT_EQ(ts.st.view.panel(3).text, u"");
}

// One caption each, the clear before, the load and the clear at its cue-out.
TEST_F(SccExport, PacPlacesEachRow) {
  const struct {
    const char* name;
    const char16_t* script;
    std::string lines;
    std::vector<u16> boxes;
  } cases[] = {
      {"italics follow every row's PAC", u"CAP[0IL 00:00:10:00>00:00:12:00]\nAh\nOh!\n",
       lines({"00:00:05:00\t942c", "00:00:09:27\t9420 94d0 91ae c168 9470 91ae 4f68 a180 942c 8080 8080 942f",
              "00:00:12:00\t942c"})},
      {"right alignment indents by the longest row", u"CAP[2NR 00:00:30:00>00:00:33:00]\nRight side\nok\n",
       lines({"00:00:25:00\t942c",
              "00:00:29:20\t9420 137a 52e9 6768 f420 73e9 64e5 94da ef6b 942c 8080 8080 942f",
              "00:00:33:00\t942c"})},
      {"four rows at position 1 take rows 11 to 14", u"CAP[1NC 00:00:10:00>00:00:14:00]\nA\nBB\nCCC\nDDDD\n",
       lines({"00:00:05:00\t942c",
              "00:00:09:26\t9420 1058 c180 1358 c2c2 13f8 4343 4380 9458 c4c4 c4c4 942c 8080 8080 942f",
              "00:00:14:00\t942c"})},
      {"a position out of range reports and leaves the PAC out", u"CAP[FNC 00:00:10:00>00:00:12:00]\nHi!\n",
       lines({"00:00:05:00\t942c", "00:00:09:27\t9420  c8e9 a180 942c 8080 8080 942f", "00:00:12:00\t942c"}),
       {u"RANGE ERROR IN FIRSTBYTE"}},
      {"an early first caption clears at time zero", u"CAP[0NL 00:00:02:00>00:00:04:00]\nHi\n",
       lines({"00:00:00:00\t942c", "00:00:01:28\t9420 9470 c8e9 942c 8080 8080 942f", "00:00:04:00\t942c"})},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ts.ui.boxes.clear();
    EXPECT_EQ(scc(c.script), kHead + c.lines);
    EXPECT_EQ(ts.ui.boxTexts(), c.boxes);
  }
}

TEST_F(SccExport, PaintOnWriterLoadsAtTheCueIn) {
  ts.open(u"CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n\n"
          u"CAP[0NC 00:00:13:00>00:00:15:00]\nYes\n\n"
          u"CAP[0NC 00:00:20:00>00:00:22:00]\nNo\n");
  ASSERT_TRUE(scanCaptions(ts.st, ScanMode::WholeScript));
  EXPECT_EQ(sccWithPaintOn(ts.st),
            kHead + lines({"00:00:10:00\t942C  9429 94f8 c8e9 a180 942c 8080 8080 942f", "00:00:12:00\t942c",
                           "00:00:13:00\t9420 94f8 d9e5 7380 942c 8080 8080 942f", "00:00:15:00\t942c",
                           "00:00:20:00\t9420 94f8 ceef 942c 8080 8080 942f", "00:00:22:00\t942c"}));
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
