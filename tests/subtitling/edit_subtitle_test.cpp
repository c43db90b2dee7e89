#include <gtest/gtest.h>

#include "subtitling/editing_commands.h"
#include "subtitling/playing_station.h"
#include "subtitling/timing_loop.h"

namespace quillon::testing {
namespace {

const u16 kScript = u"SUB[0 N 00:00:01:00>00:00:03:00]\rOne\r\r"
                    u"SUB[1R1 00:00:04:00>00:00:06:00] note\rTwo first\rtwo second\r\r"
                    u"SUB[0 N 00:00:08:00>00:00:09:00]\rThree\r\r";

struct Edit : ::testing::Test {
  PlayingStation t;
  FormaSubState shown;
  LabelState com, dur;
  void SetUp() override {
    installTimingCommands(t.st);
    t.st.s.minInterleave = 2;
    t.open(kScript);
    t.cursorAt(u"SUB[1R1");
  }
  // On the first turn of the wait: what the edit shows, then the keys.
  void keys(std::function<void(Session&, ViewState&)> press) {
    t.ui.onPump = [this, press] {
      if (!t.st.s.g_fedit) return;
      shown = t.st.view.overlays.FormaSub;
      com = t.st.view.LabCom;
      dur = t.st.view.LabDur;
      press(t.st.s, t.st.view);
    };
  }
};

TEST_F(Edit, ShowsTheSubtitleItsTimesAndItsBounds) {
  keys([](Session& s, ViewState&) { s.g_fedit = false; });
  mnu_sub_edit(t.st);
  EXPECT_EQ(overlay(shown),
            "shown at 60,3650 height 700 | Two first c0c0c0 italic align 3 | two second c0c0c0 align 3");
  EXPECT_EQ(com.caption, u"00:00:04:00");
  EXPECT_EQ(dur.caption, u"00:00:06:00");
  const Session& s = t.st.s;
  EXPECT_TRUE(s.editingcueout);
  EXPECT_EQ(s.miItalStyle, u"1");
  EXPECT_EQ(s.ultimaposenpantalla, 1);
  EXPECT_DOUBLE_EQ(s.lowerlimit, 3.0 + 3 * 0.04);  // interleave and one frame
  EXPECT_DOUBLE_EQ(s.upperlimit, 8.0 - 3 * 0.04);
  EXPECT_DOUBLE_EQ(s.g_dblPosActual, 6.0);  // waiting on the cue-out
}

// Enter writes the labels into the tag and the table, with the alignment
// key pressed, else the subtitle's own, whatever the last run left behind;
// Esc leaves everything as it was, the blinking label shown again.
TEST_F(Edit, EnterSavesTheLabelsAndEscapeLeavesThem) {
  const struct {
    const char16_t* tag;
    const char16_t* leftOver;
    const char16_t* pressed;
    bool enter;
    const char16_t* written;
  } cases[] = {
      {u"SUB[2LN ", u"C", nullptr, true, u"SUB[2LN 00:00:04:10>00:00:06:15]"},
      {u"SUB[2 N ", u"R", nullptr, true, u"SUB[2 N 00:00:04:10>00:00:06:15]"},
      {u"SUB[2RN ", u"L", nullptr, true, u"SUB[2RN 00:00:04:10>00:00:06:15]"},
      {u"SUB[2LN ", u"C", u"R", true, u"SUB[2RN 00:00:04:10>00:00:06:15]"},
      {u"SUB[2LN ", u"C", u"R", false, u"SUB[2LN 00:00:04:00>00:00:06:00]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(toUtf8(c.written));
    t.open(u"SUB[0 N 00:00:01:00>00:00:03:00]\rOne\r\r" + u16(c.tag) + u"00:00:04:00>00:00:06:00]\rText\r\r");
    t.cursorAt(c.tag);
    t.st.s.ultimaposhcc = c.leftOver;
    keys([&](Session& s, ViewState& v) {
      v.LabCom.caption = u"00:00:04:10";
      v.LabDur.caption = u"00:00:06:15";
      v.LabDur.visible = false;  // caught mid-blink
      if (c.pressed) s.ultimaposhcc = c.pressed;
      s.saveedittiming = c.enter;
      s.g_fedit = false;
    });
    mnu_sub_edit(t.st);
    EXPECT_EQ(t.content(), u"SUB[0 N 00:00:01:00>00:00:03:00]\rOne\r\r" + u16(c.written) + u"\rText\r\r");
    EXPECT_DOUBLE_EQ(t.st.s.scan.cueIn[2], c.enter ? 4.4 : 4.0);
    EXPECT_DOUBLE_EQ(t.st.s.scan.cueOut[2], c.enter ? 6.6 : 6.0);
    EXPECT_FALSE(t.st.s.saveedittiming);
    EXPECT_TRUE(windowRestored(t.st));
    EXPECT_FALSE(t.st.view.Timer4.enabled);
    EXPECT_TRUE(t.st.view.LabDur.visible);
  }
}

}  // namespace
}  // namespace quillon::testing
