#include <gtest/gtest.h>

#include <tuple>

#include "transport/transport_fixture.h"
#include "transport/video_menu.h"

namespace quillon {
namespace {

using testing::TransportStation;
using testing::videoFile;

u16 quoted(const std::string& path) { return u"\"" + fromUtf8(path) + u"\""; }

TEST(OpenVideo, TaggedVideoSetsRateWindowMenusAndPlays) {
  TransportStation t;
  const std::string path = videoFile("clip.avi", "\"P00100000001020000\"\r\n");
  t.player.fileDuration = 120;
  t.st.s.muteOn = true;
  abrirvideo(t.st, quoted(path));

  const Session& s = t.st.s;
  const ViewState& v = t.st.view;
  EXPECT_EQ(std::tuple(s.g_fps, v.menu("mnu_PAL").checked, s.tcStart, s.tcEnd), std::tuple(25, true, 3600.0, 3720.0));
  EXPECT_EQ(v.LabCom.caption + v.LabDur.caption, u"01:00:00:0001:02:00:00");
  // Muted, and on track R as every tagged video.
  EXPECT_EQ(std::tuple(t.player.volume(), t.player.balance()), std::tuple(-10000, 10000));
  EXPECT_EQ(v.caption, u"QUILLON: " + fromUtf8(path) + u" - 25FPS");
  for (const char* m : {"mnu_ctlVideo", "mnu_tex_par", "mnu_sub", "mnu_dub", "mnu_cc", "mnu_herr", "mnu_pan"})
    EXPECT_TRUE(v.menu(m).enabled) << m;
  // It plays at once, with the slider focused and panel 3 emptied.
  EXPECT_TRUE(s.g_fVideoRun && t.player.running());
  EXPECT_EQ(v.overlays.focus, "slVideo");
  EXPECT_EQ(s.qcOutputName, fromUtf8(path.substr(0, path.size() - 4)) + u" - QC.avi");
  EXPECT_TRUE(t.ui.boxes.empty());
}

TEST(OpenVideo, QuickTimeTestIsCaseSensitive) {
  TransportStation t;
  t.player.fileStartTimecode = 3600 + 10;
  // Lower-case "mov": thirty frames and the embedded start timecode.
  abrirvideo(t.st, quoted(videoFile("a.mov", std::string(30, 'q'))));
  // Stereo, with the window from the embedded timecode.
  EXPECT_EQ(std::tuple(t.st.s.g_fps, t.st.s.tcStart, t.st.s.tcEnd, t.player.balance()),
            std::tuple(30, 3610.0, 3670.0, 0));

  // "MOV" is not QuickTime to the test: its tag decides.
  TransportStation u;
  u.player.fileStartTimecode = 3610;
  abrirvideo(u.st, quoted(videoFile("b.MOV", "\"C00000000000100000\"\r\n")));
  EXPECT_EQ(std::tuple(u.st.s.g_fps, u.st.s.tcStart, u.player.balance()), std::tuple(24, 0.0, 10000));
}

TEST(OpenVideo, CommandLineLosesItsFirstAndLastCharacters) {
  TransportStation t;
  const std::string path = videoFile("c.avi", "\"N00000000000100000\"\r\n");
  // Unquoted, the path loses real letters and the file is not found: no word.
  abrirvideo(t.st, fromUtf8(path));
  EXPECT_EQ(t.st.s.videoFile, fromUtf8(path.substr(1, path.size() - 2)));
  EXPECT_FALSE(videoOpen(t.st));
  EXPECT_TRUE(t.ui.boxes.empty());
}

TEST(OpenVideo, DialogCancelLeavesEverythingAndSuccessKeepsTheFolder) {
  TransportStation t;
  t.openTaggedVideo();
  const u16 before = t.st.s.videoFile;
  t.ui.openPaths.push_back(std::nullopt);
  abrirvideo(t.st, u"");
  EXPECT_EQ(t.st.s.videoFile, before);
  EXPECT_EQ(t.ui.openRequests.back().title, u"Open video file");
  EXPECT_EQ(t.ui.openRequests.back().filter, u"Media files|*.avi;*.wmv;*.asf;*.mov;*.mpg;*.mpeg|All files|*.*");

  const std::string other = videoFile("d.avi", "\"N00000000000100000\"\r\n");
  t.ui.openPaths.push_back(other);
  abrirvideo(t.st, u"");
  EXPECT_EQ(t.st.s.videoFile, fromUtf8(other));
  EXPECT_EQ(t.st.s.g_fps, 30);
  abrirvideo(t.st, u"");  // the next dialog opens in the folder of the last
  EXPECT_EQ(t.ui.openRequests.back().initialDir, fromUtf8(other.substr(0, other.rfind('/') + 1)));
}

TEST(VideoMenu, SlowMotionRateToggleAndMute) {
  TransportStation t;
  t.openTaggedVideo();
  // Out of range keeps the rate, as an empty answer does.
  t.ui.inputs = {u"5", u"10", u"", u"90"};
  for (double rate : {0.25, 0.1, 0.1, 0.9}) {
    mnu_vid_slo_rate(t.st);
    EXPECT_DOUBLE_EQ(t.st.s.slowRate, rate);
  }
  EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter slow motion speed (10-90)");
  mnu_vid_slo_rate(t.st);  // the default offered reads back as the same rate
  EXPECT_EQ(t.st.s.slowRate, 0.9);

  for (auto [checked, rate] : {std::pair{true, 0.9}, {false, 1.0}}) {
    mnu_vid_slo_set(t.st);
    EXPECT_EQ(std::tuple(t.st.view.menu("mnu_vid_vel_slo").checked, t.player.rate()), std::tuple(checked, rate));
  }
  for (int volume : {-10000, 0}) {
    toggleMute(t.st);
    EXPECT_EQ(t.player.volume(), volume);
  }
}

TEST(VideoMenu, FullScreenHidesTheChromeAndComesBackWhereItWas) {
  TransportStation t;
  t.openTaggedVideo();
  t.st.view.overlays.mainLeft = 1200;
  t.st.view.overlays.mainTop = 900;
  enterFullScreen(t.st);
  const ViewState& v = t.st.view;
  EXPECT_FALSE(v.menu("mnu_file").visible || v.toolbarVisible || v.slVideo.visible);
  EXPECT_EQ(std::tuple(v.overlays.mainLeft, t.player.window.width), std::tuple(0, 1007));
  // Timer1 puts the time in the caption while the label is hidden.
  resumevideo(t.st);
  t.run(2);
  EXPECT_EQ(v.caption, v.LabTimecode.caption);

  leaveFullScreen(t.st);
  EXPECT_TRUE(v.menu("mnu_file").visible && v.toolbarVisible && v.slVideo.visible && v.LabDur.visible);
  EXPECT_EQ(std::tuple(v.overlays.mainLeft, v.overlays.mainTop, v.mainWidth, t.player.window.width),
            std::tuple(1200, 900, 5505, 360));
  EXPECT_EQ(v.caption, u"QUILLON: " + t.st.s.videoFile + u" - 25FPS");
}

TEST(TagCurrentFile, TypedTimesBecomeTheWindowAndEmptyOrBadAnswersLeaveIt) {
  TransportStation t;
  t.openTaggedVideo(60);
  t.ui.inputs = {u"", u"10:00:01:00", u"junk"};
  tagcurrentfile(t.st);
  EXPECT_TRUE(t.st.view.LabTimecode.visible && t.st.view.LabCom.visible && t.st.view.LabDur.visible);
  tagcurrentfile(t.st);
  EXPECT_DOUBLE_EQ(t.st.s.tcStart, 3600);
  EXPECT_EQ(t.ui.boxes.size(), 1u);  // the converter's own complaint
  // The default of the second box is the first answer carried to the end.
  EXPECT_EQ(t.ui.inputPrompts.size(), 3u);

  // A player that does not move still reaches the boxes.
  t.player.failing.insert("run");
  t.ui.inputs = {u"100001", u"10005915"};
  tagcurrentfile(t.st);
  EXPECT_EQ(std::vector(t.ui.inputPrompts.begin() + 3, t.ui.inputPrompts.end()),
            (std::vector<u16>{u"Enter initial timecode...", u"Enter final timecode ..."}));
  // The first frame shown was a second into the file.
  EXPECT_EQ(std::tuple(t.st.s.tcStart, t.st.s.tcEnd), std::tuple(36000.0, 36000 + 59 + 15.0 / 25 + 5));
  EXPECT_EQ(t.st.view.LabCom.caption + t.st.view.LabDur.caption, u"10:00:01:0010:01:04:15");
  EXPECT_FALSE(t.st.s.g_fVideoRun);
}

}  // namespace
}  // namespace quillon
