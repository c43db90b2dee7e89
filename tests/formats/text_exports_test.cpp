#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "core/timecode.h"
#include "formats/text_exports.h"
#include "formats_fixture.h"
#include "script/document_files.h"

namespace quillon {
namespace {

using testing::FormatsStation;
using testing::kSampleScript;
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

TEST(SamiExport, SampleScriptMatchesGoldenFile) {
  FormatsStation t;
  t.open(kSampleScript);
  openVideo(t);
  std::string file = fileExport(t, mnuSubSami, tempDir("sami") + "/s.smi");
  EXPECT_TRUE(testing::matchesGolden("sample.smi", file));
  EXPECT_EQ(t.ui.lastBox().text, u"SAMI file created.");
  EXPECT_EQ(t.ui.saveRequests[0].title, u"Create SAMI subtitle list file (*.smi)");
  // Mark I: opened at both lines and never closed; mark 1: closed at the break.
  EXPECT_NE(file.find("<Sync Start=4000><P Class=ENCC><I>Los ni\xF1os cantan<br><I>\xBFY despu\xE9s\x85?\r\n"
                      "<Sync Start=6000><P Class=ENCC>&nbsp;\r\n"),
            std::string::npos);
  EXPECT_NE(file.find("<I>First in italics</I><br>second plain\r\n"), std::string::npos);
}

TEST(SamiExport, WithoutAVideoEveryTimeIsZero) {
  FormatsStation t;
  t.open(kSampleScript);
  std::string file = fileExport(t, mnuSubSami, tempDir("sami-novideo") + "/s.smi", TextEncoding::Utf8);
  EXPECT_EQ(file.find("<Sync Start=1"), std::string::npos);
  EXPECT_NE(file.find("<Sync Start=0><P Class=ENCC><I>Los ni\xC3\xB1os"), std::string::npos);
}

TEST(SsaExport, SampleScriptMatchesGoldenFile) {
  FormatsStation t;
  t.open(kSampleScript);
  openVideo(t);
  std::string file = fileExport(t, mnuSubSsa, tempDir("ssa") + "/s.ssa");
  EXPECT_TRUE(testing::matchesGolden("sample.ssa", file));
  EXPECT_EQ(t.ui.lastBox().text, u"SSA file created.");
  EXPECT_NE(file.find("Dialogue: Marked=0,0:00:08:00,0:00:10:00,*Default,Name,0000,0000,0000,,"
                      "{\\i1}First in italics\\N{\\i0}second plain\r\n"),
            std::string::npos);
  // Only position 9 travels, as the top of the screen.
  EXPECT_NE(file.find(",,{\\a6}First plain\\N{\\i1}\x93Second\x94 costs 5$\r\n"), std::string::npos);
  EXPECT_EQ(file.find("{\\a", file.find("Mark two")), std::string::npos);
}

TEST(SbvExport, SampleScriptMatchesGoldenFile) {
  FormatsStation t;
  t.open(kSampleScript);
  openVideo(t);
  std::string file = fileExport(t, mnuSubSbv, tempDir("sbv") + "/s.sbv");
  EXPECT_TRUE(testing::matchesGolden("sample.sbv", file));
  EXPECT_EQ(t.ui.saveRequests[0].filter, u"SBV subtitle files (*.SBV)|*.SBV");
  // Whole seconds keep the colon of the timecode; the dubbing row leaves an
  // empty line of its own.
  EXPECT_EQ(file.rfind("0:00:01:00,0:00:03.480\r\nPlain and simple.\r\n0:00:04:00,0:00:06:00\r\n", 0), 0u);
  EXPECT_NE(file.find("Y despu\xE9s\x85?\r\n\r\n0:00:08:00"), std::string::npos);
}

TEST(QtTextExport, NewDocumentFromTheTable) {
  FormatsStation t;
  t.open(kSampleScript);
  openVideo(t);
  ASSERT_TRUE(mnuSubQt(t.st));
  EXPECT_EQ(t.docs.documentsCount(), 2);
  EXPECT_EQ(t.docs.fontName(), u"Arial Unicode MS");
  std::string doc = documentBytes(t);
  EXPECT_TRUE(testing::matchesGolden("sample_qt.txt", doc));
  EXPECT_NE(doc.find("[00:00:01.00]\nPlain and simple.\n\n[00:00:03.12]\n\n\n[00:00:04.00]"), std::string::npos);
}

TEST(UnicodeTextExport, NumberedLayoutAndFourDigits) {
  FormatsStation t;
  t.open(kSampleScript);
  ASSERT_TRUE(mnuSubUnitext(t.st));
  std::string doc = documentBytes(t);
  EXPECT_TRUE(testing::matchesGolden("sample_unitext.txt", doc));
  // Numbers are the rows of the scan: the dubbing row's 3 is missing.
  EXPECT_NE(doc.find("\n\n0004\t10:00:08:00"), std::string::npos);
  EXPECT_EQ(doc.find("0003\t"), std::string::npos);

  FormatsStation big;
  big.open(testing::numberedScript(10001));
  big.st.s.maxCharsRow = 40;
  ASSERT_TRUE(mnuSubUnitext(big.st));
  std::string many = documentBytes(big);
  EXPECT_NE(many.find("\n\n9999\t"), std::string::npos);
  EXPECT_NE(many.find("\n\n0000\t08:20:00:00\t08:20:02:00\nSubtitle 10000\n"), std::string::npos);
  EXPECT_NE(many.find("\n\n0001\t08:20:03:00"), std::string::npos);
}

TEST(TextExports, EmptyListMessageForEveryExport) {
  for (auto run : {+[](Station& s) { return mnuSubSami(s).written; }, +[](Station& s) { return mnuSubSsa(s).written; },
                   +[](Station& s) { return mnuSubSbv(s).written; }, +[](Station& s) { return mnuSubQt(s); },
                   +[](Station& s) { return mnuSubUnitext(s); }}) {
    FormatsStation t;
    t.open(u"Dialogue still untimed.\n");
    t.ui.savePaths.push_back(tempDir("text-empty") + "/x");
    EXPECT_FALSE(run(t.st));
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.lastBox().text, u"Error: Invalid subtitle list.");
  }
}

// FFmpeg's readers on the station's SAMI and SSA files.
std::string ffmpegToSrt(const std::string& in, const std::string& dir) {
  std::string out = dir + "/ffmpeg.srt";
  std::string cmd = "ffmpeg -nostdin -loglevel error -y -i " + in + " " + out + " > " + dir + "/ffmpeg.log 2>&1";
  if (std::system(cmd.c_str()) != 0) return "ffmpeg failed: " + readFile(dir + "/ffmpeg.log");
  return readFile(out);
}

bool haveFfmpeg() { return std::system("ffmpeg -version > /dev/null 2>&1") == 0; }

TEST(TextExports, FfmpegReadsSamiAndSsa) {
  if (!haveFfmpeg()) GTEST_SKIP() << "ffmpeg not installed";
  FormatsStation t;
  t.open(kSampleScript);
  openVideo(t);
  const std::string dir = tempDir("ffmpeg");
  fileExport(t, mnuSubSami, dir + "/s.smi", TextEncoding::Utf8);
  std::string srt = ffmpegToSrt(dir + "/s.smi", dir);
  EXPECT_NE(srt.find("00:00:01,000 --> 00:00:03,480\nPlain and simple."), std::string::npos) << srt;
  EXPECT_NE(srt.find("Los niños cantan"), std::string::npos) << srt;
  EXPECT_NE(srt.find("00:00:17,000 --> 00:00:19,000\nMark two, À la carte"), std::string::npos) << srt;

  fileExport(t, mnuSubSsa, dir + "/s.ssa", TextEncoding::Utf8);
  srt = ffmpegToSrt(dir + "/s.ssa", dir);
  // The station writes its SSA times with a colon before the hundredths;
  // FFmpeg reads them as the station means them.
  EXPECT_NE(srt.find("Plain and simple."), std::string::npos) << srt;
  EXPECT_NE(srt.find("¿Y después…?"), std::string::npos) << srt;
  EXPECT_NE(srt.find("Mark two, À la carte"), std::string::npos) << srt;
}

}  // namespace
}  // namespace quillon
