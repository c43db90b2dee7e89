// Which command each menu item runs. The window builds its menus from the
// menu table and sends every click here by the item's `mnu_` name.
#pragma once

#include <functional>
#include <string_view>

#include "core/station.h"

namespace quillon {

using MenuCommand = std::function<void(Station&)>;

// The command behind `item`; empty for an item that only opens a submenu
// or whose command this station does not have.
MenuCommand menuCommand(std::string_view item);

// Adds or replaces the command of an item, for parts of the desktop built
// apart from the main window (the dialogs that exports fill in).
void setMenuCommand(std::string_view item, MenuCommand command);

// Runs the item's command; false when it has none. Keys that stand for a
// click call it as the menu does, whatever the item's enabled state.
bool clickMenuItem(Station& st, std::string_view item);

}  // namespace quillon
