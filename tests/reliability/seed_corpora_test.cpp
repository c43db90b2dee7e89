// The fuzz targets' seed corpora, written from the inputs the other test
// folders check their golden output against. With QUILLON_SEED_DIR set (as
// scripts/fuzz does) they go there, one folder a target; otherwise into a
// temporary folder, which still shows every target gets seeds.
#include <gtest/gtest.h>

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

const char* kTiming =
    "0001\t10:00:01:00\t10:00:03:00\n0002\t10:00:04:00\t10:00:06:00\n"
    "0002.A\t10:00:06:05\t10:00:08:00\n0003\t10:00:09:00\t10:00:11:00\n";

Seeds seeds() {
  Seeds s;
  // Scripts: the imports' golden scripts, the bundled sample, a generated
  // timed script and dubbing tags long and short.
  auto& scripts = s["scan_subtitles"];
  for (const char* name : {"import_subl.txt", "import_dos850.txt", "import_srt.txt", "import_dotsub.txt",
                           "import_unitext.txt", "merge_text.txt"})
    scripts.push_back(golden("formats", name));
  scripts.push_back(testing::readFile(std::string(QUILLON_SOURCE_DIR) + "/samples/sample-script.txt"));
  std::string generated = toUtf8(testing::generatedSubtitleScript(6, 25));
  for (char& c : generated)
    if (c == '\r') c = '\n';
  scripts.push_back(generated);
  scripts.push_back("DUB[0 1 10:00:01:00>10:00:02:00] JUAN\nHola.\n\nDUB[10:00:03:00]\tMARIA\nAdi\xC3\xB3s.\n\nSUB[\n");

  s["scan_captions"] = {
      "CAP[3IR 00:00:01:00>00:00:03:00]\nOne\nTwo\n\nCAP[0NL 00:00:04:00>00:00:06:15]\nA\nB\nC\nD\n",
      "CAP[0NC 00:00:01:00>00:00:02:00]\nA\n\nCAP[0NC 00:00:03:00>00:00:09:00]\nB\n",
      "CAP[0NC 00:00:05:00>00:00:04:00]\nBackwards\n"};

  s["import_stl"] = {golden("formats", "sample.stl")};

  s["import_lists"] = {
      "{25}{50}Hola|se\xC3\xB1or\r\n{75}{112}Uno|dos|tres\r\n{150}{175}Sin barra\r\n\r\n",
      "\r\n0001      10:00:01:00 -> 10:00:03:12 x\r\nSe\xA4or \x82l\r\nsegunda\r\n\r\n\r\n"
      "0002      10:00:04:00    10:00:05:00\r\n\x85ltima\r\n\r\n",
      "1\r\n00:00:01,500 --> 00:00:02,999\r\nFirst line\r\nSecond l\xC3\xADne\r\n\r\n"
      "2\r\n00:00:03,050 --> 00:00:04,083\r\n<i>Tags stay</i>\r\n\r\n",
      "*PART 1\r\nGenerator note\r\n00:00:00.00\\00:00:00.00\r\n[\xB5rbol\r\nplain\r\n00:00:01.00\\00:00:02.05\r\n"
      "}Top line\r\n00:00:03.00\\00:00:04.00\r\n*End*\r\n",
      golden("formats", "sample.sub")};

  s["import_unitext"] = {golden("formats", "sample_unitext.txt")};

  s["merge_timing"] = {std::string(kTiming) + std::string(1, '\0') +
                       "12\n0001\nUno\n\n0003\nTres\n\n0003.A\nCard of three\n\n0003.C\nSkipped B\n\n"};

  Session defaults;
  applySettingsLine(defaults, "");
  s["settings_line"] = {buildSettingsLine(defaults), "FLTFTFTTFFFFFTFT1400250032050.2501.0006.000.30",
                        "TTFTFTTFFFFFTFT14002500320510.2501.0006.000.30"};

  s["file_tag"] = {std::string(64, 'x') + "\"P01000000010000500\"\r\n",
                   std::string(40, '\0') + " C 0100000001595900\r\n"};

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
    ASSERT_FALSE(inputs.empty()) << target;
    fs::create_directories(dir / target);
    int n = 0;
    for (const auto& input : inputs) {
      std::ofstream(dir / target / ("seed-" + std::to_string(++n)), std::ios::binary) << input;
      EXPECT_FALSE(input.empty()) << target << " seed " << n;
    }
  }
}

}  // namespace
}  // namespace quillon
