#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "formats/export_frame.h"
#include "formats/stl_export.h"
#include "formats/stl_import.h"
#include "formats_fixture.h"

namespace quillon {
namespace {

using testing::FormatsStation;
using testing::kSampleScript;
using testing::readFile;
using testing::tempDir;

// The fields a document without properties leaves to the station's defaults,
// fixed so that the file does not depend on the day or the user.
void fixedFields(FormaSTL& f) {
  f["ComboDFC"] = u"25";
  f["TextCD"] = u"240131";
  f["TextRD"] = u"240201";
  f["TextRN"] = u"3";
}

std::string exportStl(FormatsStation& t, const std::string& path, void (*edit)(FormaSTL&) = fixedFields) {
  FormaSTL form;
  t.ui.savePaths.push_back(path);
  if (!mnuSubEbu(t.st, form)) return {};
  if (edit) edit(form);
  commandProximoSTL(t.st, form);
  return readFile(path);
}

std::string block(const std::string& file, int n) { return file.substr(1024 + 128 * static_cast<size_t>(n), 128); }
int byteAt(const std::string& s, size_t i) { return static_cast<unsigned char>(s[i]); }
// The text field of a block as far as `expected` goes.
std::string field(const std::string& b, const std::string& expected) { return b.substr(16, expected.size()); }
#define EXPECT_FIELD(b, expected) EXPECT_EQ(field(b, expected), std::string(expected))

TEST(StlExport, SampleScriptMatchesGoldenFile) {
  FormatsStation t;
  t.open(kSampleScript);
  std::string file = exportStl(t, tempDir("stl-golden") + "/sample.stl");
  EXPECT_TRUE(testing::matchesGolden("sample.stl", file));
}

// The golden file holds every byte; these are the points where the file
// keeps the station's own ways, named so a regenerated golden file cannot
// quietly lose them.
TEST(StlExport, QuirksOfTheBlocksAndTheUserField) {
  FormatsStation t;
  t.open(kSampleScript);
  t.docs.user = u"Ana Mar\u00eda";
  std::string file = exportStl(t, tempDir("stl-layout") + "/sample.stl");
  ASSERT_EQ(file.size(), 1024u + 128u * 7u);
  // The line end replaces the last two bytes; the user goes in code page 850.
  EXPECT_EQ(file.substr(file.size() - 2), "\r\n");
  EXPECT_EQ(file.substr(277, 32), "Ana Mar\xA1" "a" + std::string(23, ' '));
  EXPECT_EQ(file.substr(238, 10), "0000700007");  // TNB and TNS count page 0 and real blocks only
  // The dubbing row keeps its number: 1 2 4 5 6 7.
  const int numbers[] = {1, 2, 4, 5, 6, 7};
  for (int k = 0; k < 6; ++k) EXPECT_EQ(byteAt(block(file, k + 1), 1), numbers[k]) << k;
  // 3LI: both lines in italics, the ellipsis three full stops.
  EXPECT_FIELD(block(file, 2), "<\x0B\x0BLos ni\xC4nos cantan>\x0A\x8A<\x0B\x0B\xBFY despu\xC2" "es...?>\x0A\x8F\x8F\x8F\x8F");
  // 9 2: VP 6, the second line in italics, "$" as 0xA4.
  EXPECT_EQ(byteAt(block(file, 4), 13), 6);
  EXPECT_FIELD(block(file, 4), "\x0B\x0B" "First plain\x0A\x8A<\x0B\x0B\xAASecond\xBA costs 5\xA4>\x0A\x8F");
  // Mark 1 on one line opens and never closes.
  EXPECT_FIELD(block(file, 5), "<\x0B\x0BMark one, one line\x0A\x8F");
  // Mark 2 on one line: no italics; left is JC 0; digit 8 is VP 6.
  std::string b6 = block(file, 6);
  EXPECT_EQ(byteAt(b6, 13), 6);
  EXPECT_EQ(byteAt(b6, 14), 0);
  EXPECT_FIELD(b6, "\x0B\x0BMark two, \xC1" "A la carte\x0A");
}

TEST(StlExport, PageZeroFromTheLabelsOrTheTypedText) {
  FormatsStation t;
  t.open(kSampleScript);
  std::string file = exportStl(t, tempDir("stl-page0") + "/a.stl");
  std::string p0 = block(file, 0);
  EXPECT_EQ(p0.substr(0, 18), std::string("\x00\x00\x00\xFF\x00\x00\x00\x00\x00\x00\x00\x00\x08\x11\x02\x00\x0B\x0B", 18));
  EXPECT_FIELD(p0.substr(2), std::string(
            "Title: Script1\x0A\x8A\x0B\x0B" "Episode: \x0A\x8A\x0B\x0B" "Story: \x0A\x8A\x0B\x0B" "Lang: ESP\x0A\x8F"));

  FormatsStation u;
  u.open(kSampleScript);
  file = exportStl(u, tempDir("stl-page0b") + "/a.stl", [](FormaSTL& f) {
    f["ComboLC"] = u"Italian";
    f["TextPage0"] = u"L\u00ednea 1\r\nLine 2";
  });
  // Typed text goes uncoded; CR LF leaves its LF behind the break.
  EXPECT_FIELD(block(file, 0).substr(2), "L\xEDnea 1\x0A\x8A\x0ALine 2\x0A\x8F");

  FormatsStation v;
  v.open(kSampleScript);
  file = exportStl(v, tempDir("stl-page0c") + "/a.stl", [](FormaSTL& f) { f["ComboLC"] = u"Italian"; });
  EXPECT_NE(block(file, 0).find("Lang: \x0A\x8F"), std::string::npos);
  EXPECT_EQ(file.substr(14, 2), "15");
}

TEST(StlExport, SubtitleNumber256IsLowByteFirst) {
  FormatsStation t;
  t.open(testing::numberedScript(256));
  std::string file = exportStl(t, tempDir("stl-256") + "/n.stl");
  ASSERT_EQ(file.size(), 1024u + 128u * 257u);
  EXPECT_EQ(block(file, 256).substr(0, 4), std::string("\x00\x00\x01\xFF", 4));
  EXPECT_EQ(block(file, 255).substr(0, 4), std::string("\x00\xFF\x00\xFF", 4));
}

TEST(StlExport, LongTextIsCutAtTheField) {
  FormatsStation t;
  t.st.s.maxCharsRow = 100;
  t.open(u"SUB[0 N 00:00:01:00>00:00:04:00]\n" + u16(60, u'\u00e9') + u"\n\nSUB[0 N 00:00:05:00>00:00:06:00]\nx\n\nSUB[\n");
  std::string file = exportStl(t, tempDir("stl-cut") + "/n.stl");
  EXPECT_EQ(block(file, 1).substr(16), "\x0B\x0B" + [] {
    std::string s;
    for (int i = 0; i < 55; ++i) s += "\xC2" "e";
    return s;
  }());
}

TEST(StlExport, EmptyListWrongExtensionAndCancel) {
  FormatsStation t;
  t.open(u"No timing here.\n");
  FormaSTL form;
  t.ui.savePaths.push_back(tempDir("stl-empty") + "/x.stl");
  EXPECT_FALSE(mnuSubEbu(t.st, form));
  ASSERT_EQ(t.ui.boxes.size(), 1u);
  EXPECT_EQ(t.ui.lastBox().text, u"Error: Invalid subtitle list.");
  EXPECT_EQ(t.ui.lastBox().icon, Icon::Critical);
  EXPECT_TRUE(t.ui.saveRequests.empty());

  FormatsStation w;
  w.open(kSampleScript);
  const std::string dir = tempDir("stl-ext");
  w.ui.savePaths.push_back(dir + "/x.txt");
  ASSERT_TRUE(mnuSubEbu(w.st, form));
  EXPECT_EQ(w.ui.saveRequests[0].title, u"Create EBU standard subtitle file(*.stl)");
  EXPECT_EQ(w.ui.saveRequests[0].filter, u"EBU subtitle files (*.stl)|*.stl");
  EXPECT_EQ(w.ui.saveRequests[0].defaultName, u"Script1.stl");
  commandProximoSTL(w.st, form);
  EXPECT_EQ(w.ui.lastBox().text, u"Error: Wrong subtitle file extension");
  EXPECT_EQ(w.ui.lastBox().icon, Icon::None);
  EXPECT_TRUE(form.visible);
  EXPECT_FALSE(std::filesystem::exists(dir + "/x.txt"));
  // The button now reads Cancel: pressing it hides the form, and no file.
  EXPECT_EQ(form.commandCaption, u"Cancel");
  commandProximoSTL(w.st, form);
  EXPECT_FALSE(form.visible);
  // The next export of the same form writes its file.
  w.ui.savePaths.push_back(dir + "/x.stl");
  ASSERT_TRUE(mnuSubEbu(w.st, form));
  EXPECT_TRUE(commandProximoSTL(w.st, form));
  EXPECT_EQ(readFile(dir + "/x.stl").size(), 1024u + 128u * 7u);
}

TEST(StlExport, ReplaceQuestionAsksAgainOnNo) {
  FormatsStation t;
  t.open(kSampleScript);
  const std::string dir = tempDir("stl-replace");
  std::ofstream(dir + "/old.stl") << "old";
  t.ui.savePaths = {dir + "/old.stl", dir + "/new.stl"};
  t.ui.answers = {Answer::No};
  std::string file = exportStl(t, dir + "/unused.stl");
  (void)file;
  ASSERT_EQ(t.ui.boxes.size(), 1u);
  EXPECT_EQ(t.ui.boxes[0].box.text, u"Do you want to replace the existing " + fromUtf8(dir) + u"/old.stl?\r");
  EXPECT_EQ(t.ui.boxes[0].box.title, u"Create stl file");
  EXPECT_EQ(t.ui.boxes[0].box.icon, Icon::Exclamation);
  EXPECT_EQ(readFile(dir + "/old.stl"), "old");
  EXPECT_EQ(readFile(dir + "/new.stl").size(), 1024u + 128u * 7u);
  EXPECT_EQ(t.st.s.g_stlFileName, fromUtf8(dir + "/new.stl"));

  FormatsStation y;
  y.open(kSampleScript);
  y.ui.savePaths = {dir + "/old.stl"};
  y.ui.answers = {Answer::No};
  FormaSTL form;
  EXPECT_FALSE(mnuSubEbu(y.st, form));  // No, then the dialog cancelled
  EXPECT_EQ(readFile(dir + "/old.stl"), "old");
}

TEST(StlExport, PropertiesAreAddedOnceAndFillTheNextExport) {
  FormatsStation t;
  MemoryDocument& doc = t.open(kSampleScript);
  doc.builtinProperties = {{wdPropertyTitle, u"A title longer than thirty-two characters"},
                           {wdPropertyTimeCreated, u"2023-04-05 10:11:12"}};
  doc.customProperties = {{u"OPT", u"Earlier"}};
  FormaSTL form;
  const std::string path = tempDir("stl-props") + "/p.stl";
  t.ui.savePaths.push_back(path);
  ASSERT_TRUE(mnuSubEbu(t.st, form));
  EXPECT_EQ(form["TextOPT"], u"Earlier");
  EXPECT_EQ(form["TextTET"], u"A title longer than thirty-two c");
  EXPECT_EQ(form["TextCD"], u"230405");
  EXPECT_EQ(form["TextTCP"], u"00:00:00:00");
  EXPECT_EQ(form["LabTitle"], u"Script1");
  EXPECT_EQ(form.progressMax, 8);
  form["TextOPT"] = u"Typed now";
  form["TextPUB"] = u"Pub";
  commandProximoSTL(t.st, form);
  EXPECT_EQ(readFile(path).substr(16, 9), "Typed now");
  // OPT already existed and keeps its earlier value; PUB is stored padded.
  EXPECT_EQ(*t.docs.customProperty(u"OPT"), u"Earlier");
  EXPECT_EQ(*t.docs.customProperty(u"PUB"), u"Pub" + u16(29, u' '));
  EXPECT_EQ(t.docs.customProperty(u"UDA")->size(), 576u);
  EXPECT_EQ(*t.docs.customProperty(u"TET"), u"A title longer than thirty-two c");
}

// At each show TCF is the first cue-in above zero, in the form and the
// header, and the combos are back at their defaults whatever the last chose.
TEST(StlExport, EachShowFillsTcfAndStartsTheCombosFromTheirDefaults) {
  FormatsStation t;
  t.open(u"SUB[0 N 00:00:00:00>00:00:01:00]\nAt zero\n\nSUB[0 N 00:00:02:05>00:00:04:00]\nNext\n\nSUB[\n");
  FormaSTL form;
  for (const char* name : {"a.stl", "b.stl"}) {
    const std::string path = tempDir("stl-show") + "/" + name;
    t.ui.savePaths.push_back(path);
    ASSERT_TRUE(mnuSubEbu(t.st, form));
    EXPECT_EQ(form["TextTCF"], u"00:00:02:05");
    for (const char* c : {"ComboCPN", "ComboDFC", "ComboDSC", "ComboCCT", "ComboLC", "ComboCO", "ComboTCS"}) {
      const FormControl& combo = *form.find(c);
      EXPECT_EQ(combo.text, combo.defaultText) << c;
      form[c] = combo.list.front() != combo.defaultText ? combo.list.front() : combo.list.back();
    }
    commandProximoSTL(t.st, form);
    EXPECT_EQ(readFile(path).substr(264, 8), "00000205");
  }
}

TEST(StlImport, RoundTripOfTheSampleScript) {
  FormatsStation t;
  t.open(kSampleScript);
  const std::string path = tempDir("stl-roundtrip") + "/r.stl";
  exportStl(t, path);
  t.ui.openPaths.push_back(path);
  ASSERT_TRUE(mnuSubImpEBU(t.st));
  EXPECT_EQ(t.docs.fontName(), u"Arial Unicode MS");
  // Page 0 comes first; italics marks arrive as text under style N; VP 22
  // comes back as 0, VP 20 with two lines as 0, VP 16 one line as 3, VP 7 as
  // 0 and VP 6 as 7 or 8; JC 0 reads L, 3 R, 2 blank. The ellipsis stays
  // three full stops.
  EXPECT_EQ(testing::script(t.content()), testing::script(
      u"SUB[0 N 00:00:00:00>00:00:00:08]\nTitle: Script1\nEpisode: \nStory: \nLang: ESP\n\n"
      u"SUB[0 N 10:00:01:00>10:00:03:12]\nPlain and simple.\n\n"
      u"SUB[0LN 10:00:04:00>10:00:06:00]\n<Los ni\u00f1os cantan>\n<\u00bfY despu\u00e9s...?>\n\n"
      u"SUB[0RN 10:00:08:00>10:00:10:00]\n<First in italics>\nsecond plain\n\n"
      u"SUB[7 N 10:00:11:00>10:00:13:00]\nFirst plain\n<\u201cSecond\u201d costs 5$>\n\n"
      u"SUB[3 N 10:00:14:00>10:00:16:00]\n<Mark one, one line\n\n"
      u"SUB[8LN 10:00:17:00>10:00:19:00]\nMark two, \u00c0 la carte\n\n\n"));
}

TEST(StlImport, OtherBlocksAreSkippedAndRateFollowsDfc) {
  std::string image(1024, ' ');
  image.replace(3, 8, "STL30.01");
  image.replace(238, 5, "3    ");
  auto tti = [](int ebn, int vp, int jc, const std::string& text) {
    std::string b{'\x00', '\x01', '\x00', static_cast<char>(ebn), '\x00', '\x01', '\x02', '\x03', '\x0F',
                  '\x01', '\x02', '\x04', '\x00', static_cast<char>(vp), static_cast<char>(jc), '\x00'};
    b += text;
    b.resize(128, '\x8F');
    return b;
  };
  image += tti(0xFE, 20, 1, "extension");
  image += tti(0xFF, 20, 1, "\xCA" "A\x8A" "b");
  image += tti(0xFF, 2, 9, "c");
  EXPECT_EQ(testing::script(ebuStlToScript(image, 30)),
            testing::script(u"SUB[0LN 01:02:03:15>01:02:04:00]\n\u00baA\nb\n\nSUB[9 N 01:02:03:15>01:02:04:00]\nc\n\n"));
}

TEST(StlImport, ThirdPartyReaderAgreesOnTextsAndTimes) {
  if (!std::filesystem::exists("/usr/bin/ttconv")) GTEST_SKIP() << "ttconv not installed";
  FormatsStation t;
  t.open(kSampleScript);
  const std::string dir = tempDir("stl-ttconv");
  exportStl(t, dir + "/s.stl");
  std::string cmd = "/usr/bin/ttconv convert -i " + dir + "/s.stl -o " + dir + "/s.srt > " + dir + "/log.txt 2>&1";
  ASSERT_EQ(std::system(cmd.c_str()), 0) << readFile(dir + "/log.txt");
  std::string srt = readFile(dir + "/s.srt");
  // ttconv shows page 0 as a subtitle of its own, takes "<" and ">" as
  // literal text, reads our JC 0 as "unchanged" and decodes 0xA4 as the
  // currency sign where the station means "$"; texts and times agree.
  EXPECT_NE(srt.find("Title: Script1"), std::string::npos) << srt;
  EXPECT_NE(srt.find("10:00:01,000 --> 10:00:03,480"), std::string::npos) << srt;
  EXPECT_NE(srt.find("<Los niños cantan>"), std::string::npos) << srt;
  EXPECT_NE(srt.find("<¿Y después...?>"), std::string::npos) << srt;
  EXPECT_NE(srt.find("<“Second” costs 5¤>"), std::string::npos) << srt;
  EXPECT_NE(srt.find("Mark two, À la carte"), std::string::npos) << srt;
  EXPECT_EQ(srt.find("A dubbing line"), std::string::npos);
}

}  // namespace
}  // namespace quillon

