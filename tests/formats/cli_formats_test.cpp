// quillon-cli's export, import and merge words for the interchange formats.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "formats_fixture.h"

namespace quillon {
namespace {

using testing::readFile;
using testing::tempDir;

struct CliRun {
  int code;
  std::string err;
};

CliRun cli(const std::string& dir, const std::string& args) {
  std::string cmd = std::string(QUILLON_CLI_PATH) + " " + args + " 2> " + dir + "/err.txt > /dev/null";
  int status = std::system(cmd.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(dir + "/err.txt")};
}

class FormatsCli : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(QUILLON_CLI_PATH)) GTEST_SKIP() << "quillon-cli not built";
    dir = tempDir("cli-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    std::filesystem::copy_file(testing::goldenPath("sample_script.txt"), dir + "/script.txt");
  }
  std::string dir;
};

TEST_F(FormatsCli, StlExportWithFieldsMatchesTheLibrary) {
  CliRun r = cli(dir, "export stl --fps 25 --field ComboDFC=25 --field TextCD=240131 --field TextRD=240201 "
                   "--field TextRN=3 --field TextPUB= --field TextEN= " + dir + "/script.txt -o " + dir + "/out.stl");
  ASSERT_EQ(r.code, 0) << r.err;
  // The sample's golden file was made with the same fields and no user
  // name; only the title in page 0 differs, from the script's name.
  std::string file = readFile(dir + "/out.stl"), golden = readFile(testing::goldenPath("sample.stl"));
  ASSERT_EQ(file.size(), golden.size());
  EXPECT_EQ(file.substr(0, 1024), golden.substr(0, 1024));
  EXPECT_EQ(file.substr(1024 + 128), golden.substr(1024 + 128));
  EXPECT_NE(file.find("Title: script\x0A"), std::string::npos);
}

TEST_F(FormatsCli, MessagesAndExitCodes) {
  CliRun r = cli(dir, "export stl " + dir + "/script.txt -o " + dir + "/out.txt");
  EXPECT_EQ(r.code, 1);
  EXPECT_EQ(r.err, "QUILLON: Error: Wrong subtitle file extension\n");
  r = cli(dir, "export cpc --field Nope=1 " + dir + "/script.txt -o " + dir + "/out.txt");
  EXPECT_EQ(r.code, 2);
  std::ofstream(dir + "/empty.txt") << "No tags.\n";
  r = cli(dir, "export sami " + dir + "/empty.txt -o " + dir + "/out.smi");
  EXPECT_EQ(r.code, 1);
  EXPECT_EQ(r.err, "QUILLON: Error: Invalid subtitle list.\n");
  r = cli(dir, "export sami --encoding utf-8 " + dir + "/script.txt -o " + dir + "/out.smi");
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.err, "QUILLON: SAMI file created.\n");
  EXPECT_NE(readFile(dir + "/out.smi").find("ni\xC3\xB1os"), std::string::npos);
}

TEST_F(FormatsCli, ImportAndMerge) {
  std::ofstream(dir + "/in.srt", std::ios::binary) << "1\r\n00:00:01,000 --> 00:00:02,500\r\nHola\r\n\r\n";
  CliRun r = cli(dir, "import srt --fps 25 " + dir + "/in.srt -o " + dir + "/script.txt");
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(readFile(dir + "/script.txt"), "SUB[0 N 00:00:01:00>00:00:02:15]\nHola\n\n\n");

  std::ofstream(dir + "/timing.txt") << "0001\t10:00:01:00\t10:00:03:00\n0002\t10:00:04:00\t10:00:06:00\n";
  std::ofstream(dir + "/text.txt") << "0001\nUno\n\n0002\nDos\n\n\n\n";
  r = cli(dir, "merge " + dir + "/timing.txt " + dir + "/text.txt -o " + dir + "/merged.txt");
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.err, "QUILLON: Operation complete. Last subtitle loaded: 2. \nQUILLON: MERGE OPERATION COMPLETED SUCCESSFULLY.\n");
  EXPECT_EQ(readFile(dir + "/merged.txt"),
            "SUB[1 N 10:00:01:00>10:00:03:00] \n0001\nUno\n\nSUB[2 N 10:00:04:00>10:00:06:00] \n0002\nDos\n\n\n\n");
}

}  // namespace
}  // namespace quillon
