// The fuzz targets' seed corpora, written from the inputs the other test
// folders check their golden output against. With QUILLON_SEED_DIR set (as
// scripts/fuzz does) they go there, one folder a target; otherwise into a
// temporary folder, which still shows every target gets seeds.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <vector>

#include "core/session.h"
#include "core/settings.h"
#include "support/station_fixture.h"
#include "script/memory_document.h"
#ifdef QUILLON_HAVE_DOCFILES
#include "script/files/office_formats.h"
#endif

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Seeds = std::map<std::string, std::vector<std::string>>;

std::string golden(const std::string& folder, const std::string& name) {
  std::string bytes = testing::readFile(std::string(QUILLON_SOURCE_DIR) + "/tests/" + folder + "/golden/" + name);
  EXPECT_FALSE(bytes.empty()) << "missing golden file " << folder << "/" << name;
  return bytes;
}

// The inputs kept as files under golden/seeds/TARGET/, and those the suite
// makes or checks elsewhere.
Seeds seeds() {
  Seeds s;
  for (const auto& folder : fs::directory_iterator(fs::path(QUILLON_SOURCE_DIR) / "tests/reliability/golden/seeds"))
    for (const auto& file : fs::directory_iterator(folder.path()))
      s[folder.path().filename().string()].push_back(testing::readFile(file.path().string()));

  auto& scripts = s["scan_subtitles"];
  for (const char* name : {"import_subl.txt", "import_dos850.txt", "import_srt.txt", "import_dotsub.txt",
                           "import_unitext.txt", "merge_text.txt"})
    scripts.push_back(golden("formats", name));
  scripts.push_back(testing::readFile(std::string(QUILLON_SOURCE_DIR) + "/samples/sample-script.txt"));
  std::string generated = toUtf8(testing::generatedSubtitleScript(6, 25));
  std::replace(generated.begin(), generated.end(), '\r', '\n');
  scripts.push_back(generated);
  s["import_stl"].push_back(golden("formats", "sample.stl"));
  s["import_lists"].push_back(golden("formats", "sample.sub"));
  s["import_unitext"].push_back(golden("formats", "sample_unitext.txt"));
  Session defaults;
  applySettingsLine(defaults, "");
  s["settings_line"].push_back(buildSettingsLine(defaults));

#ifdef QUILLON_HAVE_DOCFILES
  MemoryDocument doc;
  doc.setText(u"SUB[0 N 10:00:01:00>10:00:03:00]\rPlain and simple.\r\rSUB[\r");
  doc.setItalic({33, 38}, true);
  std::string bytes, problem;
  if (docfiles::buildDocx(doc, bytes, problem)) s["office_documents"].push_back(bytes);
  if (docfiles::buildOdt(doc, bytes, problem)) s["office_documents"].push_back(bytes);
  EXPECT_EQ(s["office_documents"].size(), 2u) << problem;
#endif
  return s;
}

TEST(SeedCorpora, EveryFuzzTargetGetsSeedsFromTheSuitesInputs) {
  const char* env = std::getenv("QUILLON_SEED_DIR");
  const fs::path dir = env && *env ? fs::path(env) : fs::path(testing::tempDir("seeds"));
  for (const auto& [target, inputs] : seeds()) {
    fs::create_directories(dir / target);
    int n = 0;
    for (const auto& input : inputs) {
      std::ofstream(dir / target / ("seed-" + std::to_string(++n)), std::ios::binary) << input;
      EXPECT_FALSE(input.empty()) << target << " seed " << n;
    }
  }
  const char* targets[] = {"scan_subtitles", "scan_captions",  "import_stl", "import_lists", "import_unitext",
                           "merge_timing",   "settings_line", "file_tag"};
  for (const char* target : targets) EXPECT_TRUE(fs::exists(dir / target)) << target;
}

}  // namespace
}  // namespace quillon