namespace quillon {
namespace {

TEST(StlImport, CorpusFilesGiveOneTagPerWholeBlock) {
  const std::string dir = std::string(QUILLON_CORPUS_DIR) + "/stl";
  if (!std::filesystem::exists(dir)) GTEST_SKIP() << "no corpus";
  for (const auto& entry : std::filesystem::directory_iterator(dir)) {
    const std::string image = readFile(entry.path().string());
    long tnb = static_cast<long>(leadingNumber(std::string_view(image).substr(238, 5)));
    int whole = 0;
    for (long k = 0; k < tnb && 1024 + 128 * static_cast<size_t>(k) + 3 < image.size(); ++k)
      if (static_cast<unsigned char>(image[1024 + 128 * static_cast<size_t>(k) + 3]) == 0xFF) ++whole;
    u16 text = ebuStlToScript(image, 25);
    int tags = 0;
    for (long at = instr(text, u"SUB["); at > 0; at = instr(at + 1, text, u"SUB[")) ++tags;
    EXPECT_EQ(tags, whole) << entry.path();
    if (entry.path().filename() == "mantas_ebu_stl_iso6937.stl")
      EXPECT_NE(text.find(u"Les r\u00e9alisateurs de ce film ont pass\u00e9\r"), u16::npos);
  }
}

}  // namespace
}  // namespace quillon
