// Shared pieces of the interchange-format tests: a station with the rule
// checks in its scan, the sample script every export is run on, and golden
// files compared byte for byte.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "subtitling/rule_checks.h"
#include "support/station_fixture.h"

namespace quillon::testing {

struct FormatsStation : TestStation {
  explicit FormatsStation(int fps = 25) : TestStation(fps) { installSubtitleChecks(st); }
};

// Positions, the three alignments, the four style marks, one and two lines,
// accented letters, the ellipsis, quotation marks, a dubbing row the
// subtitle exports skip, and the closing "SUB[" mark that ends the last text.
inline const char16_t* kSampleScript =
    u"Episode 12 notes\n"
    u"\n"
    u"SUB[0 N 10:00:01:00>10:00:03:12]\n"
    u"Plain and simple.\n"
    u"\n"
    u"SUB[3LI 10:00:04:00>10:00:06:00]\n"
    u"Los ni\u00f1os cantan\n"
    u"\u00bfY despu\u00e9s\u2026?\n"
    u"\n"
    u"DUB[0 N 10:00:06:10>10:00:07:00] JUAN\n"
    u"A dubbing line.\n"
    u"\n"
    u"SUB[7R1 10:00:08:00>10:00:10:00]\n"
    u"First in italics\n"
    u"second plain\n"
    u"\n"
    u"SUB[9 2 10:00:11:00>10:00:13:00]\n"
    u"First plain\n"
    u"\u201cSecond\u201d costs 5$\n"
    u"\n"
    u"SUB[4 1 10:00:14:00>10:00:16:00]\n"
    u"Mark one, one line\n"
    u"\n"
    u"SUB[8L2 10:00:17:00>10:00:19:00]\n"
    u"Mark two, \u00c0 la carte\n"
    u"\n"
    u"SUB[\n";

// Path of a golden file under tests/formats/golden.
std::string goldenPath(const std::string& name);
// Compares `actual` with the golden file byte for byte. With
// QUILLON_UPDATE_GOLDEN set in the environment the file is rewritten instead.
::testing::AssertionResult matchesGolden(const std::string& name, const std::string& actual);

// A script of `count` one-line subtitles, 2 s each with a 1 s gap, and the
// closing mark.
std::u16string numberedScript(int count, int fps = 25);

}  // namespace quillon::testing
