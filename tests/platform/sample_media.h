// Where the generated sample media are; tests skip without them.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace quillon::testing {

inline std::string sampleMedia(const std::string& name) {
#ifdef QUILLON_SAMPLE_MEDIA_DIR
  std::string path = std::string(QUILLON_SAMPLE_MEDIA_DIR) + "/" + name;
  if (std::filesystem::exists(path)) return path;
#endif
  return "";
}

}  // namespace quillon::testing

#define QUILLON_SAMPLE_OR_SKIP(var, name)                                          \
  const std::string var = ::quillon::testing::sampleMedia(name);                    \
  if (var.empty()) GTEST_SKIP() << "sample media not generated (ffmpeg missing?)"
