#include "transport/timers.h"

#include "transport/input_pedal.h"
#include "transport/pedal.h"
#include "transport/video_commands.h"

namespace quillon {

namespace {

bool takeDue(TimerState& t, double now) {
  if (!t.enabled || now < t.due) return false;
  t.due = now + t.interval / 1000.0;
  return true;
}

}  // namespace

void fireDueTimers(Station& st) {
  deliverPedalEvents(st);
  deliverInputPedalEvents(st);
  watchPedalInput(st);
  ViewState& v = st.view;
  if (takeDue(v.Timer1, st.ui.timeOfDay())) timer1Tick(st);
  if (takeDue(v.Timer2, st.ui.timeOfDay())) timer2Tick(st);
  if (takeDue(v.Timer4, st.ui.timeOfDay())) timer4Tick(st);
}

void timer4Tick(Station& st) {
  ViewState& v = st.view;
  if (st.s.editingcueout) {
    v.LabCom.visible = true;
    v.LabDur.visible = !v.LabDur.visible;
  } else {
    v.LabDur.visible = true;
    v.LabCom.visible = !v.LabCom.visible;
  }
}

}  // namespace quillon
