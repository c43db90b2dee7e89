#include "transport/input_pedal.h"

#include "core/pedal_input.h"
#include "transport/pedal.h"

namespace quillon {

namespace {

constexpr const char* kDeviceKey = "pedal.device";
constexpr const char* kMapKey = "pedal.map";
constexpr const char* kPortMenu = "mnu_footpedalport";
constexpr CommEvent kNoEvent = static_cast<CommEvent>(0);

std::string itemName(size_t index) { return "mnu_footpedalusb" + std::to_string(index + 1); }

std::string mapText(const std::vector<CommEvent>& map) {
  std::string text;
  for (CommEvent ev : map) text += (text.empty() ? "" : ",") + std::to_string(static_cast<int>(ev));
  return text;
}

// Menu captions take '&' for the access key; a name keeps its own.
u16 menuText(const std::string& text) {
  u16 out;
  for (char16_t c : fromUtf8(text)) {
    if (c == u'&') out += u'&';
    out += c;
  }
  return out;
}

void markOpenPedal(Station& st) {
  const bool open = st.pedalInput->isOpen();
  const std::string path = st.pedalInput->openPath();
  for (size_t i = 0; i < st.s.pedalDevices.size(); ++i)
    st.view.menu(itemName(i)).checked = open && st.s.pedalDevices[i].path == path;
}

void listPedalDevices(Station& st) {
  std::vector<PedalDeviceInfo> found = st.pedalInput->devices();
  if (found.size() > static_cast<size_t>(kMaxListedPedals)) found.resize(kMaxListedPedals);
  std::vector<std::pair<std::string, u16>> items;
  for (size_t i = 0; i < found.size(); ++i) items.emplace_back(itemName(i), u"USB pedal: " + menuText(found[i].name));
  st.s.pedalDevices = std::move(found);
  st.view.setGainedItems(kPortMenu, items);
}

// The chosen pedal's node: a path as written in the options, or the node
// the chosen pedal has now.
std::string chosenPath(const Station& st) {
  auto it = st.s.options.find(kDeviceKey);
  if (it == st.s.options.end() || it->second.empty()) return {};
  if (it->second[0] == '/') return it->second;
  for (const PedalDeviceInfo& d : st.s.pedalDevices)
    if (d.identity() == it->second) return d.path;
  return {};
}

void openChosenPedal(Station& st) {
  if (st.pedalInput->isOpen()) return;
  const std::string path = chosenPath(st);
  if (!path.empty()) st.pedalInput->open(path);
}

u16 notPermittedText(const PedalDeviceInfo& d, const std::string& group) {
  const u16 who = u"You may not read the foot pedal " + fromUtf8(d.name) + u" (" + fromUtf8(d.path) + u").";
  if (group.empty() || group == "root")
    return who + u" Only root may read it: give it a udev rule that lets the group input read it "
                 u"(see the README), then plug it in again.";
  const u16 g = fromUtf8(group);
  return who + u" Join the group " + g + u" (sudo usermod -aG " + g + u" $USER), then log out and in again.";
}

}  // namespace

std::vector<CommEvent> parsePedalMap(std::string_view text) {
  std::vector<CommEvent> map;
  size_t at = 0;
  while (at < text.size()) {
    if (text[at] == ',' || text[at] == ' ') {
      ++at;
      continue;
    }
    const char c = text[at];
    const bool alone = at + 1 == text.size() || text[at + 1] == ',' || text[at + 1] == ' ';
    if (!alone || (c != '0' && c != '3' && c != '4' && c != '5')) return {};
    map.push_back(static_cast<CommEvent>(c - '0'));
    ++at;
  }
  if (map.size() > static_cast<size_t>(kMaxListedPedals)) return {};
  return map;
}

std::vector<CommEvent> pedalMap(const Station& st) {
  auto it = st.s.options.find(kMapKey);
  std::vector<CommEvent> map;
  if (it != st.s.options.end()) map = parsePedalMap(it->second);
  return map.empty() ? parsePedalMap(kDefaultPedalMap) : map;
}

std::string pedalActionText(CommEvent ev) {
  const std::string code = std::to_string(static_cast<int>(ev));
  switch (ev) {
    case CommEvent::comEvCTS: return code + " forward";
    case CommEvent::comEvDSR: return code + " play/stop";
    case CommEvent::comEvCD: return code + " rewind";
    default: return code + " nothing";
  }
}

void deliverInputPedalEvents(Station& st) {
  if (!st.pedalInput) return;
  const std::vector<CommEvent> map = pedalMap(st);
  int sw = 0;
  while (st.pedalInput->takeSwitchChange(sw))
    if (sw >= 0 && static_cast<size_t>(sw) < map.size() && map[sw] != kNoEvent) onCommEvent(st, map[sw]);
}

void startPedalInput(Station& st) {
  st.s.pedalWatchDue = 0;
  watchPedalInput(st);
}

void watchPedalInput(Station& st) {
  if (!st.pedalInput) return;
  const double now = st.ui.timeOfDay();
  double& due = st.s.pedalWatchDue;
  // The time of day starts again at midnight: a due time further off than
  // one period is from the day before.
  if (now < due && due - now <= kPedalWatchSeconds) return;
  due = now + kPedalWatchSeconds;
  if (st.pedalInput->devicesMayHaveChanged()) listPedalDevices(st);
  openChosenPedal(st);
  markOpenPedal(st);
}

void mnu_footpedalusb(Station& st, int n) {
  if (!st.pedalInput || n < 1 || n > static_cast<int>(st.s.pedalDevices.size())) return;
  PedalInput& in = *st.pedalInput;
  const PedalDeviceInfo d = st.s.pedalDevices[n - 1];
  if (in.isOpen() && in.openPath() == d.path) {
    in.close();
    // Kept empty rather than erased, so that the options file is rewritten.
    st.s.options[kDeviceKey].clear();
    markOpenPedal(st);
    return;
  }
  const PedalOpen result = in.open(d.path);
  if (result == PedalOpen::Opened) {
    st.s.options[kDeviceKey] = d.identity();
    markOpenPedal(st);
    msgBox(st.ui, u"USB pedal " + fromUtf8(d.name) + u" opened for foot pedal communications.", Buttons::OK,
           Icon::Information);
    return;
  }
  // The pedal chosen before goes on serving.
  openChosenPedal(st);
  markOpenPedal(st);
  if (result == PedalOpen::NotPermitted)
    critical(st.ui, notPermittedText(d, in.readerGroup(d.path)));
  else
    critical(st.ui, u"An error occurred trying to open USB pedal " + fromUtf8(d.name) + u".");
}

void mnu_footpedalmap(Station& st) {
  auto answer = st.ui.inputBox(u"Enter the event of each USB pedal switch, left to right: "
                               u"5 rewind, 4 play/stop, 3 forward, 0 none",
                               g_appTitle, fromUtf8(mapText(pedalMap(st))));
  if (!answer || answer->empty()) return;
  const std::vector<CommEvent> map = parsePedalMap(toUtf8(*answer));
  if (map.empty()) {
    warning(st.ui, u"The pedal order takes 5, 4, 3 or 0 for each switch, left to right, "
                   u"separated by commas, such as 5,4,3.");
    return;
  }
  st.s.options[kMapKey] = mapText(map);
}

}  // namespace quillon
