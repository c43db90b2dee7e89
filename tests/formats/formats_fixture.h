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
// (golden/sample_script.txt, as the station reads a plain-text file)
const std::u16string& sampleScript();

// A station with the sample script open.
struct SampleStation : FormatsStation {
  SampleStation() { open(sampleScript()); }
};

// Path of a golden file under tests/formats/golden.
std::string goldenPath(const std::string& name);
// Compares `actual` with the golden file byte for byte. With
// QUILLON_UPDATE_GOLDEN set in the environment the file is rewritten instead.
::testing::AssertionResult matchesGolden(const std::string& name, const std::string& actual);

// A script of `count` one-line subtitles, 2 s each with a 1 s gap, and the
// closing mark.
std::u16string numberedScript(int count, int fps = 25);

}  // namespace quillon::testing
