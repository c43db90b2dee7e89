// What the station learns of a video before it plays: the QuickTime start
// timecode and the file tag.
#include <gtest/gtest.h>

#include "sample_media.h"
#include "transport/file_tag.h"
#include "transport/mpv/quicktime_timecode.h"

namespace quillon {
namespace {

TEST(QuickTimeTimecode, TimecodeTrackGivesTheStartInSecondsAndOtherFilesZero) {
  QUILLON_SAMPLE_OR_SKIP(mov, "start.mov");
  EXPECT_DOUBLE_EQ(readQuickTimeStartTimecode(mov, 30), 3600);

  QuickTimeTimecodeReader reader;
  EXPECT_EQ(reader.InitializePlayer(mov, 30), 0);
  EXPECT_DOUBLE_EQ(reader.GetTC(), 3600);
  reader.StopPlayer();
  reader.CleanPlayer();
  EXPECT_DOUBLE_EQ(reader.GetTC(), 0);
  // A file without one gives zero.
  QUILLON_SAMPLE_OR_SKIP(avi, "tagged.avi");
  EXPECT_DOUBLE_EQ(readQuickTimeStartTimecode(avi, 30), 0);
  EXPECT_EQ(reader.InitializePlayer("/nonexistent/clip.mov", 30), -1);
  EXPECT_DOUBLE_EQ(reader.GetTC(), 0);
}

TEST(QuickTimeTimecode, TagTextToSeconds) {
  EXPECT_DOUBLE_EQ(quickTimeTimecodeSeconds("01:00:00:15", 30), 3600.5);
  EXPECT_DOUBLE_EQ(quickTimeTimecodeSeconds("00:59:59;29", 30), 3599 + 29.0 / 30);
  EXPECT_DOUBLE_EQ(quickTimeTimecodeSeconds("10:00:00:12", 24), 36000.5);
  EXPECT_EQ(quickTimeTimecodeSeconds("", 30), -1);
  EXPECT_EQ(quickTimeTimecodeSeconds("01:00:00", 30), -1);
  EXPECT_EQ(quickTimeTimecodeSeconds("01:00:00:00x", 30), -1);
  EXPECT_EQ(quickTimeTimecodeSeconds("01-00-00-00", 30), -1);
}

TEST(VideoFileTag, GeneratedAviCarriesThePalWindow) {
  QUILLON_SAMPLE_OR_SKIP(avi, "tagged.avi");
  auto tag = readFileTag(avi);
  ASSERT_TRUE(tag);
  EXPECT_EQ(*tag, u"P01000000010000500");
}

}  // namespace
}  // namespace quillon
