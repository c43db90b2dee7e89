// Caption files compared byte for byte with tests/captions/golden; with
// QUILLON_UPDATE_GOLDEN set in the environment the file is rewritten instead.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "support/station_fixture.h"

namespace quillon::testing {

inline ::testing::AssertionResult matchesCaptionGolden(const std::string& name, const std::string& actual) {
  const std::string path = std::string(QUILLON_SOURCE_DIR) + "/tests/captions/golden/" + name;
  if (std::getenv("QUILLON_UPDATE_GOLDEN")) {
    std::ofstream(path, std::ios::binary) << actual;
    return ::testing::AssertionSuccess();
  }
  if (readFile(path) == actual && !actual.empty()) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << name << " differs from " << path;
}

}  // namespace quillon::testing
