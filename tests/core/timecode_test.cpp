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
  EXPECT_DOUBLE_EQ(TCaSEG(u"01;02.03,04", 30, ui), 3723 + 4.0 / 30);  // separators are never looked at
  EXPECT_TRUE(ui.boxes.empty());

  for (const char16_t* bad : {u"25:00:00:00", u"AB:00:00:00", u"1:00:00:00", u"00:60:00:00", u"00:00:00:30"})
    EXPECT_EQ(TCaSEG(bad, 30, ui), -1) << toUtf8(bad);
  EXPECT_EQ(TCaSEG(u"00:00:00:25", 25, ui), -1);
  ASSERT_EQ(ui.boxes.size(), 6u);
  EXPECT_EQ(ui.boxes[0].box.text, u"Error in time code format: [25:00:00:00]");
  EXPECT_EQ(ui.boxes[0].box.icon, Icon::Critical);
  EXPECT_EQ(ui.boxes[2].box.text, u"Error in time code format: [1:00:00:00]");
}

TEST(TimecodeReading, FractionalFormHasItsOwnRangesAndMessage) {
  ScriptedUi ui;
  EXPECT_DOUBLE_EQ(TCAaSEG(u"1:02:03.456", ui), 3723.456);
  EXPECT_EQ(TCAaSEG(u"0:00:60.000", ui), -1);
  EXPECT_EQ(TCAaSEG(u"10:00:00.000", ui), -1);
  ASSERT_EQ(ui.boxes.size(), 2u);
  EXPECT_EQ(ui.boxes[0].box.text, u"Error in time code format SSA: [0:00:60.000]");
}

// Each form on its awkward inputs: the frame-label repair at 30 fps (only
// the first second of a minute, label 01 dropped too), frames that round up
// to the next second, zero and below, hours past two digits, hundredths and
// thousandths with their asymmetry, whole seconds.
TEST(TimecodeFormatting, EachFormOnItsEdges) {
  using Form = u16 (*)(double, int);
  const Form tc = SEGaTC, back09 = SEGaTCback09, tc8 = SEGaTC8;
  const Form hundredths = [](double r, int) { return SEGaTCA(r); };
  const Form thousandths = [](double r, int) { return SEGaTCV(r); };
  const struct {
    Form form;
    double seconds;
    int fps;
    const char16_t* text;
  } cases[] = {
      {tc, 60.01, 30, u"00:01:00:02"},          {tc, 60.0, 30, u"00:01:00:00"},
      {tc, 600.01, 30, u"00:10:00:00"},         {tc, 60 + 1.0 / 30 + 0.001, 30, u"00:01:00:02"},
      {tc, 61 + 1.0 / 30, 30, u"00:01:01:01"},  {tc, 0.99, 30, u"00:00:00:29"},
      {back09, 60.01, 30, u"00:01:00:00"},      {back09, 0.99, 30, u"00:00:00:29"},
      {tc, 0.99, 25, u"00:00:00:24"},           {tc, 0.99, 24, u"00:00:00:23"},
      {tc, 3661.5, 25, u"01:01:01:13"},         {tc8, 0.99, 25, u"00000024"},
      {tc8, 0.99, 24, u"00000024"},             {tc8, 3723.5, 30, u"01020315"},
      {tc, -3600.5, 30, u"00:00:00:00"},        {tc8, -1, 25, u"00000000"},
      {hundredths, -1, 0, u"0:00:00:00"},       {thousandths, 0, 0, u"0:00:00.000"},
      {tc, 359999, 25, u"99:59:59:00"},         {tc, 360000, 25, u"100:00:00:00"},
      {hundredths, 1.5, 0, u"0:00:01:50"},      {hundredths, 0.999, 0, u"0:00:00:99"},
      {thousandths, 1.0, 0, u"0:00:01:00"},     {thousandths, 1.5, 0, u"0:00:01.500"},
      {thousandths, 59.9996, 0, u"0:00:59.999"}, {thousandths, 3723.004, 0, u"1:02:03.004"},
      {back09, 60, 30, u"00:01:00:00"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.form(c.seconds, c.fps), c.text) << c.seconds << " at " << c.fps;
  ScriptedUi ui;
  EXPECT_EQ(TCaSEG(u"100:00:00:00", 25, ui), -1);  // what it writes past 99 hours it cannot read
}

TEST(TimecodeFrames, HourAndMinuteWeightsAreFixed) {
  for (int fps : {24, 25, 30}) EXPECT_EQ(TCaFRAMES(u"01:00:00:00", fps), 90000);
  EXPECT_EQ(TCaFRAMES(u"00:01:02:03", 30), 1500 + 60 + 3);
  EXPECT_EQ(TCaFRAMES(u"00:00:00:30", 30), -1);
  EXPECT_EQ(TCaFRAMES(u"0:00:00:00", 30), -1);
  EXPECT_DOUBLE_EQ(FRAMESaSEG(15, 0), 0);
}

TEST(TimecodeWindow, WindowStringSetsStartEndAndLabels) {
  Session s;
  ViewState v;
  s.g_fps = 25;
  s.videoDuration = 120;
  setVideoTimecodeWindow(s, v, u"1000000010020000");
  EXPECT_DOUBLE_EQ(s.tcStart, 36000);
  EXPECT_DOUBLE_EQ(s.tcEnd, 36120);
  EXPECT_EQ(v.LabDur.caption, u"10:02:00:00");

  for (const char16_t* w : {u"", u"0000000000000000", u"10000000xx020000"}) {
    setVideoTimecodeWindow(s, v, w);
    EXPECT_EQ(s.tcStart, 0) << toUtf8(w);
    EXPECT_EQ(s.tcEnd, 120) << toUtf8(w);
  }
}

}  // namespace
}  // namespace quillon
