#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "core/timecode.h"
#include "formats/stl_export.h"
#include "formats/text_exports.h"
#include "formats_fixture.h"
#include "script/document_files.h"

namespace quillon {
namespace {

using testing::FormatsStation;
using testing::SampleStation;
using testing::readFile;
using testing::tempDir;

// A video of half an hour whose own timecode starts at ten o'clock: player
// positions are the script's times less ten hours.
void openVideo(FormatsStation& t) {
  t.st.s.videoFile = u"episode12.mp4";
  t.st.s.videoDuration = 1800;
  setVideoTimecodeWindow(t.st.s, t.st.view, u"1000000010300000");
}

std::string fileExport(FormatsStation& t, WriteResult (*handler)(Station&, TextEncoding), const std::string& path,
                       TextEncoding enc = TextEncoding::Windows1252) {
  t.ui.savePaths.push_back(path);
  if (!handler(t.st, enc)) return {};
  return readFile(path);
}

// A document as the plain-text file the station saves it to.
std::string documentBytes(FormatsStation& t) { return plainTextBytes(*t.docs.active()); }

// SAMI: mark I is opened at both lines and never closed; mark 1 is closed at
// the break. SSA: only position 9 travels, as the top of the screen. SBV:
// whole seconds keep the colon of the timecode; the dubbing row leaves an
// empty line of its own. The QuickTime text is a new document.
TEST(TextExports, SampleScriptMatchesGoldenFiles) {
  SampleStation t;
  openVideo(t);
  const std::string dir = tempDir("text-golden");
  EXPECT_TRUE(testing::matchesGolden("sample.smi", fileExport(t, mnuSubSami, dir + "/s.smi")));
  EXPECT_EQ(t.ui.lastBox().text, u"SAMI file created.");
  EXPECT_TRUE(testing::matchesGolden("sample.ssa", fileExport(t, mnuSubSsa, dir + "/s.ssa")));
  EXPECT_EQ(t.ui.lastBox().text, u"SSA file created.");
  EXPECT_TRUE(testing::matchesGolden("sample.sbv", fileExport(t, mnuSubSbv, dir + "/s.sbv")));
  ASSERT_TRUE(mnuSubQt(t.st));
  EXPECT_EQ(t.docs.documentsCount(), 2);
  EXPECT_EQ(t.docs.fontName(), u"Arial Unicode MS");
  EXPECT_TRUE(testing::matchesGolden("sample_qt.txt", documentBytes(t)));
}

TEST(UnicodeTextExport, NumberedLayoutAndFourDigits) {
  SampleStation t;
  ASSERT_TRUE(mnuSubUnitext(t.st));
  // Numbers are the rows of the scan: the dubbing row's 3 is missing.
  EXPECT_TRUE(testing::matchesGolden("sample_unitext.txt", documentBytes(t)));

  FormatsStation big;
  big.open(testing::numberedScript(10001));
  big.st.s.maxCharsRow = 40;
  ASSERT_TRUE(mnuSubUnitext(big.st));
  // Past 9999 the numbers start again from 0000.
  std::string many = documentBytes(big);
  EXPECT_NE(many.find("\n\n9999\t08:19:57:00\t08:19:59:00\nSubtitle 9999\n\n"
                      "0000\t08:20:00:00\t08:20:02:00\nSubtitle 10000\n\n0001\t08:20:03:00"), std::string::npos);
}

TEST(TextExports, EmptyListMessageForEveryExport) {
  for (auto run : {+[](Station& s) { return mnuSubSami(s).written; }, +[](Station& s) { return mnuSubSsa(s).written; },
                   +[](Station& s) { return mnuSubSbv(s).written; }, +[](Station& s) { return mnuSubQt(s); },
                   +[](Station& s) { return mnuSubUnitext(s); },
                   +[](Station& s) { FormaSTL f; return mnuSubEbu(s, f); }}) {
    FormatsStation t;
    t.open(u"Dialogue still untimed.\n");
    t.ui.savePaths.push_back(tempDir("text-empty") + "/x");
    EXPECT_FALSE(run(t.st));
    EXPECT_EQ(t.ui.boxTexts(), std::vector<u16>{u"Error: Invalid subtitle list."});
    EXPECT_EQ(t.ui.lastBox().icon, Icon::Critical);
    EXPECT_TRUE(t.ui.saveRequests.empty());
  }
}

// FFmpeg's readers on the station's SAMI and SSA files. The station writes
// its SSA times with a colon before the hundredths; FFmpeg reads them as the
// station means them.
TEST(TextExports, FfmpegReadsSamiAndSsa) {
  if (std::system("ffmpeg -version > /dev/null 2>&1") != 0) GTEST_SKIP() << "ffmpeg not installed";
  SampleStation t;
  openVideo(t);
  const std::string dir = tempDir("ffmpeg");
  for (auto [handler, file] : {std::pair{&mnuSubSami, "s.smi"}, std::pair{&mnuSubSsa, "s.ssa"}}) {
    fileExport(t, handler, dir + "/" + file, TextEncoding::Utf8);
    const std::string cmd = "ffmpeg -nostdin -loglevel error -y -i " + dir + "/" + file + " " + dir + "/out.srt";
    ASSERT_EQ(std::system(cmd.c_str()), 0) << file;
    const std::string srt = readFile(dir + "/out.srt");
    for (const char* part : {"00:00:01,000 --> 00:00:03,480\nPlain and simple.", "\xC2\xBFY despu\xC3\xA9s",
                             "00:00:17,000 --> 00:00:19,000\nMark two, \xC3\x80 la carte"})
      EXPECT_NE(srt.find(part), std::string::npos) << file << ": " << part << "\n" << srt;
  }
}

}  // namespace
}  // namespace quillon
