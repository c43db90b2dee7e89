// What the station learns of a video before it plays: the QuickTime start
// timecode and the file tag.
#include <gtest/gtest.h>

#include "sample_media.h"
#include "transport/file_tag.h"
#include "transport/mpv/mpv_player.h"
#include "transport/mpv/quicktime_timecode.h"

namespace quillon {
namespace {

TEST(QuickTimeTimecode, TimecodeTrackOrTagGivesTheStartInSecondsAndOtherFilesZero) {
  EXPECT_DOUBLE_EQ(quickTimeTimecodeSeconds("01:00:00:15", 30), 3600.5);
  EXPECT_DOUBLE_EQ(quickTimeTimecodeSeconds("00:59:59;29", 30), 3599 + 29.0 / 30);
  EXPECT_DOUBLE_EQ(quickTimeTimecodeSeconds("10:00:00:12", 24), 36000.5);
  for (const char* bad : {"", "01:00:00", "01:00:00:00x", "01-00-00-00"})
    EXPECT_EQ(quickTimeTimecodeSeconds(bad, 30), -1) << bad;
  QUILLON_SAMPLE_OR_SKIP(mov, "start.mov");
  QUILLON_SAMPLE_OR_SKIP(avi, "tagged.avi");
  EXPECT_DOUBLE_EQ(readQuickTimeStartTimecode(mov, 30), 3600);
  EXPECT_DOUBLE_EQ(readQuickTimeStartTimecode(avi, 30), 0);
  MpvOptions headless;
  headless.videoOutput = headless.audioOutput = "null";
  MpvPlayer player(headless);
  EXPECT_DOUBLE_EQ(player.quickTimeStartTimecode(mov, 30), 3600);
  ASSERT_TRUE(player.renderFile(mov));
  EXPECT_NEAR(player.duration(), 5.0, 0.1);

  QuickTimeTimecodeReader reader;
  EXPECT_EQ(reader.InitializePlayer(mov, 30), 0);
  EXPECT_DOUBLE_EQ(reader.GetTC(), 3600);
  reader.StopPlayer();
  reader.CleanPlayer();
  EXPECT_DOUBLE_EQ(reader.GetTC(), 0);
  EXPECT_EQ(reader.InitializePlayer("/nonexistent/clip.mov", 30), -1);
  EXPECT_DOUBLE_EQ(reader.GetTC(), 0);
  EXPECT_EQ(readFileTag(avi).value_or(u""), u"P01000000010000500");
}

}  // namespace
}  // namespace quillon
