#include <gtest/gtest.h>

#include "subtitling/editing_commands.h"
#include "subtitling/retiming.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

const u16 kScript =
    u"Title\n"
    u"SUB[2LI 00:00:01:00>00:00:03:12] note\nFirst\nline\n\n"
    u"DUB[0 F 00:00:04:00>00:00:05:00] ANNA\nHello there\n\n"
    u"SUB[0 N 00:00:06:00>00:00:08:00]\nLast\n\n";

// Each command on its script; what each leaves, and the boxes it shows, are
// in golden/retiming.txt.
TEST(Retiming, CommandsRewriteTheTagsInPlaceOrIntoANewDocument) {
  const struct {
    const char* name;
    int fps;
    void (*command)(Station&);
    const char16_t* typed;
    bool inSitu;
    u16 script;
    const char16_t* selectFrom = nullptr;
  } cases[] = {
      {"offset of the whole script", 25, mnu_tex_off, u"00:01:00:00", true, kScript},
      {"offset of the selected block", 25, mnu_tex_off, u"00:00:10:00", true, kScript, u"DUB["},
      {"unreadable offset", 25, mnu_tex_off, u"soon", true, kScript},
      {"no offset", 25, mnu_tex_off, u"", true, kScript},
      // Style 1 becomes I, the alignment goes, a voice-off tag is written on,
      // and a stop tag ends the last dubbing text (which, being last in its
      // script, was read without its final two characters).
      {"offset into a new document", 25, mnu_tex_off, u"00:00:02:00", false,
       kScript + u"DUB[0 N 00:00:09:00>00:00:10:00] BOB\nBye\n\n"},
      {"PAL to NTSC", 25, mnu_tex_PALtoNTSC, u"", true,
       u"SUB[0 N 00:00:01:12>00:00:02:24]\nA\n\nSUB[0 N 00:00:03;05>00:00:04:10]\nB\n\n"},
      {"NTSC to PAL into a new document", 25, mnu_tex_NTSCtoPAL, u"", false,
       u"SUB[0 N 00:00:01:15>00:00:02:29]\nA\n\n"},
      // A tag already rewritten may read as a later entry's old times; the
      // later entry's own tag is rewritten all the same, and the first tag
      // only once.
      {"offset onto the next tag's times", 30, mnu_tex_off, u"00:00:03:00", true,
       block("00:00:01:00", "00:00:03:00", "A") + block("00:00:03:00", "00:00:05:00", "B")},
      {"PAL to NTSC onto the next tag's times", 25, mnu_tex_PALtoNTSC, u"", true,
       block("00:00:01:10", "00:00:02:10", "A") + block("00:00:01:12", "00:00:02:12", "B")},
      {"interleave of two frames onto the next tag's times", 30, mnu_sub_changeinterleave, u"", true,
       block("00:00:01:00", "00:00:02:00", "A") + block("00:00:02:01", "00:00:03:00", "B") +
           block("00:00:02:03", "00:00:03:00", "C")},
  };
  u16 transcript;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    SubtitlingStation t(c.fps);
    t.st.s.checksDisabled = true;  // the overlaps are the point of some
    t.st.s.minInterleave = 2;
    t.st.s.inSituOffset = c.inSitu;
    t.ui.inputs = {u16(c.typed)};
    const u16 before = t.open(c.script).text();
    if (c.selectFrom) t.docs.select({static_cast<long>(before.find(c.selectFrom)), t.docs.length()});
    c.command(t.st);
    transcript += leftBy(c.name, t);
    if (c.command == mnu_tex_off) {
      EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter new cue-in time code of the first subtitle/dialog in the selected block");
    }
    EXPECT_EQ(t.st.s.g_fps, c.fps);
    ASSERT_EQ(t.docs.documents().size(), c.inSitu ? 1u : 2u);
    if (c.inSitu) continue;
    EXPECT_EQ(t.docs.fontName(), u"Arial Unicode MS");
    t.docs.activate(0);
    EXPECT_EQ(t.content(), before);
  }
  EXPECT_EQ(lines(transcript), golden("subtitling/golden/retiming.txt"));
}

// Burnt-in timecodes set the window from the position; going to a timecode
// offers the selected one and seeks only within the video.
TEST(Retiming, BurntInTimecodesSetTheWindowAndGoToSeeksWithinIt) {
  SubtitlingStation t(25);
  std::vector<double> seeks;
  t.st.ira = [&](Station&, double s) { seeks.push_back(s); };
  Session& s = t.st.s;
  s.videoFile = u"video";
  s.videoDuration = 600;
  s.g_dblPosActual = 10;
  s.g_fVideoRun = true;
  t.ui.inputs = {u16(u"010000"), u16(u"01100012"), u16(), u16(u"1:00")};
  mnu_tag_in(t.st);
  EXPECT_FALSE(s.g_fVideoRun);
  EXPECT_DOUBLE_EQ(s.tcStart, 3590);
  EXPECT_DOUBLE_EQ(s.tcEnd, 4190);
  mnu_tag_out(t.st);
  EXPECT_DOUBLE_EQ(s.tcEnd, 600 - 10 + 4200 + 12.0 / 25);
  mnu_tag_in(t.st);
  mnu_tag_in(t.st);
  EXPECT_DOUBLE_EQ(s.tcStart, 3590);
  EXPECT_EQ(t.ui.boxTexts(), std::vector<u16>{u"Error in time code format: [1:00]"});
  EXPECT_EQ(t.ui.inputPrompts[0], u"Enter burnt-in timecode (in point)...");
  EXPECT_EQ(t.ui.inputPrompts[1], u"Enter burnt-in timecode (out point)");

  s.tcStart = 3600;
  s.tcEnd = 3700;
  s.videoDuration = 100;
  t.open(block("01:00:20:00", "01:00:22:00", "A"));
  t.docs.select({8, 19});
  t.ui.inputs = {};
  mnu_tex_iTC(t.st);  // the selected timecode is offered and taken
  EXPECT_EQ(t.ui.inputPrompts.back(), u"Enter destination time code");
  t.ui.inputs = {u16(u"01003000")};
  mnu_tex_iTC(t.st);
  t.ui.inputs = {u16(u"02:00:00:00")};
  mnu_tex_iTC(t.st);
  EXPECT_EQ(seeks, (std::vector<double>{20, 30}));
}

}  // namespace
}  // namespace quillon::testing
