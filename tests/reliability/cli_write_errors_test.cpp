// quillon-cli's writing commands, on a full disk and into a read-only folder: exit status 2, one message naming the file, the file
// that was there left as it was.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "reliability_support.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

using testing::quoted;
using testing::readFile;

const std::string kPrevious = "the previous file, which must survive\n";

struct WritingCommand {
  const char* args;   // IN stands for the input file, OUT for the output (result.EXT)
  const char* input;  // under tests/, one of the suite's own inputs
  const char* ext = "txt";  // the extension the export insists on
};

const char* kSubtitles = "reliability/golden/seeds/scan_subtitles/subtitles.txt";
const char* kCaptions = "reliability/golden/seeds/scan_captions/cli.txt";
const char* kDubbing = "reliability/golden/seeds/scan_subtitles/dub_short.txt";

// One command of each kind of writer: a list export, a text export, a
// caption export, an import, the merge, a rewrite of the script and a report.
const WritingCommand kCommands[] = {
    {"export stl IN -o OUT", kSubtitles, "stl"},
    {"export sami IN -o OUT", kSubtitles, "smi"},
    {"export scc IN -o OUT", kCaptions, "scc"},
    {"import srt IN -o OUT", "reliability/golden/seeds/import_lists/list.srt"},
    {"merge IN IN2 -o OUT", "reliability/golden/seeds/merge_timing/timing.txt"},
    {"retime --offset 00:00:01:00 IN -o OUT", kSubtitles},
    {"linecount IN -o OUT", kDubbing},
};

class CliWriteErrors : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(QUILLON_CLI_PATH)) GTEST_SKIP() << "quillon-cli not built";
  }

  // The command's arguments with its input in `dir` and OUT at `out`.
  std::string prepare(const WritingCommand& c, const std::string& dir, const std::string& out) {
    const std::string in = std::string(QUILLON_SOURCE_DIR) + "/tests/" + c.input;
    std::ofstream(dir + "/text.txt", std::ios::binary) << "0001\nUno\n\n0002\nDos\n\n";
    std::ofstream(out, std::ios::binary) << kPrevious;
    std::string args = c.args;
    auto put = [&](const std::string& word, const std::string& value) { args.replace(args.find(word), word.size(), quoted(value)); };
    if (args.find("IN2") != std::string::npos) put("IN2", dir + "/text.txt");
    put("IN", in);
    put("OUT", out);
    return args;
  }
};

TEST_F(CliWriteErrors, AFullDiskOrAReadOnlyFolderGivesStatusTwoNamingTheFile) {
  namespace fs = std::filesystem;
  for (const auto& c : kCommands) {
    for (bool readOnly : {false, true}) {
      SCOPED_TRACE(std::string(c.args) + (readOnly ? " into a read-only folder" : " on a full disk"));
      const std::string dir = testing::tempDir("cli-fault");
      const std::string out = dir + "/result." + c.ext;
      const std::string args = prepare(c, dir, out);
      testing::CliResult r;
      if (readOnly) {
        // Root writes anywhere, so the command then runs as an unprivileged user.
        fs::permissions(dir, fs::perms::owner_write, fs::perm_options::remove);
        r = testing::runCli(testing::tempDir("cli-readonly-err"), args, "", testing::unprivilegedWrapper());
        fs::permissions(dir, fs::perms::owner_write, fs::perm_options::add);
      } else {
        // Room for nothing more: every write beyond the limit fails.
        r = testing::runCli(dir, args, "trap '' XFSZ; ulimit -f 0");
      }
      EXPECT_EQ(r.code, 2) << r.err;
      EXPECT_NE(r.err.find("cannot write " + out), std::string::npos) << r.err;
      EXPECT_EQ(readFile(out), kPrevious);
      if (readOnly) continue;
      // And with room the same command goes through.
      const testing::CliResult fine = testing::runCli(dir, args);
      EXPECT_NE(fine.code, 2) << fine.err;
      EXPECT_NE(readFile(out), kPrevious);
    }
  }
}

}  // namespace
}  // namespace quillon
