// A station with a simulated player on the scripted clock, whose timers
// fire inside the event pump as the window's would.
#pragma once

#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "doubles/scripted_serial_port.h"
#include "doubles/simulated_player.h"
#include "support/station_fixture.h"
#include "transport/timers.h"
#include "transport/video_commands.h"
#include "transport/video_open.h"

namespace quillon::testing {

// A file of 4 KB ending with `tail`, in a fresh folder.
inline std::string videoFile(const std::string& name, const std::string& tail) {
  std::string path = tempDir("transport_" + name) + "/" + name;
  std::ofstream out(path, std::ios::binary);
  out << std::string(4096, 'x') << tail;
  return path;
}

struct TransportStation : TestStation {
  TransportStation() : TestStation(30), player([this] { return ui.clock; }) {
    st.player = &player;
    st.port = &port;
    installTransport(st);
    ui.onPump = [this] { fireDueTimers(st); };
  }
  // A tagged 120-second PAL video opened and paused at 0.
  void openTaggedVideo(double duration = 120) {
    player.fileDuration = duration;
    abrirvideo(st, u"\"" + fromUtf8(videoFile("clip.avi", "\"P00100000001020000\"\r\n")) + u"\"");
    pausevideo(st);
  }
  // Records the menu items the station clicks from here on.
  std::vector<std::string>& recordClicks() {
    st.clickMenu = [this](Station&, std::string_view item) { clicks.emplace_back(item); };
    return clicks;
  }
  // Pumps until the clock has gone `seconds` further.
  void run(double seconds) {
    const double end = ui.clock + seconds;
    while (ui.clock < end) ui.pumpEvents();
  }

  SimulatedPlayer player;
  ScriptedSerialPort port;
  std::vector<std::string> clicks;
};

}  // namespace quillon::testing
