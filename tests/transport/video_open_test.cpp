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
  // It plays at once, with the slider focused.
  EXPECT_EQ(std::tuple(v.menu("mnu_sub").enabled, s.g_fVideoRun, t.player.running(), v.overlays.focus, t.ui.boxes.size()),
            std::tuple(true, true, true, std::string("slVideo"), 0u));
  EXPECT_EQ(s.qcOutputName, fromUtf8(path.substr(0, path.size() - 4)) + u" - QC.avi");
}

TEST(OpenVideo, QuickTimeTestIsCaseSensitive) {
  TransportStation t;
  t.player.fileStartTimecode = 3610;
  // Lower-case "mov": thirty frames and the embedded start timecode.
  abrirvideo(t.st, quoted(videoFile("a.mov", std::string(30, 'q'))));
  // Stereo, with the window from the embedded timecode.
  EXPECT_EQ(std::tuple(t.st.s.g_fps, t.st.s.tcStart, t.st.s.tcEnd, t.player.balance()),
            std::tuple(30, 3610.0, 3670.0, 0));

  // "MOV" is not QuickTime to the test: its tag decides.
  abrirvideo(t.st, quoted(videoFile("b.MOV", "\"C00000000000100000\"\r\n")));
  EXPECT_EQ(std::tuple(t.st.s.g_fps, t.st.s.tcStart, t.player.balance()), std::tuple(24, 0.0, 10000));
}

TEST(OpenVideo, CommandLineLosesItsFirstAndLastCharacters) {
  TransportStation t;
  const std::string path = videoFile("c.avi", "\"N00000000000100000\"\r\n");
  // Unquoted, the path loses real letters and the file is not found: no word.
  abrirvideo(t.st, fromUtf8(path));
  EXPECT_EQ(t.st.s.videoFile, fromUtf8(path.substr(1, path.size() - 2)));
  EXPECT_FALSE(videoOpen(t.st) || !t.ui.boxes.empty());
}

TEST(OpenVideo, DialogCancelLeavesEverythingAndSuccessKeepsTheFolder) {
  TransportStation t;
  t.openTaggedVideo();
  const u16 before = t.st.s.videoFile;
  t.ui.openPaths.push_back(std::nullopt);
  abrirvideo(t.st, u"");
  EXPECT_EQ(t.st.s.videoFile, before);
  EXPECT_EQ(t.ui.openRequests.back().title + u"|" + t.ui.openRequests.back().filter, u"Open video file|" u"Media files|*.avi;*.wmv;*.asf;*.mov;*.mpg;*.mpeg|All files|*.*");

  const std::string other = videoFile("d.avi", "\"N00000000000100000\"\r\n");
  t.ui.openPaths.push_back(other);
  abrirvideo(t.st, u"");
  EXPECT_EQ(std::tuple(t.st.s.videoFile, t.st.s.g_fps), std::tuple(fromUtf8(other), 30));
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

  for (auto [checked, rate] : {std::pair{true, 0.9}, {false, 1.0}}) {
    mnu_vid_slo_set(t.st);
    EXPECT_EQ(std::tuple(t.st.view.menu("mnu_vid_vel_slo").checked, t.player.rate()), std::tuple(checked, rate));
  }
  toggleMute(t.st);
  EXPECT_EQ(t.player.volume(), -10000);
}

TEST(TagCurrentFile, TypedTimesBecomeTheWindowAndEmptyOrBadAnswersLeaveIt) {
  TransportStation t;
  t.openTaggedVideo(60);
  t.ui.inputs = {u"", u"10:00:01:00", u"junk"};
  tagcurrentfile(t.st);
  EXPECT_TRUE(t.st.view.LabTimecode.visible && t.st.view.LabCom.visible && t.st.view.LabDur.visible);
  tagcurrentfile(t.st);
  // The converter's own complaint; the default of the second box is the first answer.
  EXPECT_EQ(std::tuple(t.st.s.tcStart, t.ui.boxes.size(), t.ui.inputPrompts.size()), std::tuple(3600.0, 1u, 3u));

  // A player that does not move still reaches the boxes.
  t.player.failing.insert("run");
  t.ui.inputs = {u"100001", u"10005915"};
  tagcurrentfile(t.st);
  EXPECT_EQ(std::vector(t.ui.inputPrompts.begin() + 3, t.ui.inputPrompts.end()),
            (std::vector<u16>{u"Enter initial timecode...", u"Enter final timecode ..."}));
  // The first frame shown was a second into the file.
  EXPECT_EQ(std::tuple(t.st.s.tcStart, t.st.s.tcEnd, t.st.s.g_fVideoRun), std::tuple(36000.0, 36000 + 59 + 15.0 / 25 + 5, false));
  EXPECT_EQ(t.st.view.LabCom.caption + t.st.view.LabDur.caption, u"10:00:01:0010:01:04:15");
}

}  // namespace
}  // namespace quillon
