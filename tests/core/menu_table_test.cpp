#include "core/menu_table.h"

#include <gtest/gtest.h>

#include <set>

namespace quillon {
namespace {

TEST(MenuTable, NamesAreUniqueAndLookupFindsEachEntry) {
  std::set<std::string_view> seen;
  for (const auto& e : menuTable()) {
    EXPECT_TRUE(seen.insert(e.name).second) << "duplicate " << e.name;
    EXPECT_EQ(findMenuEntry(e.name), &e) << e.name;
  }
  EXPECT_EQ(findMenuEntry("mnu_nosuch"), nullptr);
  EXPECT_EQ(findMenuEntry(""), nullptr);
}

// Menus are built in table order, so a parent must come first.
TEST(MenuTable, ParentsPrecedeChildren) {
  std::set<std::string_view> built;
  for (const auto& e : menuTable()) {
    EXPECT_TRUE(e.parent.empty() || built.count(e.parent)) << e.name << " comes before its parent " << e.parent;
    built.insert(e.name);
  }
}

}  // namespace
}  // namespace quillon
