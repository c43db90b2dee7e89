#include "transport/startup.h"

#include <gtest/gtest.h>

#include <fstream>
#include <tuple>

#include "transport/transport_fixture.h"

namespace quillon {
namespace {

using testing::readFile;
using testing::TransportStation;

std::string settingsFile(const std::string& name, const std::string& content) {
  std::string path = testing::tempDir("startup_" + name) + "/defaults.dat";
  if (!content.empty()) std::ofstream(path, std::ios::binary) << content;
  return path;
}

TEST(StartUp, CancelledDialogEndsTheProgramAndRewritesTheSettings) {
  TransportStation t;
  const std::string path = settingsFile("cancel", "garbage from elsewhere\r\n");
  bool ended = false;
  t.st.endProgram = [&](Station&) { ended = true; };
  t.ui.openPaths.push_back(std::nullopt);
  const double started = t.ui.clock;
  EXPECT_FALSE(startStation(t.st, u"", path));
  EXPECT_GE(t.ui.clock - started, 3);  // the splash's wait
  EXPECT_EQ(std::tuple(t.ui.openRequests.size(), ended, t.st.view.visible), std::tuple(1u, true, false));
  EXPECT_EQ(t.port.openAttempts, std::vector<int>{1});
  EXPECT_EQ(readFile(path), "FRTFFFTTFFFFFTFT14002500320510.2501.0006.000.30\n");
}

TEST(StartUp, CommandLineVideoOpensOnTheSettingsOfTheLine) {
  TransportStation t;
  // Muted, left track, reading speed 9, jump 12 s, COM2, delay 1.
  const std::string path = settingsFile("video", "TLTFFFTTTFFFTTFT09002500321220.5001.0006.001.00\r\n");
  t.port.presentPorts = {2};
  const std::string video = testing::videoFile("start.avi", "\"P00100000001020000\"\r\n");
  ASSERT_TRUE(startStation(t.st, u"\"" + fromUtf8(video) + u"\"", path));

  const Session& s = t.st.s;
  EXPECT_EQ(t.st.view.caption, u"QUILLON: " + fromUtf8(video) + u" - 25FPS");
  EXPECT_EQ(std::tuple(t.player.volume(), s.readingSpeed, s.footpedaljump, s.delay, t.port.openPort),
            std::tuple(-10000, 9.0, 12.0, 1.0, 2));
  // The tagged video plays on the right track whatever the line said.
  EXPECT_EQ(std::tuple(s.audioTrack, s.g_fVideoRun), std::tuple(u'R', true));

  unloadMainForm(t.st, path);
  EXPECT_FALSE(t.player.isOpen() || t.port.isOpen());
  EXPECT_EQ(readFile(path), "TRTFFFTTTFFFTTFT09002500321220.5001.0006.001.00\n");
}

}  // namespace
}  // namespace quillon
