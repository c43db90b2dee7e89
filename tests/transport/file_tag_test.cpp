#include "transport/file_tag.h"

#include <gtest/gtest.h>

#include <fstream>
#include <tuple>

#include "core/session.h"
#include "core/timecode.h"
#include "core/view_state.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

std::string videoWithTail(const std::string& name, const std::string& tail, size_t body = 4096) {
  std::string path = testing::tempDir("file_tag") + "/" + name;
  std::ofstream out(path, std::ios::binary);
  std::string data(body, '\0');
  for (size_t i = 0; i < body; ++i) data[i] = static_cast<char>('A' + i % 26);
  out << data << tail;
  return path;
}

TEST(FileTag, FieldReadFromTheLastTwentyOneBytes) {
  struct Row {
    const char* name;
    std::string tail;
    size_t body;
    const char16_t* tag;
  };
  const Row rows[] = {
      {"written.avi", "\"P01000000010000500\"\r\n", 4096, u"P01000000010000500"},
      // A bare tag and line end is one byte short of the start: a blank there
      // is skipped, anything else becomes the tag's first character.
      {"blank.avi", " C01000000010000500\r\n", 4096, u"C01000000010000500"},
      {"shifted.avi", "XC01000000010000500\r\n", 4096, u"XC0100000001000050"},
      // Without a line end the field runs to the end of the file.
      {"noeol.avi", "ABCP01000000010000500", 4096, u"ABCP01000000010000"},
      // The field ends at a comma, a line end or a closing quote.
      {"comma.avi", "P010000,00010000500\r\n", 4096, u"P010000"},
      {"lf.avi", "  P010000 \n00100005\r\n", 4096, u"P010000"},
      {"quoted.avi", " \"P01, 00 \"00105000\r\n", 4096, u"P01, 00 "},
      {"open.avi", "\"P0100000001000,\r\nxxx", 4096, u"P0100000001000,\r\nx"},
      {"eol.avi", "\r\nP0100000001000050XY", 4096, u""},
      {"short.avi", "", 20, u""},
      {"just.avi", "", 21, u"ABCDEFGHIJKLMNOPQR"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    const auto tag = readFileTag(videoWithTail(r.name, r.tail, r.body));
    ASSERT_TRUE(tag);
    EXPECT_EQ(*tag, r.tag);
  }
  EXPECT_FALSE(readFileTag(testing::tempDir("file_tag_missing") + "/none.avi"));
}

TEST(FileTag, TagSetsRateWindowAndCheckMarks) {
  Session s;
  ViewState view;
  s.g_fps = 30;
  s.videoDuration = 10;
  view.menu("mnu_NTSC").checked = true;
  const u16 tag = u"P01000000010001012";
  applyFileTag(s, view, tag);
  EXPECT_EQ(std::tuple(s.g_fps, s.TCInitial, s.TCFinal, view.menu("mnu_PAL").checked, view.menu("mnu_NTSC").checked),
            std::tuple(25, u16(u"10:00:00:00"), u16(u"10:00:10:12"), true, false));
  EXPECT_EQ(s.TCBase, TCaFRAMES(u"10:00:00:00", 30));  // the rate standing before the tag

  // An unknown or empty tag: thirty frames and the whole video. The
  // standard letter is case sensitive.
  for (auto [letter, fps] : {std::pair{u"p0", 30}, {u"C0", 24}, {u"", 30}}) {
    applyFileTag(s, view, letter);
    EXPECT_EQ(s.g_fps, fps) << toUtf8(letter);
  }
  EXPECT_TRUE(view.menu("mnu_NTSC").checked);
}

}  // namespace
}  // namespace quillon
