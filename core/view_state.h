// The main window's visible state as plain data. The logic reads and writes
// it; the Qt window renders it; tests inspect it.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/overlays.h"
#include "core/text.h"

namespace quillon {

// Colours are 24-bit with blue in the high byte, as the station's rules give them.
struct LabelState {
  u16 caption;
  uint32_t foreColor = 0xFFFFFF;
  uint32_t backColor = 0x000000;
  bool visible = true;
};

struct StatusPanelState {
  u16 text;
  u16 toolTip;
  bool enabled = true;
};

struct MenuItemState {
  u16 caption;
  bool checked = false;
  bool enabled = true;
  bool visible = true;
};

struct ToolbarButtonState {
  u16 caption;
  u16 toolTip;
  int image = 0;  // index into the toolbar's image list
  bool enabled = true;
};

struct SliderState {
  double value = 0;
  double min = 0;
  double max = 0;
  bool enabled = true;
  bool visible = true;
};

// A form timer: while enabled it ticks every `interval` milliseconds,
// counted from the moment it was enabled. Enabling a timer that is already
// enabled does not restart its count. `due` is on the user-interface
// seam's clock (seconds since midnight).
struct TimerState {
  int interval = 0;
  bool enabled = false;
  double due = 0;

  void setEnabled(bool on, double now) {
    if (on && !enabled) due = now + interval / 1000.0;
    enabled = on;
  }
};

struct ViewState {
  ViewState();  // one menu state per entry of the menu table

  LabelState LabTimecode, LabCom, LabDur;
  // Status bar `BarraStatus`, panels 1 to 8 (index 0 unused).
  std::array<StatusPanelState, 9> panels;
  std::map<std::string, MenuItemState, std::less<>> menus;
  // Items a menu gains while the station runs (the USB pedals under
  // mnu_footpedalport), by parent, in order after the parent's items from
  // the table. Each has its state in `menus` like any item; the window
  // gives them a separator before the first and makes them checkable.
  std::map<std::string, std::vector<std::string>, std::less<>> gainedItems;
  std::vector<ToolbarButtonState> toolbar;  // Toolbar1, buttons 1 to 11 at [0..10]
  bool toolbarEnabled = true;
  bool toolbarVisible = true;
  SliderState slVideo;
  u16 caption;  // window caption
  bool visible = false;

  // ---- Transport (transport/) ----
  // Timer1 polls the position, Timer2 settles the pedal, Timer4 blinks the
  // label of the time being edited.
  TimerState Timer1{33, true}, Timer2{500, false}, Timer4{250, false};
  // frmMain's size in twips (its Left and Top are overlays.mainLeft and
  // overlays.mainTop); full screen changes it.
  int mainWidth = 5505, mainHeight = 6330;
  // The splash window `frminicio`, shown for the start's first seconds.
  bool splashVisible = false;
  // The overlay windows and the dubbing text box.
  OverlayState overlays;

  // Throws std::out_of_range for a name the menu table does not have.
  MenuItemState& menu(std::string_view name);
  const MenuItemState& menu(std::string_view name) const;
  // Replaces what `parent` has gained by `items` (name and caption, each
  // name new to the table), all unchecked and enabled.
  void setGainedItems(const std::string& parent, const std::vector<std::pair<std::string, u16>>& items);
  StatusPanelState& panel(int i) { return panels.at(static_cast<size_t>(i)); }
  ToolbarButtonState& toolbarButton(int i) { return toolbar.at(static_cast<size_t>(i - 1)); }
  void setPanel(int i, const u16& text, const u16& toolTip) {
    panel(i).text = text;
    panel(i).toolTip = toolTip;
  }
};

// An option item that is its own check mark: `flag` flips and the item
// `item` shows it.
inline void flipOption(ViewState& v, std::string_view item, bool& flag) {
  flag = !flag;
  v.menu(item).checked = flag;
}

}  // namespace quillon
