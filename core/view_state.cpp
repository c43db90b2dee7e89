#include "core/view_state.h"

#include <stdexcept>

#include "core/menu_table.h"

namespace quillon {

ViewState::ViewState() {
  for (const auto& e : menuTable()) {
    MenuItemState m;
    m.caption = u16(e.caption);
    menus.emplace(std::string(e.name), m);
  }
}

MenuItemState& ViewState::menu(std::string_view name) {
  auto it = menus.find(name);
  if (it == menus.end()) throw std::out_of_range("unknown menu item " + std::string(name));
  return it->second;
}

const MenuItemState& ViewState::menu(std::string_view name) const {
  auto it = menus.find(name);
  if (it == menus.end()) throw std::out_of_range("unknown menu item " + std::string(name));
  return it->second;
}

}  // namespace quillon
