#include <gtest/gtest.h>

#include "core/session.h"
#include "core/timecode.h"
#include "core/view_state.h"
#include "doubles/scripted_ui.h"

namespace quillon {
namespace {

TEST(TimecodeReading, AcceptsTheRangesAndRefusesWithOneMessage) {
  ScriptedUi ui;
  EXPECT_DOUBLE_EQ(TCaSEG(u"24:00:00:00", 30, ui), 86400);
  EXPECT_DOUBLE_EQ(TCaSEG(u"00:00:00:25", 30, ui), 25.0 / 30);
  EXPECT_DOUBLE_EQ(TCaSEG(u"01:02:03:04", 25, ui), 3723 + 4.0 / 25);
  EXPECT_TRUE(ui.boxes.empty());

  for (const char16_t* bad : {u"25:00:00:00", u"AB:00:00:00", u"1:00:00:00", u"00:60:00:00", u"00:00:00:30"})
    EXPECT_EQ(TCaSEG(bad, 30, ui), -1) << toUtf8(bad);
  EXPECT_EQ(TCaSEG(u"00:00:00:25", 25, ui), -1);
  ASSERT_EQ(ui.boxes.size(), 6u);
  EXPECT_EQ(ui.boxes[0].box.text, u"Error in time code format: [25:00:00:00]");
  EXPECT_EQ(ui.boxes[0].box.icon, Icon::Critical);
  EXPECT_EQ(ui.boxes[0].box.title, u"QUILLON");
  EXPECT_EQ(ui.boxes[2].box.text, u"Error in time code format: [1:00:00:00]");
}

TEST(TimecodeReading, SeparatorsAreNeverLookedAt) {
  ScriptedUi ui;
  EXPECT_DOUBLE_EQ(TCaSEG(u"00:01:00;00", 30, ui), 60);
  EXPECT_DOUBLE_EQ(TCaSEG(u"01;02.03,04", 30, ui), 3723 + 4.0 / 30);
  EXPECT_TRUE(ui.boxes.empty());
}

TEST(TimecodeReading, FractionalFormHasItsOwnRangesAndMessage) {
  ScriptedUi ui;
  EXPECT_DOUBLE_EQ(TCAaSEG(u"1:02:03.456", ui), 3723.456);
  EXPECT_EQ(TCAaSEG(u"0:00:60.000", ui), -1);
  EXPECT_EQ(TCAaSEG(u"10:00:00.000", ui), -1);
  ASSERT_EQ(ui.boxes.size(), 2u);
  EXPECT_EQ(ui.boxes[0].box.text, u"Error in time code format SSA: [0:00:60.000]");
}

TEST(TimecodeFormatting, FrameLabelRepairAtThirtyFps) {
  EXPECT_EQ(SEGaTC(60.01, 30), u"00:01:00:02");
  EXPECT_EQ(SEGaTC(60.0, 30), u"00:01:00:00");
  EXPECT_EQ(SEGaTC(600.01, 30), u"00:10:00:00");
  EXPECT_EQ(SEGaTC(60 + 1.0 / 30 + 0.001, 30), u"00:01:00:02");  // label 01 is dropped too
  EXPECT_EQ(SEGaTC(61 + 1.0 / 30, 30), u"00:01:01:01");            // only the minute's first second
  EXPECT_EQ(SEGaTC(0.99, 30), u"00:00:00:29");
  EXPECT_EQ(SEGaTCback09(60.01, 30), u"00:01:00:00");
  EXPECT_EQ(SEGaTCback09(0.99, 30), u"00:00:00:29");
}

TEST(TimecodeFormatting, FramesThatRoundUpStickAtTheLastFrame) {
  EXPECT_EQ(SEGaTC(0.99, 25), u"00:00:00:24");
  EXPECT_EQ(SEGaTC(0.99, 24), u"00:00:00:23");
  EXPECT_EQ(SEGaTC(3661.5, 25), u"01:01:01:13");  // 12.5 frames round half away from zero
  EXPECT_EQ(SEGaTC8(0.99, 25), u"00000024");
  EXPECT_EQ(SEGaTC8(0.99, 24), u"00000024");
  EXPECT_EQ(SEGaTC8(3723.5, 30), u"01020315");
}

TEST(TimecodeFormatting, ZeroAndNegativeGiveTheZeroText) {
  for (double r : {0.0, -1.0, -3600.5}) {
    EXPECT_EQ(SEGaTC(r, 30), u"00:00:00:00");
    EXPECT_EQ(SEGaTCA(r), u"0:00:00:00");
    EXPECT_EQ(SEGaTCV(r), u"0:00:00.000");
    EXPECT_EQ(SEGaTC8(r, 25), u"00000000");
  }
}

TEST(TimecodeFormatting, HoursGrowPastTwoDigits) {
  ScriptedUi ui;
  EXPECT_EQ(SEGaTC(359999, 25), u"99:59:59:00");
  u16 big = SEGaTC(360000, 25);
  EXPECT_EQ(big, u"100:00:00:00");
  EXPECT_EQ(TCaSEG(big, 25, ui), -1);
}

TEST(TimecodeFormatting, HundredthsAndThousandthsKeepTheirAsymmetry) {
  EXPECT_EQ(SEGaTCA(1.5), u"0:00:01:50");
  EXPECT_EQ(SEGaTCA(0.999), u"0:00:00:99");
  EXPECT_EQ(SEGaTCV(1.0), u"0:00:01:00");
  EXPECT_EQ(SEGaTCV(1.5), u"0:00:01.500");
  EXPECT_EQ(SEGaTCV(59.9996), u"0:00:59.999");
  EXPECT_EQ(SEGaTCV(3723.004), u"1:02:03.004");
}

TEST(TimecodeFrames, HourAndMinuteWeightsAreFixed) {
  for (int fps : {24, 25, 30}) EXPECT_EQ(TCaFRAMES(u"01:00:00:00", fps), 90000);
  EXPECT_EQ(TCaFRAMES(u"00:01:02:03", 30), 1500 + 60 + 3);
  EXPECT_EQ(TCaFRAMES(u"00:00:00:30", 30), -1);
  EXPECT_EQ(TCaFRAMES(u"0:00:00:00", 30), -1);
  EXPECT_DOUBLE_EQ(FRAMESaSEG(15, 0), 0);
}

TEST(TimecodeWindow, MapsThePlayerClockOntoTheVideoTimecodeAndBack) {
  Session s;
  s.videoFile = u"clip.mp4";
  s.videoDuration = 30;
  s.tcStart = 3600;
  s.tcEnd = 3660;
  s.g_dblPosActual = 15;
  EXPECT_DOUBLE_EQ(transformadaTCactual(s), 3630);
  EXPECT_DOUBLE_EQ(transformadainversa(s, 3630), 15);
  s.videoFile.clear();
  EXPECT_EQ(transformadainversa(s, 3630), 0);
  s.videoDuration = 0;
  EXPECT_EQ(transformadaTCactual(s), 0);
}

TEST(TimecodeWindow, WindowStringSetsStartEndAndLabels) {
  Session s;
  ViewState v;
  s.g_fps = 25;
  s.videoDuration = 120;
  setVideoTimecodeWindow(s, v, u"1000000010020000");
  EXPECT_DOUBLE_EQ(s.tcStart, 36000);
  EXPECT_DOUBLE_EQ(s.tcEnd, 36120);
  EXPECT_EQ(v.LabCom.caption, u"10:00:00:00");
  EXPECT_EQ(v.LabDur.caption, u"10:02:00:00");
  EXPECT_EQ(v.LabTimecode.caption, u"10:00:00:00");

  for (const char16_t* w : {u"", u"0000000000000000", u"10000000xx020000"}) {
    setVideoTimecodeWindow(s, v, w);
    EXPECT_EQ(s.tcStart, 0) << toUtf8(w);
    EXPECT_EQ(s.tcEnd, 120) << toUtf8(w);
  }
}

}  // namespace
}  // namespace quillon
