// Every quillon-cli command that writes a file, on a full disk and into a
// read-only folder: exit status 2, one message naming the file, the file
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
  const char* args;    // IN stands for the input file, OUT for the output (result.EXT)
  const char* input;   // name of the input file
  const char* bytes;   // its content
  const char* ext = "txt";  // the extension the export insists on
};

const char* kSubtitles =
    "SUB[0 N 10:00:01:00>10:00:03:12]\nPlain and simple.\n\nSUB[3LI 10:00:04:00>10:00:06:00]\nDos\n\nSUB[\n";
const char* kDubbing = "DUB[0 1 10:00:01:00>10:00:02:00] JUAN\nHola, buenos d\xC3\xAD" "as.\n\n";
const char* kCaptions = "CAP[3IR 00:00:01:00>00:00:03:00]\nOne\nTwo\n\nCAP[0NL 00:00:04:00>00:00:06:15]\nA\n";
const char* kTiming = "0001\t10:00:01:00\t10:00:03:00\n0002\t10:00:04:00\t10:00:06:00\n";

const WritingCommand kCommands[] = {
    {"export stl IN -o OUT", "s.txt", kSubtitles, "stl"},
    {"export sub IN -o OUT", "s.txt", kSubtitles, "sub"},
    {"export dvdm IN -o OUT", "s.txt", kSubtitles},
    {"export cpc IN -o OUT", "s.txt", kSubtitles},
    {"export sami IN -o OUT", "s.txt", kSubtitles, "smi"},
    {"export ssa IN -o OUT", "s.txt", kSubtitles, "ssa"},
    {"export sbv IN -o OUT", "s.txt", kSubtitles, "sbv"},
    {"export qt IN -o OUT", "s.txt", kSubtitles},
    {"export unitext IN -o OUT", "s.txt", kSubtitles},
    {"export scc IN -o OUT", "c.txt", kCaptions, "scc"},
    {"export ult IN -o OUT", "c.txt", kCaptions, "ult"},
    {"import srt IN -o OUT", "a.srt", "1\r\n00:00:01,500 --> 00:00:02,999\r\nFirst\r\n\r\n2\r\n00:00:03,000 --> 00:00:04,000\r\nB\r\n\r\n"},
    {"import subl IN -o OUT", "a.sub", "{25}{50}Hola|se\xC3\xB1or\r\n{75}{112}Uno\r\n\r\n"},
    {"import dos850 IN -o OUT", "a.txt", "\r\n0001      10:00:01:00 -> 10:00:03:12 x\r\nUno\r\n\r\n\r\n"},
    {"import sub IN -o OUT", "a.sub", "*PART 1\r\nx\r\n00:00:00.00\\00:00:00.00\r\nUno\r\n00:00:01.00\\00:00:02.05\r\n*End*\r\n"},
    {"import stl IN -o OUT", "a.stl", nullptr},  // written by the export first
    {"import unitext IN -o OUT", "u.txt", "0001\t10:00:01:00\t10:00:03:12\nPlain\n\n0002\t10:00:04:00\t10:00:06:00\nDos\n\n"},
    {"merge IN IN2 -o OUT", "t.txt", kTiming},
    {"retime --offset 00:00:01:00 IN -o OUT", "s.txt", kSubtitles},
    {"interleave IN -o OUT", "s.txt", kSubtitles},
    {"linecount IN -o OUT", "d.txt", kDubbing},
    {"dub2sub IN -o OUT", "d.txt", kDubbing},
};

class CliWriteErrors : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(QUILLON_CLI_PATH)) GTEST_SKIP() << "quillon-cli not built";
  }

  // The command's arguments with its input in `dir` and OUT at `out`.
  std::string prepare(const WritingCommand& c, const std::string& dir, const std::string& out) {
    const std::string in = dir + "/" + c.input;
    if (c.bytes) {
      std::ofstream(in, std::ios::binary) << c.bytes;
    } else {
      std::ofstream(dir + "/s.txt", std::ios::binary) << kSubtitles;
      EXPECT_EQ(testing::runCli(dir, "export stl --fps 25 " + quoted(dir + "/s.txt") + " -o " + quoted(in)).code, 0);
    }
    std::ofstream(dir + "/text.txt", std::ios::binary) << "0001\nUno\n\n0002\nDos\n\n";
    std::ofstream(out, std::ios::binary) << kPrevious;
    std::string args = c.args;
    auto put = [&](const std::string& word, const std::string& value) {
      auto at = args.find(word);
      args.replace(at, word.size(), quoted(value));
    };
    if (args.find("IN2") != std::string::npos) put("IN2", dir + "/text.txt");
    put("IN", in);
    put("OUT", out);
    return args;
  }
};

TEST_F(CliWriteErrors, AFullDiskGivesStatusTwoNamingTheFile) {
  for (const auto& c : kCommands) {
    const std::string dir = testing::tempDir("cli-full");
    const std::string out = dir + "/result." + c.ext;
    const std::string args = prepare(c, dir, out);
    // Room for nothing more: every write beyond the limit fails.
    testing::CliResult r = testing::runCli(dir, args, "trap '' XFSZ; ulimit -f 0");
    EXPECT_EQ(r.code, 2) << c.args << "\n" << r.err;
    EXPECT_NE(r.err.find("cannot write " + out), std::string::npos) << c.args << "\n" << r.err;
    EXPECT_EQ(readFile(out), kPrevious) << c.args;
    // And with room the same command goes through.
    const testing::CliResult fine = testing::runCli(dir, args);
    EXPECT_NE(fine.code, 2) << c.args << "\n" << fine.err;
    EXPECT_NE(readFile(out), kPrevious) << c.args;
  }
}

TEST_F(CliWriteErrors, AReadOnlyFolderGivesStatusTwoNamingTheFile) {
  for (const auto& c : kCommands) {
    const std::string dir = testing::tempDir("cli-readonly");
    const std::string out = dir + "/result." + c.ext;
    const std::string args = prepare(c, dir, out);
    // Root writes anywhere, so the command then runs as an unprivileged user.
    std::filesystem::permissions(dir, std::filesystem::perms::owner_write, std::filesystem::perm_options::remove);
    testing::CliResult r =
        testing::runCli(testing::tempDir("cli-readonly-err"), args, "", testing::unprivilegedWrapper());
    std::filesystem::permissions(dir, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
    EXPECT_EQ(r.code, 2) << c.args << "\n" << r.err;
    EXPECT_NE(r.err.find("cannot write " + out), std::string::npos) << c.args << "\n" << r.err;
    EXPECT_EQ(readFile(out), kPrevious) << c.args;
  }
}

}  // namespace
}  // namespace quillon
