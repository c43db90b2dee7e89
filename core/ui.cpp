#include "core/ui.h"

namespace quillon {

Answer msgBox(UserInterface& ui, const u16& text, Buttons b, Icon i, int defaultButton) {
  MessageBoxRequest box;
  box.text = text;
  box.buttons = b;
  box.icon = i;
  box.defaultButton = defaultButton;
  box.title = g_appTitle;
  return ui.messageBox(box);
}

void waitSeconds(UserInterface& ui, int seconds) {
  // Compared with the time of day as it reads, so a wait that crosses
  // midnight runs on as the original clock did; callers keep waits short.
  double start = ui.timeOfDay();
  while (ui.timeOfDay() < start + seconds) ui.pumpEvents();
}

}  // namespace quillon
