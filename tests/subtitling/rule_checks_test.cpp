#include <gtest/gtest.h>

#include <functional>

#include "script/tag_grammar.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

// A tag that only ends the text of the last block; it keeps the last text whole.
const u16 kStop = u"DUB[\r";

// One scan: the options on top of the fixture's, the script, the answers
// given, and what the scan must show and return. Each rule is given once at
// its limit, where it must stay silent, and once just past it.
struct Case {
  const char* name;
  std::function<void(Session&)> options;
  u16 script;
  std::vector<Answer> answers;
  bool result;
  std::vector<u16> boxes;
  Icon icon = Icon::Critical;
  u16 selected = u"";  // where a No leaves the cursor; empty: not checked
};

auto none = [](Session&) {};
auto readingSpeed = [](double speed, double fast, double slow) {
  return [=](Session& s) {
    s.readingSpeedCheck = true;
    s.readingSpeed = speed;
    s.fastThreshold = fast;
    s.slowThreshold = slow;
  };
};

TEST(RuleChecks, EachRuleAsksAtItsLimitAndTheAnswerDecides) {
  const u16 one = block("00:00:01:00", "00:00:03:00", "One");
  const std::vector<Case> cases = {
      {"minimum on-air at the limit", none, block("00:00:01:00", "00:00:02:00", "Exactly one second"), {}, true, {}},
      {"minimum on-air below", none, block("00:00:01:00", "00:00:01:15", "Half a second"), {Answer::Yes}, true,
       {u"1-line subtitle: On-air duration violation in [00:00:01:00]\rCue-out for:\r\rHalf a second\r\r"
        u"occurs too early.\rPlease allow subtitle at least 1.00 sec. on the air.\rContinue?"}},
      {"No stops the scan on the cue-out", none,
       block("00:00:01:00", "00:00:05:00", "Fine") + block("00:00:06:00", "00:00:06:15", "Short") +
           block("00:00:08:00", "00:00:09:00", "Never read"),
       {Answer::No}, false,
       {u"1-line subtitle: On-air duration violation in [00:00:06:00]\rCue-out for:\r\rShort\r\r"
        u"occurs too early.\rPlease allow subtitle at least 1.00 sec. on the air.\rContinue?"},
       Icon::Critical, u"00:00:06:15]"},
      {"maximum on-air at the limit", none, block("00:00:01:00", "00:00:07:00", "Six seconds"), {}, true, {}},
      {"maximum on-air past it stops on the cue-in", none, block("00:00:01:00", "00:00:07:15", "Too long"),
       {Answer::No}, false,
       {u"On-air duration violation in [00:00:01:00]\rCue-out for:\r\rToo long\r\roccurs too late.\r"
        u"Please maintain subtitles for less than 6.00 sec. on the air.\rContinue?"},
       Icon::Critical, u"00:00:01:00>"},
      {"cue-in on the previous cue-out", none, one + block("00:00:03:00", "00:00:05:00", "Two"), {}, true, {}},
      {"cue-in one frame before the previous cue-out", none, one + block("00:00:02:29", "00:00:05:00", "Two"),
       {Answer::No}, false,
       {u"Time code sequence error in [00:00:02:29]\rCue-in for:\r\rTwo\r\r"
        u"occurs before cue-out for previous subtitle.\r\rContinue?"},
       Icon::Critical, u"00:00:02:29>"},
      {"cue-out on the cue-in is a sequence fault, not a short subtitle", none,
       block("00:00:04:00", "00:00:04:00", "Frozen"), {Answer::No}, false,
       {u"Time code sequence error in [00:00:04:00]\rCue-out for:\r\rFrozen\r\r"
        u"occurs before cue-in for same subtitle.\r\rContinue?"},
       Icon::Critical, u"00:00:04:00]"},
      {"interleave off without a minimum", none, one + block("00:00:03:02", "00:00:05:00", "Two"), {}, true, {}},
      {"interleave one frame over the minimum", [](Session& s) { s.minInterleave = 2; },
       one + block("00:00:03:03", "00:00:05:00", "Two"), {}, true, {}},
      {"interleave on the exact minimum", [](Session& s) { s.minInterleave = 2; },
       one + block("00:00:03:02", "00:00:05:00", "Two"), {Answer::Yes}, true,
       {u"Warning: Minimum interleave violation in [00:00:03:02]\rCue-in for:\r\rTwo\r\roccurs too early.\r"
        u"Please allow at least 2 frames between consecutive subtitles.\rContinue?"}},
      {"times at zero escape duration and interleave", [](Session& s) { s.minInterleave = 2; },
       block("00:00:00:00", "00:00:00:10", "Opens the show") + block("00:00:02:00", "00:00:00:00", "Open cue-out"),
       {}, true, {}},
      {"fast at the limit", readingSpeed(10, 25, 0), block("00:00:01:00", "00:00:03:00", "1234567890123456789012345"),
       {}, true, {}},
      {"fast past it offers both remedies", readingSpeed(10, 25, 0),
       block("00:00:01:00", "00:00:03:00", "12345678901234567890123456"), {Answer::No}, false,
       {u"Warning: Fast subtitle threshold exceded in [00:00:01:00]\r\r12345678901234567890123456\r\r(130%).\r\r"
        u"Either extend it in time by 00:18 (cue out => 00:00:03:18) \ror reduce it by 06 Caracters.\r\r"
        u"Continue?"},
       Icon::Exclamation, u"00:00:01:00>"},
      {"reading speed rules need their option",
       [](Session& s) {
         s.readingSpeed = 10;
         s.slowThreshold = 50;
       },
       block("00:00:01:00", "00:00:02:00", "12345678901234567890") + block("00:00:03:00", "00:00:05:00", "1"), {},
       true, {}},
      {"slow at the limit", readingSpeed(10, 0, 50), block("00:00:01:00", "00:00:03:00", "1234567890"), {}, true, {}},
      {"slow past it", readingSpeed(10, 0, 50), block("00:00:01:00", "00:00:03:00", "12345678"), {Answer::Yes},
       true, {u"Warning: Slow subtitle threshold exceded in [00:00:01:00]\r\r12345678\r\r\r(40%).\rContinue?"},
       Icon::Exclamation},
      {"slow off with a zero threshold", readingSpeed(10, 0, 0), block("00:00:01:00", "00:00:03:00", "12345678"),
       {}, true, {}},
      {"zero duration passes the reading speed rules", readingSpeed(14, 0, 50),
       block("00:00:01:00", "00:00:01:00", "Text"), {Answer::Yes}, true,
       {u"Time code sequence error in [00:00:01:00]\rCue-out for:\r\rText\r\r"
        u"occurs before cue-in for same subtitle.\r\rContinue?"}},
      {"two lines of sixteen count thirty-three: at the limit", readingSpeed(16.5, 0, 0),
       block("00:00:01:00", "00:00:03:00", "1234567890123456\r1234567890123456"), {}, true, {}},
      {"two lines of sixteen count thirty-three: one more", readingSpeed(16.5, 0, 0),
       block("00:00:01:00", "00:00:03:00", "1234567890123456\r12345678901234567"), {Answer::Yes}, true,
       {u"Warning: Fast subtitle threshold exceded in [00:00:01:00]\r\r1234567890123456\r12345678901234567\r\r"
        u"(103%).\r\rEither extend it in time by 00:02 (cue out => 00:00:03:02) \ror reduce it by 01 Caracters.\r\r"
        u"Continue?"},
       Icon::Exclamation},
      {"one line at the row limit", none, block("00:00:01:00", "00:00:03:00", "12345678901234567890123456789012"),
       {}, true, {}},
      {"one line past the row limit", none,
       block("00:00:01:00", "00:00:03:00", "123456789012345678901234567890123"), {Answer::Yes}, true,
       {u"Error: Maximum number of characters per row (32) exceeded in single-line subtitle in [00:00:01:00]\r\r"
        u"123456789012345678901234567890123\r\r\rContinue?"}},
      {"each of two lines past the row limit", [](Session& s) { s.maxCharsRow = 5; },
       block("00:00:01:00", "00:00:03:00", "123456\r1234567"), {Answer::Yes, Answer::Yes}, true,
       {u"Error: Maximum number of characters per row (5) exceeded in first line of subtitle in [00:00:01:00]\r\r"
        u"123456\r\rContinue?",
        u"Error: Maximum number of characters per row (5) exceeded in second line of subtitle in [00:00:01:00]\r\r"
        u"1234567\rContinue?"}},
      {"No on the first line: the second is not asked", [](Session& s) { s.maxCharsRow = 5; },
       block("00:00:01:00", "00:00:03:00", "123456\r1234567"), {Answer::No}, false,
       {u"Error: Maximum number of characters per row (5) exceeded in first line of subtitle in [00:00:01:00]\r\r"
        u"123456\r\rContinue?"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    SubtitlingStation t;
    c.options(t.st.s);
    t.ui.answers.assign(c.answers.begin(), c.answers.end());
    t.open(c.script + kStop);
    EXPECT_EQ(scanSubtitles(t.st, ScanMode::WholeScript), c.result);
    EXPECT_EQ(t.boxes(), c.boxes);
    for (const auto& shown : t.ui.boxes) {
      EXPECT_EQ(shown.box.buttons, Buttons::YesNo);
      EXPECT_EQ(shown.box.defaultButton, 2);
      EXPECT_EQ(shown.box.title, u"QUILLON");
      EXPECT_EQ(shown.box.icon, c.icon);
    }
    if (!c.result) {
      // A No leaves the scan with one entry and the cursor on the tag.
      EXPECT_EQ(t.st.s.scan.subtitleCount, 1);
      EXPECT_EQ(t.ui.pointer, Pointer::Default);
    }
    if (!c.selected.empty()) EXPECT_EQ(t.selected(), c.selected);
  }
}

TEST(RuleChecks, AnswerYesLetsTheScanGoOn) {
  SubtitlingStation t;
  t.ui.answers = {Answer::Yes};
  t.open(block("00:00:06:00", "00:00:06:15", "Short") + block("00:00:08:00", "00:00:09:00", "Read") + kStop);
  EXPECT_TRUE(scanSubtitles(t.st, ScanMode::WholeScript));
  EXPECT_EQ(t.st.s.scan.subtitleCount, 2);
  EXPECT_EQ(t.boxes().size(), 1u);
}

TEST(RuleChecks, DisabledChecksAskNothingAndTheTotalsStartAfreshOnEveryScan) {
  SubtitlingStation t;
  t.st.s.checksDisabled = true;
  t.open(block("00:00:01:00", "00:00:01:05", "Short and far too long for one row of text") +
         block("00:00:00:10", "00:00:00:05", "Two\rLines") + block("00:00:09:00", "00:00:10:00", "\rLate") +
         u"DUB[0 N 00:00:11:00>00:00:12:00] JOHN\rHello\r\r" + kStop);
  EXPECT_TRUE(scanSubtitles(t.st, ScanMode::WholeScript));
  EXPECT_TRUE(scanSubtitles(t.st, ScanMode::WholeScript));
  EXPECT_TRUE(t.boxes().empty());
  // A text opening with an empty line is one line; the dubbing entry counts nothing.
  EXPECT_EQ(t.st.s.totalbloq1linea, 2);
  EXPECT_EQ(t.st.s.totalbloq2lineas, 1);
  EXPECT_EQ(t.st.s.totalChars, 42 + 9 + 5);
}

}  // namespace
}  // namespace quillon::testing
