// `quillon-cli export scc` and `export ult` write what the station writes.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/wait.h>

#include "support/station_fixture.h"

namespace quillon {
namespace {

int run(const std::string& args) {
  int st = std::system((std::string(QUILLON_CLI_PATH) + " " + args + " 2>/dev/null").c_str());
  return WIFEXITED(st) ? WEXITSTATUS(st) : -1;
}

struct CliExport : ::testing::Test {
  std::string dir = testing::tempDir("cli-export");
  std::string script = dir + "/captions.txt";
  void SetUp() override {
    if (!std::filesystem::exists(QUILLON_CLI_PATH)) GTEST_SKIP() << "quillon-cli is not built";
    std::ofstream(script, std::ios::binary) << "CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n";
  }
};

TEST_F(CliExport, SccAndUltFilesTheAnswerAndTheFields) {
  const std::string scc = dir + "/out.scc";
  std::ofstream(scc) << "keep";
  EXPECT_EQ(run("export scc --answer no '" + script + "' -o '" + scc + "'"), 1);
  EXPECT_EQ(testing::readFile(scc), "keep");
  ASSERT_EQ(run("export scc --answer yes '" + script + "' -o '" + scc + "'"), 0);
  EXPECT_EQ(testing::readFile(scc),
            "Scenarist_SCC V1.0\r\n\r\n00:00:05:00\t942c\r\n\r\n"
            "00:00:09:27\t9420 94f8 c8e9 a180 942c 8080 8080 942f\r\n\r\n00:00:12:00\t942c\r\n\r\n");

  ASSERT_EQ(run("export ult --field ProgramInfo=ABC '" + script + "' -o '" + dir + "/out.ult'"), 0);
  const std::string file = testing::readFile(dir + "/out.ult");
  ASSERT_EQ(file.size(), 232u + 3 + 12 + 19 + 10);
  EXPECT_EQ(file.substr(0, 6), "ULTECH");
  EXPECT_EQ(file.substr(232, 3), "ABC");
  EXPECT_EQ(run("export ult --field Nonsense=1 '" + script + "' -o '" + dir + "/x.ult'"), 2);
  EXPECT_EQ(run("export ult '" + script + "' -o '" + dir + "/x.ULT'"), 1);
}

}  // namespace
}  // namespace quillon
