// A read-only folder and a full disk under every writer of the station:
// the file that was there stays as it was, nothing is left behind, and the
// failure comes back to the caller naming the file; an export tells the
// operator in a box.
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

// What a writer reports of its write: the reason it failed, empty when the
// file was written.
using Failure = std::string;

struct Writer {
  const char* name;
  const char* file;
  const char16_t* script;
  // Runs the command that writes `path`; the station is set up already.
  std::function<Failure(TestStation&, const std::string& path)> run;
  // The exports tell the operator in a box; the script and settings savers
  // hand their reason to the window or command that called them.
  bool tells = true;
};

Failure reported(const WriteResult& r) { return r.failed() ? r.message() : Failure(); }

template <typename Form>
Failure listExport(TestStation& t, const std::string& path, bool (*open)(Station&, Form&),
                   WriteResult (*press)(Station&, Form&)) {
  Form form;
  t.ui.savePaths.push_back(path);
  return open(t.st, form) ? reported(press(t.st, form)) : "stopped";
}

Failure fileExport(TestStation& t, const std::string& path, WriteResult (*run)(Station&, TextEncoding)) {
  t.ui.savePaths.push_back(path);
  return reported(run(t.st, TextEncoding::Windows1252));
}

Failure saveScript(TestStation& t, const std::string& path) {
  std::string error;
  saveDocumentFile(*t.docs.active(), path, error);
  return error;
}

std::vector<Writer> writers() {
  std::vector<Writer> w = {
      {"EBU STL", "out.stl", kSubtitles, [](TestStation& t, const std::string& p) { return listExport(t, p, mnuSubEbu, commandProximoSTL); }},
      {".SUB list", "out.sub", kSubtitles, [](TestStation& t, const std::string& p) { return listExport(t, p, mnuSubSub, commandProximoSUB); }},
      {"DVD Maestro", "out.txt", kSubtitles, [](TestStation& t, const std::string& p) { return listExport(t, p, mnuSubDvdm, commandProximoDVDM); }},
      {"CPC", "out.txt", kSubtitles, [](TestStation& t, const std::string& p) { return listExport(t, p, mnuSubCpc, commandProximoCPC); }},
      {"SAMI", "out.smi", kSubtitles, [](TestStation& t, const std::string& p) { return fileExport(t, p, mnuSubSami); }},
      {"SSA", "out.ssa", kSubtitles, [](TestStation& t, const std::string& p) { return fileExport(t, p, mnuSubSsa); }},
      {"SBV", "out.sbv", kSubtitles, [](TestStation& t, const std::string& p) { return fileExport(t, p, mnuSubSbv); }},
      {"SCC", "out.scc", kCaptions, [](TestStation& t, const std::string& p) { return reported((t.ui.savePaths.push_back(p), mnu_cc_scc(t.st))); }},
      {"ULT", "out.ult", kCaptions, [](TestStation& t, const std::string& p) { return listExport(t, p, mnu_cc_ult, formCCultProximo); }},
      {"plain-text script", "script.txt", kSubtitles, saveScript, false},
      {"defaults.dat", "defaults.dat", kSubtitles, [](TestStation& t, const std::string& p) { std::string e; guardarDefaults(t.st, p, &e); return e; }, false},
  };
#ifdef QUILLON_HAVE_DOCFILES
  for (const char* file : {"script.docx", "script.odt"}) w.push_back({file, file, kSubtitles, saveScript, false});
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
  return p;
}


// The failure names the file, and an export's last box tells the operator
// the file and the reason.
bool toldOfTheFailure(const Writer& w, const Prepared& p, const Failure& failure) {
  const std::string head = "cannot write " + p.path + ": ";
  if (failure.rfind(head, 0) != 0) return false;
  const auto& boxes = p.t->ui.boxes;
  return !w.tells || (!boxes.empty() && boxes.back().box.icon == Icon::Critical &&
                      boxes.back().box.text ==
                          u"Error: Cannot write " + fromUtf8(p.path) + u"\r" + fromUtf8(failure.substr(head.size())));
}

// A read-only folder, one that cannot be searched (where not even the
// question whether the file exists can be answered) and a full disk.
TEST(DiskFaults, AFailedWriteLeavesEveryPreviousFileIntactAndIsTold) {
  for (unsigned mode : {0555u, 0666u, 0u}) {
    for (const Writer& w : writers()) {
      SCOPED_TRACE(std::string(w.name) +
                   (mode == 0555u ? " in a read-only folder" : mode ? " in an unsearchable folder" : " on a full disk"));
      Prepared p = prepare(w, "fault");
      auto attempt = [&] { return toldOfTheFailure(w, p, w.run(*p.t, p.path)); };
      // Under root the read-only attempt runs in a child as another user: it checks itself.
      EXPECT_TRUE(mode ? testing::withReadOnlyFolder(p.dir, attempt, mode) : testing::withFullDisk(16, attempt));
      EXPECT_EQ(testing::readFile(p.path), kPrevious);
      EXPECT_EQ(std::distance(fs::directory_iterator(p.dir), fs::directory_iterator()), 1);  // no temporary file stayed
    }
  }
  // With room the same commands replace the file and say nothing of a failure.
  for (const Writer& w : writers()) {
    Prepared p = prepare(w, "room");
    EXPECT_EQ(w.run(*p.t, p.path), "") << w.name;
    EXPECT_NE(testing::readFile(p.path), kPrevious) << w.name;
    for (const u16& text : p.t->ui.boxTexts()) EXPECT_EQ(text.find(u"Cannot write"), u16::npos) << w.name;
  }
}

}  // namespace
}  // namespace quillon
