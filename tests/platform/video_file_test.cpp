// What the station learns of a video before it plays: the QuickTime start
// timecode and the file tag.
#include <gtest/gtest.h>

#include "core/session.h"
#include "core/timecode.h"
#include "core/view_state.h"
#include "sample_media.h"
#include "transport/file_tag.h"
#include "transport/mpv/quicktime_timecode.h"

namespace quillon {
namespace {

TEST(QuickTimeTimecode, TimecodeTrackGivesTheStartInSeconds) {
  QUILLON_SAMPLE_OR_SKIP(mov, "start.mov");
  EXPECT_DOUBLE_EQ(readQuickTimeStartTimecode(mov, 30), 3600);

  QuickTimeTimecodeReader reader;
  EXPECT_EQ(reader.InitializePlayer(mov, 30), 0);
  EXPECT_DOUBLE_EQ(reader.GetTC(), 3600);
  reader.StopPlayer();
  reader.CleanPlayer();
  EXPECT_DOUBLE_EQ(reader.GetTC(), 0);
}

TEST(QuickTimeTimecode, FileWithoutOneGivesZero) {
  QUILLON_SAMPLE_OR_SKIP(mp4, "pattern.mp4");
  QUILLON_SAMPLE_OR_SKIP(avi, "tagged.avi");
  EXPECT_DOUBLE_EQ(readQuickTimeStartTimecode(mp4, 30), 0);
  EXPECT_DOUBLE_EQ(readQuickTimeStartTimecode(avi, 30), 0);
  QuickTimeTimecodeReader reader;
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

  Session s;
  ViewState view;
  s.g_fps = 30;
  s.videoDuration = 5;
  applyFileTag(s, view, *tag);
  EXPECT_EQ(s.g_fps, 25);
  EXPECT_TRUE(view.menu("mnu_PAL").checked);
  setVideoTimecodeWindow(s, view, mid(*tag, 3, 16));
  EXPECT_DOUBLE_EQ(s.tcStart, 36000);
  EXPECT_DOUBLE_EQ(s.tcEnd, 36005);
  EXPECT_EQ(view.LabDur.caption, u"10:00:05:00");
}

}  // namespace
}  // namespace quillon
