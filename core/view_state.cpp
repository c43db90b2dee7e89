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
  // The transport buttons; button 6 toggles between Play and Stop.
  const char16_t* tips[11] = {u"Top",         u"Back 10 seconds", u"Back 5 seconds", u"Back 1 second",
                              u"Back 1 frame", u"Play",            u"Forward 1 frame", u"Forward 1 second",
                              u"Forward 5 seconds", u"Forward 10 seconds", u"End"};
  for (int i = 0; i < 11; ++i) {
    ToolbarButtonState b;
    b.toolTip = tips[i];
    b.image = i == 5 ? 1 : i + 3;
    toolbar.push_back(b);
  }
  toolbar[5].caption = u"Play";
}

MenuItemState& ViewState::menu(std::string_view name) {
  auto it = menus.find(name);
  if (it == menus.end()) throw std::out_of_range("unknown menu item " + std::string(name));
  return it->second;
}

void ViewState::setGainedItems(const std::string& parent, const std::vector<std::pair<std::string, u16>>& items) {
  auto& names = gainedItems[parent];
  for (const auto& n : names) menus.erase(n);
  names.clear();
  for (const auto& [name, caption] : items) {
    if (menus.count(name)) throw std::logic_error("gained menu item " + name + " is already an item");
    MenuItemState m;
    m.caption = caption;
    menus.emplace(name, m);
    names.push_back(name);
  }
  if (names.empty()) gainedItems.erase(parent);
}

const MenuItemState& ViewState::menu(std::string_view name) const {
  auto it = menus.find(name);
  if (it == menus.end()) throw std::out_of_range("unknown menu item " + std::string(name));
  return it->second;
}

}  // namespace quillon
