// quillon-cli pedal: the USB foot pedals the station would list, or one of
// them watched, each settled event printed as the station would act on it,
// so that an operator can try a pedal without a video.
#ifdef HAVE_QUILLON_INPUT

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <thread>

#include "cli/command.h"
#include "transport/input/linux_pedal_input.h"
#include "transport/input_pedal.h"
#include "transport/pedal.h"

namespace quillon::cli {

namespace {

constexpr auto kLook = std::chrono::milliseconds(10);

std::string accessNote(LinuxPedalInput& in, const std::string& path) {
  if (access(path.c_str(), R_OK) == 0) return {};
  const std::string group = in.readerGroup(path);
  return group.empty() ? "\tonly root may read it: give it a udev rule (see the README)"
                       : "\tmay not be read: join the group " + group;
}

int listPedals(Invocation& inv, LinuxPedalInput& in) {
  const std::vector<PedalDeviceInfo> pedals = in.devices();
  if (pedals.empty()) inv.out << "No USB foot pedal found.\n";
  for (const PedalDeviceInfo& d : pedals) {
    char id[16];
    std::snprintf(id, sizeof id, "%04x:%04x", d.vendor, d.product);
    inv.out << d.path << '\t' << d.name << '\t' << id << accessNote(in, d.path) << '\n';
  }
  return kExitOk;
}

int watchPedal(Invocation& inv, LinuxPedalInput& in, const std::string& path, double seconds) {
  Station& st = inv.st;
  st.pedalInput = &in;
  st.s.options["pedal.device"] = path;
  switch (in.open(path)) {
    case PedalOpen::Opened: break;
    case PedalOpen::Missing: return inv.fail("no pedal at " + path);
    case PedalOpen::NotPermitted: {
      const std::string group = in.readerGroup(path);
      const std::string advice =
          group.empty() ? "only root may (see the README for a udev rule)" : "join the group " + group;
      return inv.fail("you may not read " + path + ": " + advice);
    }
    case PedalOpen::Failed: return inv.fail("cannot read " + path);
  }
  // A pipe or a file ends with what was written into it; a device may be
  // unplugged and come back.
  struct stat node {};
  const bool feed = ::stat(path.c_str(), &node) == 0 && !S_ISCHR(node.st_mode);
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  bool saidGone = false;
  for (;;) {
    deliverInputPedalEvents(st);
    const TimerState& t2 = st.view.Timer2;
    if (t2.enabled && st.ui.timeOfDay() >= t2.due) inv.out << pedalActionText(settlePedal(st)) << std::endl;
    if (!in.isOpen()) {
      if (feed && !t2.enabled) break;
      if (!feed && !saidGone) inv.err << "quillon-cli: the pedal is unplugged; waiting for it" << std::endl;
      saidGone = true;
    } else {
      saidGone = false;
    }
    if (!feed) watchPedalInput(st);
    if (seconds > 0 && std::chrono::steady_clock::now() >= end) break;
    std::this_thread::sleep_for(kLook);
  }
  return kExitOk;
}

int runPedal(Invocation& inv) {
  std::string device, secondsText, map, error;
  const bool hasDevice = inv.takeOption("--device", device, error);
  if (error.empty()) inv.takeOption("--seconds", secondsText, error);
  if (error.empty()) inv.takeOption("--map", map, error);
  if (!error.empty() || inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (!inv.args.empty()) return inv.fail("pedal takes no arguments (see pedal --help)");
  if (!hasDevice && (!secondsText.empty() || !map.empty())) return inv.fail("--seconds and --map go with --device");
  double seconds = 0;
  if (!secondsText.empty()) {
    char* rest = nullptr;
    seconds = std::strtod(secondsText.c_str(), &rest);
    if (*rest != '\0' || seconds <= 0) return inv.fail("--seconds wants a number above 0, got '" + secondsText + "'");
  }
  if (!map.empty()) {
    if (parsePedalMap(map).empty()) return inv.fail("--map wants 5, 4, 3 or 0 per switch, such as 5,4,3");
    inv.st.s.options["pedal.map"] = map;
  }
  LinuxPedalInput in;
  if (!hasDevice) return listPedals(inv, in);
  return watchPedal(inv, in, device, seconds);
}

const CommandRegistrar reg({"pedal",
                            "pedal [--device PATH [--seconds N] [--map 5,4,3]]",
                            "List the USB foot pedals, or watch one and print each event it gives.", runPedal});

}  // namespace
}  // namespace quillon::cli

#endif
