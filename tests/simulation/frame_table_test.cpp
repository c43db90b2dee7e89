#include <gtest/gtest.h>

#include <tuple>

#include "simulation/frame_table.h"
#include "simulation/sim_rig.h"

namespace quillon::testing {
namespace {

struct FrameRig : SimRig {
  // Records with cue texts in frames from the video's first frame at 01:00:00:00.
  void records(const std::vector<std::pair<int, int>>& frames) {
    Session& ss = s();
    ss.TCInitial = u"01:00:00:00";
    int k = 0;
    for (auto [in, out] : frames) {
      ++k;
      auto tc = [](int f) { return u"01:00:" + formatNumber(f / 30, "00") + u":" + formatNumber(f % 30, "00"); };
      ss.scan.records[static_cast<size_t>(k)].cueInText = tc(in);
      ss.scan.records[static_cast<size_t>(k)].cueOutText = tc(out);
    }
    ss.scan.subtitleCount = k;
  }
  std::vector<long> table() {
    std::vector<long> v;
    for (auto& e : s().frameTable) v.push_back(e.subtitle);
    return v;
  }
};

TEST(FrameTable, EachSubtitleCoversItsFramesUpToAndWithItsCueOutAndAnOverlapBlocksTheRest) {
  struct Case {
    std::vector<std::pair<int, int>> frames;
    std::vector<long> table;
  };
  const Case cases[] = {{{{1, 3}, {5, 5}, {7, 8}}, {-1, 1, 1, 1, -1, 2, -1, 3, 3, -1}},
                        {{{1, 4}, {2, 3}, {7, 8}}, {-1, 1, 1, 1, 1, -1, -1, -1, -1, -1}}};
  for (const Case& c : cases) {
    FrameRig rig;
    rig.s().noframes = 10;
    cleanSubtitlesArray(rig.s());
    EXPECT_EQ(rig.s().frameTable.at(7).frame, 7);
    rig.records(c.frames);
    fillSubtitlesArray(rig.s());
    EXPECT_EQ(rig.s().TCBase, 90000);
    EXPECT_EQ(rig.table(), c.table);
  }
}

struct RecordingRenderer : WysiwygRenderer {
  std::vector<Subtitle> handed;
  std::vector<int> shows;
  void setupFont(Station&) override {}
  void generateFrames(Station&) override {}
  void changeSubtitle(const Subtitle& sub) override { handed.push_back(sub); }
  void showSubtitle(int on) override { shows.push_back(on); }
  double videoWidth() override { return 720; }
  double lineTop(const SubtitleRecord&, int line) override { return line * 100.0; }
};

TEST(WysiwygTick, HandsEachSubtitleOverOnceOnTheFrameAfterItsFirst) {
  FrameRig rig;
  Session& s = rig.s();
  RecordingRenderer r;
  s.wysiwygOn = s.g_fsim = true;
  wysiwygTick(rig.st(), r);  // nothing while the player cannot draw
  EXPECT_TRUE(r.shows.empty());
  s.noframes = 12;
  cleanSubtitlesArray(s);
  rig.records({{2, 4}, {5, 7}});
  s.scan.records[1].line1 = u"caf\u00e9";
  s.scan.records[1].alignment = u'L';
  s.scan.records[1].style = u'2';
  s.scan.records[2].alignment = u'R';
  fillSubtitlesArray(s);
  s.TCBase = 0;  // the tick counts frames from the start of the player's clock here
  s.wysiwygCapable = true;
  std::vector<long> handedAt;
  for (int f = 0; f < 12; ++f) {
    ira(rig.st(), f / 30.0);
    const size_t before = r.handed.size();
    wysiwygTick(rig.st(), r);
    if (r.handed.size() > before) handedAt.push_back(f);
  }
  EXPECT_EQ(handedAt, (std::vector<long>{3, 6}));
  ASSERT_EQ(r.handed.size(), 2u);
  // Latin-1 text, placed and justified by the alignment; style 2 italicises the second line.
  const auto &a = r.handed[0], &b = r.handed[1];
  EXPECT_EQ(std::tuple(a.line1, a.x, a.justification, a.italic1, a.italic2),
            std::tuple(std::string("caf\xe9"), 110L, 1, false, true));
  EXPECT_EQ(std::tuple(b.x, b.justification), std::tuple(610L, 2));
  EXPECT_EQ(r.shows, (std::vector<int>{0, 0, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0}));
}

}  // namespace
}  // namespace quillon::testing
