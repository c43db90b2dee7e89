// The one table of the main window's menu items. The Qt window builds its
// menus from it and the view-state model keeps one state per entry, so a
// name that is not here is a programming error caught at once.
#pragma once

#include <string_view>
#include <vector>

namespace quillon {

struct MenuEntry {
  std::string_view name;      // "mnu_sub_par_cxl"
  std::string_view parent;    // enclosing menu's name; empty for the menu bar
  std::u16string_view caption;  // with '&' before the access key
  std::string_view shortcut;  // Qt key sequence text ("Ctrl+T", "F5"); empty for none
  bool separatorBefore = false;
  bool checkable = false;
};

// In menu order: a parent precedes its children, siblings stand as shown.
const std::vector<MenuEntry>& menuTable();
const MenuEntry* findMenuEntry(std::string_view name);

}  // namespace quillon
