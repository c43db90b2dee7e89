// quillon-cli --writer: commands on a script open in a headless Writer.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "support/station_fixture.h"
#include "writer_fixture.h"

namespace quillon::testing {
namespace {

struct CliRun {
  int status = -1;
  std::string out, err;
};

CliRun cli(const std::string& args) {
  static int serial = 0;
  const std::string dir = tempDir("writer-cli-" + std::to_string(++serial));
  const std::string cmd = std::string(QUILLON_CLI_PATH) + " " + args + " >" + dir + "/out 2>" + dir + "/err";
  const int raw = std::system(cmd.c_str());
  return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, readFile(dir + "/out"), readFile(dir + "/err")};
}

class WriterCli : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(QUILLON_CLI_PATH)) GTEST_SKIP() << "quillon-cli is not built";
    QUILLON_NEED_OFFICE(office);
    office.closeAll();
    writer = "--writer " + office.connection() + " ";
  }
  HeadlessOffice& office = HeadlessOffice::shared();
  std::string writer;
};

TEST_F(WriterCli, ARetimeThroughWriterIsWhatWriterSavesAndTheScanSeesAlike) {
  // An .odt Writer made itself, open there.
  const std::string path = tempDir("writer-retime") + "/script.odt";
  auto w = office.service();
  std::u16string body = generatedSubtitleScript(3, 25);
  body.pop_back();
  w->documentsAdd();
  w->insertText(0, body, false, false);
  std::string error;
  ASSERT_TRUE(w->storeCopy(path, error)) << error;
  w->closeActive();
  ASSERT_TRUE(w->openFile(path, error)) << error;

  const std::string copy = tempDir("writer-copy") + "/copy.txt";
  CliRun retime = cli(writer + "--fps 25 retime --offset 00:00:10:00 " + path + " -o " + copy);
  ASSERT_EQ(retime.status, 0) << retime.err;
  CliRun named = cli(writer + "--fps 25 scan " + path);
  CliRun inFront = cli(writer + "--fps 25 scan");
  ASSERT_EQ(named.status, 0) << named.err;
  EXPECT_EQ(inFront.out, named.out);
  EXPECT_EQ(named.out.substr(0, 25), "1\t00:00:10:00\t00:00:13:00");

  ASSERT_TRUE(w->useOpenFile(path, error)) << error;
  ASSERT_TRUE(w->save(error)) << error;
  CliRun saved = cli("--fps 25 scan " + path);
  ASSERT_EQ(saved.status, 0) << saved.err;
  EXPECT_EQ(saved.out, named.out);
  EXPECT_EQ(cli("--fps 25 scan " + copy).out, named.out);
}

TEST_F(WriterCli, AScriptNotOpenInWriterOrNoWriterListeningIsAFileError) {
  const std::string path = writeFile("absent.txt", "x\n");
  CliRun notOpen = cli(writer + "scan " + path);
  EXPECT_EQ(notOpen.status, 2);
  EXPECT_NE(notOpen.err.find("is not open in LibreOffice Writer"), std::string::npos) << notOpen.err;
  CliRun nobody = cli("--writer pipe,name=quillon-nobody-listens scan");
  EXPECT_EQ(nobody.status, 2);
  EXPECT_NE(nobody.err.find("LibreOffice does not answer at pipe,name=quillon-nobody-listens"), std::string::npos)
      << nobody.err;
}

}  // namespace
}  // namespace quillon::testing
