#include "transport/pedal.h"

#include "transport/video_commands.h"

namespace quillon {

void onCommEvent(Station& st, CommEvent ev) {
  st.s.lastfootpedalevent = static_cast<int16_t>(ev);
  st.view.Timer2.setEnabled(true, st.ui.timeOfDay());
}

void deliverPedalEvents(Station& st) {
  if (!st.port) return;
  CommEvent ev;
  while (st.port->takeEvent(ev)) onCommEvent(st, ev);
}

CommEvent settlePedal(Station& st) {
  st.view.Timer2.setEnabled(false, st.ui.timeOfDay());
  return static_cast<CommEvent>(st.s.lastfootpedalevent);
}

void timer2Tick(Station& st) {
  const CommEvent ev = settlePedal(st);
  if (!videoOpen(st)) return;
  switch (ev) {
    case CommEvent::comEvCTS: jump(st, st.s.footpedaljump); break;
    case CommEvent::comEvDSR:
      st.ui.setPointer(Pointer::Default);
      togglePlay(st);
      break;
    case CommEvent::comEvCD: jump(st, -st.s.footpedaljump); break;
    default: break;
  }
}

void mnu_footpedalcom(Station& st, int port) {
  const u16 n = numberText(port);
  if (!st.port || !st.port->open(port)) {
    critical(st.ui, u"An error occured trying to open serial port COM" + n + u".");
    return;
  }
  for (int i = 1; i <= 4; ++i) st.view.menu("mnu_footpedalcom" + std::to_string(i)).checked = i == port;
  msgBox(st.ui, u"Serial Port COM" + n + u" opened for foot pedal communications.", Buttons::OK, Icon::Information);
}

void mnu_footpedaljump(Station& st) {
  auto answer = st.ui.inputBox(u"Enter jump time when pressing FWD and REW pedals", g_appTitle,
                               numberText(st.s.footpedaljump));
  if (!answer || answer->empty()) return;
  double seconds = leadingNumber(*answer);
  if (seconds < 0 || seconds > 30) seconds = 5;
  st.s.footpedaljump = seconds;
}

}  // namespace quillon
