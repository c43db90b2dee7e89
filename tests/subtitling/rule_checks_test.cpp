#include <gtest/gtest.h>

#include <functional>

#include "script/tag_grammar.h"
#include "subtitling_fixture.h"

namespace quillon::testing {
namespace {

// A tag that only ends the text of the last block; it keeps the last text whole.
const u16 kStop = u"DUB[\r";

// One scan: the options on top of the fixture's, the script and the answers
// given. Each rule is given once at its limit, where it must stay silent, and
// once just past it. What each scan shows and where a No leaves the cursor
// are in golden/rule_checks.txt.
struct Case {
  const char* name;
  std::function<void(Session&)> options;
  u16 script;
  std::vector<Answer> answers;
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
auto interleave = [](Session& s) { s.minInterleave = 2; };
auto rowOfFive = [](Session& s) { s.maxCharsRow = 5; };

TEST(RuleChecks, EachRuleAsksAtItsLimitAndTheAnswerDecides) {
  const u16 one = block("00:00:01:00", "00:00:03:00", "One");
  const Case cases[] = {
      {"minimum on-air at the limit", none, block("00:00:01:00", "00:00:02:00", "Exactly one second"), {}},
      {"minimum on-air below", none, block("00:00:01:00", "00:00:01:15", "Half a second"), {Answer::Yes}},
      {"No stops the scan on the cue-out", none,
       block("00:00:01:00", "00:00:05:00", "Fine") + block("00:00:06:00", "00:00:06:15", "Short") +
           block("00:00:08:00", "00:00:09:00", "Never read"),
       {Answer::No}},
      {"maximum on-air at the limit", none, block("00:00:01:00", "00:00:07:00", "Six seconds"), {}},
      {"maximum on-air past it stops on the cue-in", none, block("00:00:01:00", "00:00:07:15", "Too long"),
       {Answer::No}},
      {"cue-in on the previous cue-out", none, one + block("00:00:03:00", "00:00:05:00", "Two"), {}},
      {"cue-in one frame before the previous cue-out", none, one + block("00:00:02:29", "00:00:05:00", "Two"),
       {Answer::No}},
      {"cue-out on the cue-in is a sequence fault, not a short subtitle", none,
       block("00:00:04:00", "00:00:04:00", "Frozen"), {Answer::No}},
      {"interleave off without a minimum", none, one + block("00:00:03:02", "00:00:05:00", "Two"), {}},
      {"interleave one frame over the minimum", interleave, one + block("00:00:03:03", "00:00:05:00", "Two"), {}},
      {"interleave on the exact minimum", interleave, one + block("00:00:03:02", "00:00:05:00", "Two"),
       {Answer::Yes}},
      {"times at zero escape duration and interleave", interleave,
       block("00:00:00:00", "00:00:00:10", "Opens the show") + block("00:00:02:00", "00:00:00:00", "Open cue-out"),
       {}},
      {"fast at the limit", readingSpeed(10, 25, 0), block("00:00:01:00", "00:00:03:00", "1234567890123456789012345"),
       {}},
      {"fast past it offers both remedies", readingSpeed(10, 25, 0),
       block("00:00:01:00", "00:00:03:00", "12345678901234567890123456"), {Answer::No}},
      {"reading speed rules need their option", [](Session& s) { s.slowThreshold = 50; },
       block("00:00:01:00", "00:00:02:00", "12345678901234567890") + block("00:00:03:00", "00:00:05:00", "1"), {}},
      {"slow at the limit", readingSpeed(10, 0, 50), block("00:00:01:00", "00:00:03:00", "1234567890"), {}},
      {"slow past it", readingSpeed(10, 0, 50), block("00:00:01:00", "00:00:03:00", "12345678"), {Answer::Yes}},
      {"slow off with a zero threshold", readingSpeed(10, 0, 0), block("00:00:01:00", "00:00:03:00", "12345678"), {}},
      {"zero duration passes the reading speed rules", readingSpeed(14, 0, 50),
       block("00:00:01:00", "00:00:01:00", "Text"), {Answer::Yes}},
      {"two lines of sixteen count thirty-three: at the limit", readingSpeed(16.5, 0, 0),
       block("00:00:01:00", "00:00:03:00", "1234567890123456\r1234567890123456"), {}},
      {"two lines of sixteen count thirty-three: one more", readingSpeed(16.5, 0, 0),
       block("00:00:01:00", "00:00:03:00", "1234567890123456\r12345678901234567"), {Answer::Yes}},
      {"one line at the row limit", none, block("00:00:01:00", "00:00:03:00", "12345678901234567890123456789012"), {}},
      {"one line past the row limit", none,
       block("00:00:01:00", "00:00:03:00", "123456789012345678901234567890123"), {Answer::Yes}},
      {"each of two lines past the row limit", rowOfFive, block("00:00:01:00", "00:00:03:00", "123456\r1234567"),
       {Answer::Yes, Answer::Yes}},
      {"No on the first line: the second is not asked", rowOfFive,
       block("00:00:01:00", "00:00:03:00", "123456\r1234567"), {Answer::No}},
  };
  u16 transcript;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    SubtitlingStation t;
    c.options(t.st.s);
    t.ui.answers.assign(c.answers.begin(), c.answers.end());
    t.open(c.script + kStop);
    const bool result = scanSubtitles(t.st, ScanMode::WholeScript);
    transcript += u"## " + fromLatin1(c.name) + (result ? u"\r" : u": stopped on \"" + t.docs.selection() + u"\"\r");
    for (const auto& shown : t.ui.boxes) {
      EXPECT_EQ(shown.box.buttons, Buttons::YesNo);
      EXPECT_EQ(shown.box.defaultButton, 2);
      EXPECT_EQ(shown.box.title, u"QUILLON");
      transcript += (shown.box.icon == Icon::Critical      ? u"[critical]\r"
                     : shown.box.icon == Icon::Exclamation ? u"[exclamation]\r"
                                                           : u"[other]\r") + shown.box.text + u"\r";
    }
    if (!result) {
      // A No leaves the scan with one entry.
      EXPECT_EQ(t.st.s.scan.subtitleCount, 1);
      EXPECT_EQ(t.ui.pointer, Pointer::Default);
    }
  }
  EXPECT_EQ(lines(transcript), golden("subtitling/golden/rule_checks.txt"));
}

TEST(RuleChecks, DisabledChecksAskNothingAndTheTotalsStartAfreshOnEveryScan) {
  SubtitlingStation t;
  t.st.s.checksDisabled = true;
  t.open(block("00:00:01:00", "00:00:01:05", "Short and far too long for one row of text") +
         block("00:00:00:10", "00:00:00:05", "Two\rLines") + block("00:00:09:00", "00:00:10:00", "\rLate") +
         u"DUB[0 N 00:00:11:00>00:00:12:00] JOHN\rHello\r\r" + kStop);
  EXPECT_TRUE(scanSubtitles(t.st, ScanMode::WholeScript));
  EXPECT_TRUE(scanSubtitles(t.st, ScanMode::WholeScript));
  EXPECT_TRUE(t.ui.boxTexts().empty());
  // A text opening with an empty line is one line; the dubbing entry counts nothing.
  EXPECT_EQ(t.st.s.totalbloq1linea, 2);
  EXPECT_EQ(t.st.s.totalbloq2lineas, 1);
  EXPECT_EQ(t.st.s.totalChars, 42 + 9 + 5);
}

}  // namespace
}  // namespace quillon::testing
