#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "core/settings.h"
#include "core/station_options.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

const std::string kDefaultsLine = "FRTFFFTTFFFFFTFT1400250032051" "0.25" "01.00" "06.00" "0.30";

TEST(SettingsLine, UntrustedLineGivesEveryDefaultAndWritesThem) {
  for (std::string line : {"", "XYZ", "\xEF\xBB\xBFT"}) {
    Session s;
    s.readingSpeed = 3;
    s.delay = 0.9;
    applySettingsLine(s, line);
    EXPECT_EQ(buildSettingsLine(s), kDefaultsLine) << line;
  }
}

TEST(SettingsLine, ATrustedLineIsReadByColumnsAndRoundTrips) {
  const std::string line = "TLFTTFFTTFTFTFTF0903101532101" "1.50" "02.25" "10.00" "1.00";
  Session s;
  applySettingsLine(s, line);
  EXPECT_TRUE(s.muteOn && s.dub_dialogos && s.actraGuidelines && !s.dub_voz_on);
  EXPECT_EQ(s.audioTrack, u'L');
  std::ostringstream numbers;
  numbers << s.readingSpeed << ' ' << s.minInterleave << ' ' << s.fastThreshold << ' ' << s.slowThreshold << ' '
          << s.maxCharsRow << ' ' << s.footpedaljump << ' ' << s.commPort << ' ' << s.slowRate << ' ' << s.minOnAir1
          << ' ' << s.maxOnAir << ' ' << s.delay;
  EXPECT_EQ(numbers.str(), "9 3 10 15 32 10 1 1.5 2.25 10 1");
  EXPECT_EQ(buildSettingsLine(s), line);
  s.footpedaljump = 100;  // two-digit fields keep their last two digits
  EXPECT_EQ(buildSettingsLine(s).substr(26, 2), "00");
}

TEST(SettingsLine, OlderLayoutAndShortOrBadFieldsAreNotCorrected) {
  Session s;
  applySettingsLine(s, "FT");
  EXPECT_EQ(s.audioTrack, u'R');  // "T" in column 2 comes from the earlier layout
  EXPECT_EQ(s.readingSpeed, 0);   // a short line gives zeros, not defaults
  EXPECT_EQ(s.maxCharsRow, 0);
  EXPECT_EQ(s.delay, 0);
  applySettingsLine(s, "FRTFFFTTFFFFFTFTx400250032051" "0.25" "01.00" "06.00" "0.30");
  EXPECT_EQ(s.readingSpeed, 0);
  EXPECT_EQ(s.fastThreshold, 25);
}

TEST(StartValues, IniciarvariablesSetsChecksPanelsAndTrack) {
  testing::TestStation t;
  Station& st = t.st;
  char16_t track = 0;
  st.trackCommand = [&](Station&, char16_t c) { track = c; };
  st.s.g_settingsLine = "FSTFTFTTTFFFTTFT1200250040051" "0.25" "01.00" "06.00" "0.30";
  st.view.menu("mnu_sub_opc_dis").checked = true;
  iniciarvariables(st);
  EXPECT_EQ(track, u'S');
  EXPECT_TRUE(st.view.menu("mnu_herr_opt_ACTRA").checked);
  EXPECT_FALSE(st.view.menu("mnu_dub_opc_dia").checked);
  EXPECT_FALSE(st.view.menu("mnu_sub_opc_dis").checked);
  EXPECT_EQ(st.view.panel(5).toolTip, u"Jump option enabled.");
  EXPECT_EQ(st.view.panel(4).toolTip, u"Max chars per line = 40");
  EXPECT_EQ(st.s.nextSeqNumber, 1);
  EXPECT_EQ(st.s.minOnAir2, 0);
}

// Failed writes are shown by the disk-fault tests.
TEST(DefaultsFile, WrittenUnderTheConfigurationFolderAsOneLine) {
  std::string dir = testing::tempDir("defaults") + "/nested/quillon";
  testing::TestStation t;
  applySettingsLine(t.st.s, "");
  t.st.s.readingSpeed = 16;
  ASSERT_TRUE(guardarDefaults(t.st, dir + "/defaults.dat"));
  EXPECT_EQ(readSettingsLine(dir + "/defaults.dat").substr(16, 2), "16");
  EXPECT_EQ(testing::readFile(dir + "/defaults.dat").size(), 48u);
}

TEST(OptionsFile, BesideTheSettingsLineKeepsEveryKeyAndSkipsNoise) {
  std::string dir = testing::tempDir("options");
  std::string path = optionsPathBeside(dir + "/defaults.dat");
  EXPECT_EQ(path, dir + "/options.conf");
  EXPECT_TRUE(readStationOptions(path).empty());
  std::ofstream(path) << "# comment\r\npedal.device=/dev/input/event3\r\nnoise\n=x\nfuture.key=a=b\n";
  StationOptions o = readStationOptions(path);
  EXPECT_EQ(o, (StationOptions{{"pedal.device", "/dev/input/event3"}, {"future.key", "a=b"}}));
  o["script.writer"] = "T";
  ASSERT_TRUE(writeStationOptions(path, o));
  EXPECT_EQ(readStationOptions(path), o);
  EXPECT_EQ(testing::readFile(path), "future.key=a=b\npedal.device=/dev/input/event3\nscript.writer=T\n");
}

}  // namespace
}  // namespace quillon
