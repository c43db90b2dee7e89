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

}  // namespace
}  // namespace quillon
