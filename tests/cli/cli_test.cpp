#include <gtest/gtest.h>

#include <fcntl.h>
#include <linux/input.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>

#include "support/station_fixture.h"

namespace {

struct CliRun {
  int status;
  std::string out, err;
};

// Runs quillon-cli with `args` (already shell-quoted) and captures both streams.
CliRun cli(const std::string& args) {
  static int n = 0;
  std::string errFile = quillon::testing::tempDir("cli-" + std::to_string(++n)) + "/stderr";
  std::string cmd = std::string(QUILLON_CLI_PATH) + " " + args + " 2>" + errFile;
  CliRun r{};
  FILE* p = popen(cmd.c_str(), "r");
  char buf[4096];
  size_t k;
  while ((k = fread(buf, 1, sizeof buf, p)) > 0) r.out.append(buf, k);
  int st = pclose(p);
  r.status = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
  r.err = quillon::testing::readFile(errFile);
  return r;
}

std::string writeScript(const std::string& name, const std::string& text) {
  std::string path = quillon::testing::tempDir("cli-script-" + name) + "/" + name;
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

TEST(CliTimecode, ConvertsAndFollowsTheExitContract) {
  CliRun r = cli("tc --fps 30 to-tc 60.01");
  EXPECT_EQ(r.out, "00:01:00:02\n");
  EXPECT_EQ(r.status, 0);

  r = cli("tc --fps 25 to-seconds 25:00:00:00");
  EXPECT_EQ(r.out, "-1\n");
  EXPECT_EQ(r.err, "QUILLON: Error in time code format: [25:00:00:00]\n");
  EXPECT_EQ(r.status, 1);

  EXPECT_EQ(cli("tc to-seconds 00:01:00:15").out, "60.500000\n");
  EXPECT_EQ(cli("tc to-seconds --form fractional 0:01:00.250").out, "60.250000\n");
  EXPECT_EQ(cli("tc --fps 24 to-frames 01:00:01:00").out, "90024\n");
  EXPECT_EQ(cli("tc to-frames 01:00:01").status, 1);
  EXPECT_EQ(cli("tc to-tc --form thousandths 1.5").out, "0:00:01.500\n");
  EXPECT_EQ(cli("tc to-tc --form hundredths 1.5").out, "0:00:01:50\n");
}

TEST(CliTimecode, UsageErrorsExitTwoWithOneLine) {
  for (const char* args : {"tc --fps 29 to-tc 1", "tc to-tc", "tc to-tc abc", "tc sideways 1", "nosuch",
                           "tc --form bad to-tc 1", "scan --param speed=3 x.txt", "scan /nonexistent/script.txt"}) {
    CliRun r = cli(args);
    EXPECT_EQ(r.status, 2) << args;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << args << ": " << r.err;
  }
  EXPECT_EQ(cli("tc --help").status, 0);
  EXPECT_NE(cli("--help").out.find("scan"), std::string::npos);
}

TEST(CliScan, PrintsOneTabbedLinePerEntry) {
  std::string path = writeScript("s.txt",
                                 "SUB[1LI 00:00:01:00>00:00:02:00] note\nOne\nTwo\n\n"
                                 "DUB[00:00:05:00]\tANNA\nHi.\n\n");
  CliRun r = cli("scan --fps 25 " + path);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out,
            "1\t00:00:01:00\t00:00:02:00\t1\tL\tI\tS\tnote\tOne|Two||\n"
            "2\t00:00:05:00\t00:00:00:00\t\t\t\tD\t\tHi.\n");
}

TEST(CliScan, AFaultBoxGoesToStandardErrorAndExitsOne) {
  std::string path = writeScript("bad.txt", "SUB[0 N 00:00:01:00x00:00:02:00]\nOne\n\n");
  CliRun r = cli("scan " + path);
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "");
  EXPECT_EQ(r.err, "QUILLON: Header format error in :\n\nSUB[0 N 00:00:01:00x00:00:02:00]\nO...\n\n\n");
}

// Late captions are warnings on standard output; a broken caption rule is a
// box and status 1.
TEST(CliCheck, CaptionsReportWhatAnSccEncoderPlaysLate) {
  std::string path = writeScript("late.txt", "CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n\n"
                                             "CAP[0NC 00:00:20:00>00:00:22:00]\nLong enough to load\n\n");
  CliRun r = cli("check --captions " + path);
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "warning: caption at 00:00:10:00 comes on 4 frames late on an SCC encoder\n"
                   "checked 2 captions: no rule broken, 1 late on an SCC encoder\n");
  EXPECT_EQ(r.err, "");
  r = cli("check --captions " + writeScript("short.txt", "CAP[0NC 00:00:10:00>00:00:10:10]\nHi!\n\n"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "checked 0 captions: 1 box\n");
}

TEST(CliScan, CaptionsAndSettingsFile) {
  std::string path = writeScript("c.txt", "CAP[0NC 00:00:01:00>00:00:02:00]\nHELLO\n\n");
  CliRun r = cli("scan --captions " + path);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "1\t00:00:01:00\t00:00:02:00\t0\tC\tN\tS\t\tHELLO||\n");
  std::string settings = writeScript("defaults.dat", "FRTFFFTTFFFFFTFT1400250032051" "0.25" "01.00" "06.00" "0.30\n");
  EXPECT_EQ(cli("scan --settings " + settings + " " + path + " --captions").status, 0);
  EXPECT_EQ(cli("scan --settings /nonexistent/defaults.dat " + path).status, 2);
}

TEST(CliPedal, PrintsTheSettledEventsOfRecordsWrittenIntoANamedPipe) {
  const std::string fifo = quillon::testing::tempDir("cli-pedal") + "/pedal";
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
  CliRun r = cli("pedal --device " + fifo + " --seconds 20");
  pedal.join();
  EXPECT_EQ(r.out, "5 rewind\n4 play/stop\n");
  EXPECT_EQ(r.status, 0);

  EXPECT_EQ(cli("pedal --device /nonexistent/event3").err, "quillon-cli: no pedal at /nonexistent/event3\n");
  for (const char* args :
       {"pedal --device x --seconds 0", "pedal --device x --map 5,6", "pedal --seconds 3", "pedal extra"})
    EXPECT_EQ(cli(args).status, 2) << args;
}

}  // namespace
