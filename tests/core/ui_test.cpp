#include <gtest/gtest.h>

#include "doubles/scripted_ui.h"

namespace quillon {
namespace {

TEST(EventPumpWaits, WaitPumpsUntilTheClockHasMoved) {
  ScriptedUi ui;
  ui.pumpStep = 0.25;
  double start = ui.timeOfDay();
  waitSeconds(ui, 2);
  EXPECT_EQ(ui.pumps, 8);
  EXPECT_GE(ui.timeOfDay(), start + 2);
  waitSeconds(ui, 0);
  EXPECT_EQ(ui.pumps, 8);
}

TEST(ScriptedAnswers, QueueFirstThenTheDefaultButton) {
  ScriptedUi ui;
  ui.answers.push_back(Answer::No);
  EXPECT_EQ(msgBox(ui, u"First?", Buttons::YesNo, Icon::Question), Answer::No);
  EXPECT_EQ(msgBox(ui, u"Second?", Buttons::YesNo, Icon::Critical, 2), Answer::No);
  EXPECT_EQ(msgBox(ui, u"Third?", Buttons::YesNo, Icon::Critical), Answer::Yes);
  ASSERT_EQ(ui.boxTexts(), (std::vector<u16>{u"First?", u"Second?", u"Third?"}));
  EXPECT_EQ(ui.boxes[1].box.defaultButton, 2);
  EXPECT_EQ(ui.boxes[0].box.title, u"QUILLON");
}

}  // namespace
}  // namespace quillon
