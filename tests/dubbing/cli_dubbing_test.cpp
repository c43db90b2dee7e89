// The dubbing commands of quillon-cli: dialogue, linecount, dub2sub.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/wait.h>

#include "support/station_fixture.h"

namespace quillon {
namespace {

struct CliDubbing : ::testing::Test {
  std::string dir = testing::tempDir("cli-dubbing");
  std::string script = dir + "/dub.txt";
  void SetUp() override {
    if (!std::filesystem::exists(QUILLON_CLI_PATH)) GTEST_SKIP() << "quillon-cli is not built";
    std::ofstream(script, std::ios::binary) << "DUB[0 N 00:00:01:00>00:00:03:00] ANA\nHola.\n\n"
                                               "DUB[0 F 00:00:04:00>00:00:06:00] PEDRO\nQue tal.\n\n";
  }
  int run(const std::string& args, std::string* out = nullptr) {
    const std::string o = dir + "/stdout";
    int st = std::system((std::string(QUILLON_CLI_PATH) + " " + args + " >'" + o + "' 2>/dev/null").c_str());
    if (out) *out = testing::readFile(o);
    return WIFEXITED(st) ? WEXITSTATUS(st) : -1;
  }
};

TEST_F(CliDubbing, DialogueListOnStandardOutput) {
  std::string out;
  ASSERT_EQ(run("dialogue '" + script + "'", &out), 0);
  EXPECT_EQ(out,
            "Dialog number\tCharacter\tCue-in\tCue-out\tDuration\tDialog\n"
            "1\tANA\t00:00:01:00\t00:00:03:00\t00:00:02:00\tHola.\n\n\n"
            "2\tPEDRO\t00:00:04:00\t00:00:06:00\t00:00:02:00\tQue tal.\n"
            "ANA:\t1\nPEDRO:\t1\nTotal:\t2\n");
}

TEST_F(CliDubbing, LineCountWritesTheReportAtTheHead) {
  ASSERT_EQ(run("linecount --actra '" + script + "' -o '" + dir + "/lc.txt'"), 0);
  EXPECT_EQ(testing::readFile(dir + "/lc.txt").substr(0, 113),
            "Dialog number\tCharacter\tDialog\t# Lines (ACTRA)\n1\tANA\tHola.\t.333\n2\tPEDRO\tQue tal.\t.667\n"
            "ANA:\t0\nPEDRO:\t1\nTotal:\t1DUB");
}

TEST_F(CliDubbing, DubToSubWritesTheConvertedScript) {
  ASSERT_EQ(run("dub2sub '" + script + "' -o '" + dir + "/sub.txt'"), 0);
  EXPECT_EQ(testing::readFile(dir + "/sub.txt"),
            "SUB[0 N 00:00:01:00>00:00:03:00] \nHola.\n\nSUB[0 F 00:00:04:00>00:00:06:00] \nQue tal.\n\n");
}

}  // namespace
}  // namespace quillon
