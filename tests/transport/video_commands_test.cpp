#include <gtest/gtest.h>

#include "doubles/simulated_player.h"
#include "support/station_fixture.h"
#include "transport/video_commands.h"

namespace quillon {
namespace {

struct PlayerStation : testing::TestStation {
  PlayerStation() : TestStation(25), player([this] { return ui.clock; }) {
    st.player = &player;
    player.fileDuration = 120;
    player.renderFile("clip.mp4");
    st.s.videoFile = u"clip.mp4";
    st.s.videoDuration = 120;
    st.s.tcEnd = 120;
  }
  SimulatedPlayer player;
};

TEST(Seeking, IraLimitsThePositionAndRefreshesTheDisplay) {
  PlayerStation t;
  for (auto [to, at] : {std::pair{-3.0, 0.0}, {500.0, 120.0}}) {
    ira(t.st, to);
    EXPECT_EQ(t.st.s.g_dblPosActual, at);
  }
  ira(t.st, 62.5);
  EXPECT_EQ(t.player.currentPosition(), 62.5);
  EXPECT_EQ(t.st.view.LabTimecode.caption, u"00:01:02:13");
  EXPECT_EQ(t.st.view.slVideo.value, 62);  // half to even
  t.st.s.timecodeInClipboard = true;
  ira(t.st, 1);
  EXPECT_EQ(t.ui.clip, u"00:00:01:00");
}

TEST(Audio, TrackAndMuteDriveTheBalanceVolumeAndChecks) {
  PlayerStation t;
  installTransport(t.st);
  t.st.trackCommand(t.st, u'L');
  EXPECT_EQ(t.player.balance(), -10000);
  EXPECT_TRUE(t.st.view.menu("mnu_vid_track_l").checked);
  applyTrack(t.st, u'S');
  applyTrack(t.st, u'Q');  // no such track: stereo stays
  EXPECT_EQ(t.player.balance(), 0);
  EXPECT_FALSE(t.st.view.menu("mnu_vid_track_l").checked);
  EXPECT_TRUE(t.st.view.menu("mnu_vid_track_st").checked);
  toggleMute(t.st);
  EXPECT_TRUE(t.st.s.muteOn);
  EXPECT_EQ(t.player.volume(), -10000);
  toggleMute(t.st);
  EXPECT_EQ(t.player.volume(), 0);
}

}  // namespace
}  // namespace quillon
