#include "core/menu_table.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace quillon {
namespace {

const MenuEntry& entry(std::string_view name) {
  const MenuEntry* e = findMenuEntry(name);
  if (!e) throw std::runtime_error("missing menu item " + std::string(name));
  return *e;
}

TEST(MenuTable, NamesAreUniqueAndLookupFindsEachEntry) {
  std::set<std::string_view> seen;
  for (const auto& e : menuTable()) {
    EXPECT_TRUE(seen.insert(e.name).second) << "duplicate " << e.name;
    EXPECT_EQ(findMenuEntry(e.name), &e) << e.name;
  }
  EXPECT_EQ(findMenuEntry("mnu_nosuch"), nullptr);
  EXPECT_EQ(findMenuEntry(""), nullptr);
}

TEST(MenuTable, ParentsPrecedeChildrenAndMenuBarKeepsItsOrder) {
  std::map<std::string_view, size_t> position;
  std::vector<std::string_view> bar;
  const auto& table = menuTable();
  for (size_t i = 0; i < table.size(); ++i) {
    const auto& e = table[i];
    if (e.parent.empty()) {
      bar.push_back(e.name);
    } else {
      ASSERT_TRUE(position.count(e.parent)) << e.name << " comes before its parent " << e.parent;
    }
    position[e.name] = i;
  }
  EXPECT_EQ(bar, (std::vector<std::string_view>{"mnu_file", "mnu_ctlVideo", "mnu_sub", "mnu_dub",
                                                 "mnu_cc", "mnu_herr", "mnu_hlp"}));
}

TEST(MenuTable, QuotedCaptionsAreKeptToTheLetter) {
  EXPECT_EQ(entry("mnu_NTSC").caption, u"&NTSC");
  EXPECT_EQ(entry("mnu_delay").caption, u"&Delay....");
  EXPECT_EQ(entry("mnu_vid_stand").caption, u"Video &Standard");
  EXPECT_EQ(entry("mnu_FileExit").caption, u"E&xit");
  EXPECT_EQ(entry("mnu_sub_imp_SUBL").caption, u"from S&UB {}...");
  EXPECT_EQ(entry("mnu_iramarca10").caption, u"marker 1&0");
  EXPECT_EQ(entry("mnu_dir").caption, u"Keyboard di&gits ->");
}

TEST(MenuTable, ExclusiveChoicesAreCheckableSiblings) {
  const std::vector<std::vector<std::string_view>> groups = {
      {"mnu_NTSC", "mnu_PAL", "mnu_CINE"},
      {"mnu_vid_track_l", "mnu_vid_track_r", "mnu_vid_track_st"},
      {"mnu_tex_opc_int", "mnu_tex_opc_asis", "mnu_tex_opc_less"},
      {"mnu_dub_opc_voz_on", "mnu_dub_opc_voz_off"},
      {"mnu_footpedalcom1", "mnu_footpedalcom2", "mnu_footpedalcom3", "mnu_footpedalcom4"},
  };
  for (const auto& g : groups) {
    for (auto name : g) {
      EXPECT_TRUE(entry(name).checkable) << name;
      EXPECT_EQ(entry(name).parent, entry(g.front()).parent) << name;
    }
  }
}

}  // namespace
}  // namespace quillon
