#include <gtest/gtest.h>

#include <fcntl.h>
#include <linux/input.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

const std::string kGolden = QUILLON_SOURCE_DIR "/tests/cli/golden/";

struct CliRun {
  int status;
  std::string out, err, written;
};

// Runs quillon-cli: "@name" in `args` stands for golden/name (and so in its
// output), OUT for a file in a fresh folder, read back into `written`.
CliRun cli(std::string args) {
  static int n = 0;
  const std::string dir = tempDir("cli-" + std::to_string(++n));
  for (size_t at; (at = args.find('@')) != std::string::npos;) args.replace(at, 1, kGolden);
  if (size_t at = args.find("OUT"); at != std::string::npos) args.replace(at, 3, dir + "/written");
  const int st = std::system((std::string(QUILLON_CLI_PATH) + " " + args + " >" + dir + "/out 2>" + dir + "/err").c_str());
  CliRun r{WIFEXITED(st) ? WEXITSTATUS(st) : -1, readFile(dir + "/out"), readFile(dir + "/err"),
           readFile(dir + "/written")};
  for (size_t at; (at = r.out.find(kGolden)) != std::string::npos;) r.out.replace(at, kGolden.size(), "@");
  return r;
}

// Each command on a small script: the status, both streams and the file
// written, to the byte (a missing golden file stands for nothing written).
TEST(CliCommands, EachCommandGivesItsGoldenOutput) {
  const struct {
    const char* golden;
    const char* args;
    int status;
  } cases[] = {
      {"tc-to-tc", "tc --fps 30 to-tc 60.01", 0},
      {"tc-out-of-range", "tc --fps 25 to-seconds 25:00:00:00", 1},
      {"tc-to-seconds", "tc to-seconds 00:01:00:15", 0},
      {"tc-fractional", "tc to-seconds --form fractional 0:01:00.250", 0},
      {"tc-to-frames", "tc --fps 24 to-frames 01:00:01:00", 0},
      {"tc-short", "tc to-frames 01:00:01", 1},
      {"tc-thousandths", "tc to-tc --form thousandths 1.5", 0},
      {"tc-hundredths", "tc to-tc --form hundredths 1.5", 0},
      {"scan", "scan --fps 25 @scan.txt", 0},
      {"scan-bad-header", "scan @bad-header.txt", 1},
      {"scan-captions", "scan --captions @caption.txt", 0},
      {"scan-captions", "scan --settings @defaults.dat @caption.txt --captions", 0},
      // Late captions are warnings; a broken caption rule is a box and status 1.
      {"check-late-captions", "check --captions @late-captions.txt", 0},
      {"check-short-caption", "check --captions @short-caption.txt", 1},
      {"check-overlap", "check @overlap.txt", 1},
      {"check-answer-no", "check --answer no @overlaps.txt", 1},
      {"check-clean", "check @clean.txt", 0},
      {"check-untimed", "check @untimed.txt", 0},
      {"retime-offset", "retime --offset 00:01:00:00 @overlap.txt -o OUT", 0},
      {"retime-pal-to-ntsc", "retime --pal-to-ntsc --new-document @pal.txt -o OUT", 0},
      {"interleave", "interleave --param minInterleave=2 @overlap.txt -o OUT", 0},
      {"list", "list @two-lines.txt", 0},
      {"stats", "stats --video-duration 120 @two-lines.txt", 0},
      {"dialogue", "dialogue @dub.txt", 0},
      {"linecount", "linecount --actra @dub.txt -o OUT", 0},
      {"dub2sub", "dub2sub @dub.txt -o OUT", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.args);
    const CliRun r = cli(c.args);
    EXPECT_EQ(r.status, c.status);
    EXPECT_EQ(r.out, readFile(kGolden + c.golden + ".out"));
    EXPECT_EQ(r.err, readFile(kGolden + c.golden + ".err"));
    EXPECT_EQ(r.written, readFile(kGolden + c.golden + ".written"));
  }
}

TEST(CliUsage, UsageErrorsExitTwoWithOneLine) {
  for (const char* args : {"tc --fps 29 to-tc 1", "tc to-tc", "tc to-tc abc", "tc sideways 1", "nosuch",
                           "tc --form bad to-tc 1", "scan --param speed=3 x.txt", "scan /nonexistent/script.txt",
                           "scan --settings /nonexistent/defaults.dat @caption.txt", "retime @overlap.txt -o OUT",
                           "retime --offset 00:00:01:00 @overlap.txt", "pedal --device x --seconds 0",
                           "pedal --device x --map 5,6", "pedal --seconds 3", "pedal extra"}) {
    const CliRun r = cli(args);
    EXPECT_EQ(r.status, 2) << args;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << args << ": " << r.err;
  }
  EXPECT_EQ(cli("tc --help").status, 0);
  EXPECT_NE(cli("--help").out.find("scan"), std::string::npos);
}

TEST(CliPedal, PrintsTheSettledEventsOfRecordsWrittenIntoANamedPipe) {
  const std::string fifo = tempDir("cli-pedal") + "/pedal";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  auto key = [](int code, int value) {
    input_event ev{};
    ev.type = EV_KEY;
    ev.code = static_cast<uint16_t>(code);
    ev.value = value;
    return std::string(reinterpret_cast<const char*>(&ev), sizeof ev);
  };
  // Left pressed and released (one settled event), then the middle pedal.
  std::thread pedal([&] {
    const int w = open(fifo.c_str(), O_WRONLY);
    const std::string burst = key(BTN_0, 1) + key(BTN_0, 0), middle = key(BTN_1, 1);
    (void)!write(w, burst.data(), burst.size());
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    (void)!write(w, middle.data(), middle.size());
    close(w);
  });
  const CliRun r = cli("pedal --device " + fifo + " --seconds 20");
  pedal.join();
  EXPECT_EQ(r.out, "5 rewind\n4 play/stop\n");
  EXPECT_EQ(r.status, 0);

  EXPECT_EQ(cli("pedal --device /nonexistent/event3").err, "quillon-cli: no pedal at /nonexistent/event3\n");
}

}  // namespace
}  // namespace quillon::testing
