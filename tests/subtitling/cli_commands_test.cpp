#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

struct CliRun {
  int exit;
  std::string out, err;
};

struct SubtitlingCli : ::testing::Test {
  std::string dir;
  void SetUp() override {
    if (!std::filesystem::exists(QUILLON_CLI_PATH)) GTEST_SKIP() << "quillon-cli not built";
    dir = tempDir("subtitling-cli");
  }
  std::string file(const std::string& name, const std::string& bytes) {
    std::string p = dir + "/" + name;
    std::ofstream(p, std::ios::binary) << bytes;
    return p;
  }
  CliRun run(const std::string& args) {
    std::string cmd = std::string(QUILLON_CLI_PATH) + " " + args + " >" + dir + "/out 2>" + dir + "/err";
    int rc = std::system(cmd.c_str());
    return {WEXITSTATUS(rc), readFile(dir + "/out"), readFile(dir + "/err")};
  }
};

const std::string kOverlap =
    "SUB[0 N 00:00:01:00>00:00:04:00]\nFirst\n\n"
    "SUB[0 N 00:00:03:00>00:00:06:00]\nSecond\n\n";

TEST_F(SubtitlingCli, CheckReportsACueInInsideThePreviousSubtitle) {
  CliRun r = run("check " + file("overlap.txt", kOverlap));
  EXPECT_EQ(r.exit, 1);
  EXPECT_NE(r.err.find("QUILLON: Time code sequence error in [00:00:03:00]\nCue-in for:\n\nSecond"),
            std::string::npos)
      << r.err;
  CliRun clean = run("check " + file("clean.txt", "SUB[0 N 00:00:01:00>00:00:03:00]\nFirst\n\n"));
  EXPECT_EQ(clean.exit, 0);
  EXPECT_TRUE(clean.err.empty()) << clean.err;
  EXPECT_EQ(run("check " + file("untimed.txt", "Nothing timed yet\n")).exit, 0);
}

TEST_F(SubtitlingCli, CheckWithAnswerNoStopsAtTheFirstBox) {
  std::string s = kOverlap + "SUB[0 N 00:00:05:00>00:00:08:00]\nThird\n\n";
  CliRun r = run("check --answer no " + file("two.txt", s));
  EXPECT_EQ(r.exit, 1);
  EXPECT_EQ(r.err.find("QUILLON:"), r.err.rfind("QUILLON:"));
}

TEST_F(SubtitlingCli, RetimeAndInterleaveWriteTheScript) {
  std::string in = file("in.txt", kOverlap + "DUB[\n");
  CliRun r = run("retime --offset 00:01:00:00 " + in + " -o " + dir + "/moved.txt");
  EXPECT_EQ(r.exit, 0);
  EXPECT_EQ(readFile(dir + "/moved.txt"),
            "SUB[0 N 00:01:00:00>00:01:03:00]\nFirst\n\nSUB[0 N 00:01:02:00>00:01:05:00]\nSecond\n\nDUB[\n");

  r = run("retime --pal-to-ntsc --new-document " + file("pal.txt", "SUB[0 N 00:00:01:12>00:00:03:00]\nA\n\nDUB[\n") +
          " -o " + dir + "/ntsc.txt");
  EXPECT_EQ(r.exit, 0);
  EXPECT_EQ(readFile(dir + "/ntsc.txt"), "SUB[0 N 00:00:01:14>00:00:03:00]\nA\n\n\n");

  r = run("interleave --param minInterleave=2 " + in + " -o " + dir + "/gaps.txt");
  EXPECT_EQ(r.exit, 0);
  EXPECT_EQ(readFile(dir + "/gaps.txt"),
            "SUB[0 N 00:00:01:00>00:00:04:00]\nFirst\n\nSUB[0 N 00:00:04:03>00:00:06:00]\nSecond\n\nDUB[\n");

  EXPECT_EQ(run("retime " + in + " -o " + dir + "/x.txt").exit, 2);
  EXPECT_EQ(run("retime --offset 00:00:01:00 " + in).exit, 2);
}

TEST_F(SubtitlingCli, ListAndStatsPrintOnStandardOutput) {
  std::string in = file("in.txt", "SUB[0 N 00:00:10:00>00:00:12:00]\nOne\nTwo\n\nDUB[\n");
  CliRun r = run("list " + in);
  EXPECT_EQ(r.exit, 0);
  EXPECT_EQ(r.out, "Subtitle number\tCue-in\tCue-out\tDuration\tText\n1\t00:00:10:00\t00:00:12:00\t00:00:02:00\tOne|Two\n");
  r = run("stats --video-duration 120 " + in);
  EXPECT_EQ(r.exit, 0);
  EXPECT_NE(r.out.find("Total subtitles: 1\n\n1-line: 0\n2-line: 1\n\nTotal characters: 7\nSubtitled minutes: 1 = 50%"),
            std::string::npos)
      << r.out;
}

}  // namespace
}  // namespace quillon::testing
