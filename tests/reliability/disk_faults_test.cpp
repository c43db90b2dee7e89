// A read-only folder and a full disk under every writer of the station:
// the file that was there stays as it was, nothing is left behind, and the
// station's boxes are the ones it shows anyway.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "captions/caption_checks.h"
#include "captions/scc_export.h"
#include "captions/ult_export.h"
#include "core/atomic_file.h"
#include "core/settings.h"
#include "formats/cpc_export.h"
#include "formats/dvdm_export.h"
#include "formats/stl_export.h"
#include "formats/sub_export.h"
#include "formats/text_exports.h"
#include "reliability_support.h"
#include "script/document_files.h"
#include "support/station_fixture.h"
#ifdef QUILLON_HAVE_DOCFILES
#include "script/files/office_formats.h"
#endif

namespace quillon {
namespace {

namespace fs = std::filesystem;
using testing::TestStation;

const char16_t* kSubtitles =
    u"SUB[0 N 10:00:01:00>10:00:03:12]\nPlain and simple.\n\n"
    u"SUB[3LI 10:00:04:00>10:00:06:00]\nLos ni\u00f1os cantan\nen la calle\n\nSUB[\n";
const char16_t* kCaptions =
    u"CAP[3IR 00:00:01:00>00:00:03:00]\nOne\nTwo\n\nCAP[0NL 00:00:04:00>00:00:06:15]\nA\nB\n";
const std::string kPrevious = "the previous file, which must survive\n";

struct Writer {
  const char* name;
  const char* file;
  const char16_t* script;
  // Runs the command that writes `path`; the station is set up already.
  std::function<void(TestStation&, const std::string& path)> run;
};

template <typename Form>
void listExport(TestStation& t, const std::string& path, bool (*open)(Station&, Form&),
                bool (*press)(Station&, Form&)) {
  Form form;
  t.ui.savePaths.push_back(path);
  if (open(t.st, form)) press(t.st, form);
}

std::vector<Writer> writers() {
  std::vector<Writer> w = {
      {"EBU STL", "out.stl", kSubtitles, [](TestStation& t, const std::string& p) { listExport(t, p, mnuSubEbu, commandProximoSTL); }},
      {".SUB list", "out.sub", kSubtitles, [](TestStation& t, const std::string& p) { listExport(t, p, mnuSubSub, commandProximoSUB); }},
      {"DVD Maestro", "out.txt", kSubtitles, [](TestStation& t, const std::string& p) { listExport(t, p, mnuSubDvdm, commandProximoDVDM); }},
      {"CPC", "out.txt", kSubtitles, [](TestStation& t, const std::string& p) { listExport(t, p, mnuSubCpc, commandProximoCPC); }},
      {"SAMI", "out.smi", kSubtitles, [](TestStation& t, const std::string& p) { t.ui.savePaths.push_back(p); mnuSubSami(t.st); }},
      {"SSA", "out.ssa", kSubtitles, [](TestStation& t, const std::string& p) { t.ui.savePaths.push_back(p); mnuSubSsa(t.st); }},
      {"SBV", "out.sbv", kSubtitles, [](TestStation& t, const std::string& p) { t.ui.savePaths.push_back(p); mnuSubSbv(t.st); }},
      {"SCC", "out.scc", kCaptions, [](TestStation& t, const std::string& p) { t.ui.savePaths.push_back(p); mnu_cc_scc(t.st); }},
      {"ULT", "out.ult", kCaptions, [](TestStation& t, const std::string& p) {
         FormCCult form;
         t.ui.savePaths.push_back(p);
         if (mnu_cc_ult(t.st, form)) formCCultProximo(t.st, form);
       }},
      {"plain-text script", "script.txt", kSubtitles, [](TestStation& t, const std::string& p) {
         std::string error;
         saveDocumentFile(*t.docs.active(), p, error);
       }},
      {"defaults.dat", "defaults.dat", kSubtitles, [](TestStation& t, const std::string& p) { guardarDefaults(t.st, p); }},
  };
#ifdef QUILLON_HAVE_DOCFILES
  for (const char* file : {"script.docx", "script.odt"})
    w.push_back({file, file, kSubtitles, [](TestStation& t, const std::string& p) {
                   std::string error;
                   saveDocumentFile(*t.docs.active(), p, error);
                 }});
#endif
  return w;
}

struct Prepared {
  std::unique_ptr<TestStation> t;
  std::string dir, path;
};

Prepared prepare(const Writer& w, const std::string& fault) {
#ifdef QUILLON_HAVE_DOCFILES
  registerOfficeDocumentFormats();
#endif
  Prepared p{std::make_unique<TestStation>(25), testing::tempDir(std::string("fault-") + fault), ""};
  installCaptionChecks(p.t->st);
  p.t->open(w.script);
  p.path = p.dir + "/" + w.file;
  std::ofstream(p.path, std::ios::binary) << kPrevious;
  takeWriteFailures();
  return p;
}

// Only the target itself is in the folder: no temporary file stayed.
bool onlyTheTarget(const std::string& dir) {
  int n = 0;
  for ([[maybe_unused]] const auto& e : fs::directory_iterator(dir)) ++n;
  return n == 1;
}

bool noBoxSpeaksOfTheWrite(const ScriptedUi& ui) {
  for (const auto& text : ui.boxTexts())
    if (toUtf8(text).find("cannot write") != std::string::npos) return false;
  return true;
}

TEST(DiskFaults, AReadOnlyFolderLeavesEveryPreviousFileIntact) {
  for (const Writer& w : writers()) {
    Prepared p = prepare(w, "readonly");
    bool ok = testing::withReadOnlyFolder(p.dir, [&] {
      w.run(*p.t, p.path);
      return testing::readFile(p.path) == kPrevious && onlyTheTarget(p.dir) && noBoxSpeaksOfTheWrite(p.t->ui) &&
             !takeWriteFailures().empty();
    });
    EXPECT_TRUE(ok) << w.name;
    EXPECT_EQ(testing::readFile(p.path), kPrevious) << w.name;
  }
}

TEST(DiskFaults, AFullDiskLeavesEveryPreviousFileIntact) {
  for (const Writer& w : writers()) {
    Prepared p = prepare(w, "full");
    testing::withFullDisk(16, [&] {
      w.run(*p.t, p.path);
      return true;
    });
    EXPECT_EQ(testing::readFile(p.path), kPrevious) << w.name;
    EXPECT_TRUE(onlyTheTarget(p.dir)) << w.name;
    EXPECT_TRUE(noBoxSpeaksOfTheWrite(p.t->ui)) << w.name;
    std::vector<std::string> failures = takeWriteFailures();
    ASSERT_EQ(failures.size(), 1u) << w.name;
    EXPECT_NE(failures[0].find(p.path), std::string::npos) << failures[0];

    // With room again the same command replaces the file.
    Prepared again = prepare(w, "room");
    w.run(*again.t, again.path);
    EXPECT_NE(testing::readFile(again.path), kPrevious) << w.name;
    EXPECT_TRUE(takeWriteFailures().empty()) << w.name;
  }
}

}  // namespace
}  // namespace quillon
