#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "formats/stl_export.h"
#include "formats/stl_import.h"
#include "formats_fixture.h"
#include "script/document_files.h"

namespace quillon {
namespace {

using testing::FormatsStation;
using testing::sampleScript;
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

// Text and subtitle blocks are 128 bytes behind the 1024 of the header.
std::string block(const std::string& file, int n) { return file.substr(1024 + 128 * static_cast<size_t>(n), 128); }

TEST(StlExport, SampleScriptMatchesGoldenFile) {
  FormatsStation t;
  t.open(sampleScript());
  EXPECT_TRUE(testing::matchesGolden("sample.stl", exportStl(t, tempDir("stl-golden") + "/sample.stl")));
}

// Typed text replaces the labels' page 0 and goes uncoded, CR LF leaving its
// LF behind the break; the user's name goes in code page 850.
TEST(StlExport, PageZeroFromTheTypedTextAndTheLanguage) {
  FormatsStation t;
  t.open(sampleScript());
  t.docs.user = u"Ana Mar\u00eda";
  std::string file = exportStl(t, tempDir("stl-page0") + "/a.stl", [](FormaSTL& f) {
    f["ComboLC"] = u"Italian";
    f["TextPage0"] = u"L\u00ednea 1\r\nLine 2";
  });
  const std::string typed = "L\xEDnea 1\x0A\x8A\x0ALine 2\x0A\x8F";
  EXPECT_EQ(block(file, 0).substr(18, typed.size()), typed);
  EXPECT_EQ(file.substr(277, 32), "Ana Mar\xA1" "a" + std::string(23, ' '));

  FormatsStation u;
  u.open(sampleScript());
  file = exportStl(u, tempDir("stl-page0c") + "/a.stl", [](FormaSTL& f) { f["ComboLC"] = u"Italian"; });
  EXPECT_NE(block(file, 0).find("Lang: \x0A\x8F"), std::string::npos);
  EXPECT_EQ(file.substr(14, 2), "15");
}

TEST(StlExport, SubtitleNumberIsLowByteFirstAndLongTextIsCutAtTheField) {
  FormatsStation t;
  t.open(testing::numberedScript(256));
  std::string file = exportStl(t, tempDir("stl-256") + "/n.stl");
  ASSERT_EQ(file.size(), 1024u + 128u * 257u);
  EXPECT_EQ(block(file, 256).substr(0, 4), std::string("\x00\x00\x01\xFF", 4));
  EXPECT_EQ(block(file, 255).substr(0, 4), std::string("\x00\xFF\x00\xFF", 4));

  FormatsStation c;
  c.st.s.maxCharsRow = 100;
  c.open(u"SUB[0 N 00:00:01:00>00:00:04:00]\n" + u16(60, u'\u00e9') + u"\n\nSUB[0 N 00:00:05:00>00:00:06:00]\nx\n\nSUB[\n");
  std::string cut = "\x0B\x0B";
  for (int i = 0; i < 55; ++i) cut += "\xC2" "e";
  EXPECT_EQ(block(exportStl(c, tempDir("stl-cut") + "/n.stl"), 1).substr(16), cut);
}

TEST(StlExport, WrongExtensionThenCancelThenTheNextExport) {
  FormaSTL form;
  FormatsStation w;
  w.open(sampleScript());
  const std::string dir = tempDir("stl-ext");
  w.ui.savePaths.push_back(dir + "/x.txt");
  ASSERT_TRUE(mnuSubEbu(w.st, form));
  EXPECT_EQ(w.ui.saveRequests[0].defaultName, u"Script1.stl");
  commandProximoSTL(w.st, form);
  EXPECT_EQ(w.ui.lastBox().text, u"Error: Wrong subtitle file extension");
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
  t.open(sampleScript());
  const std::string dir = tempDir("stl-replace");
  std::ofstream(dir + "/old.stl") << "old";
  t.ui.savePaths = {dir + "/old.stl", dir + "/new.stl"};
  t.ui.answers = {Answer::No};
  exportStl(t, dir + "/unused.stl");
  ASSERT_EQ(t.ui.boxes.size(), 1u);
  EXPECT_EQ(t.ui.boxes[0].box.text, u"Do you want to replace the existing " + fromUtf8(dir) + u"/old.stl?\r");
  EXPECT_EQ(t.ui.boxes[0].box.title, u"Create stl file");
  EXPECT_EQ(readFile(dir + "/old.stl"), "old");
  EXPECT_EQ(readFile(dir + "/new.stl").size(), 1024u + 128u * 7u);
  EXPECT_EQ(t.st.s.g_stlFileName, fromUtf8(dir + "/new.stl"));
}

TEST(StlExport, PropertiesAreAddedOnceAndFillTheNextExport) {
  FormatsStation t;
  MemoryDocument& doc = t.open(sampleScript());
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
  form["TextOPT"] = u"Typed now";
  form["TextPUB"] = u"Pub";
  commandProximoSTL(t.st, form);
  EXPECT_EQ(readFile(path).substr(16, 9), "Typed now");
  // OPT already existed and keeps its earlier value; PUB is stored padded.
  EXPECT_EQ(*t.docs.customProperty(u"OPT"), u"Earlier");
  EXPECT_EQ(*t.docs.customProperty(u"PUB"), u"Pub" + u16(29, u' '));
  EXPECT_EQ(t.docs.customProperty(u"UDA")->size(), 576u);
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
      const FormControl* combo = form.find(c);
      ASSERT_NE(combo, nullptr) << c;
      EXPECT_EQ(combo->text, combo->defaultText) << c;
      form[c] = combo->list.front() != combo->defaultText ? combo->list.front() : combo->list.back();
    }
    commandProximoSTL(t.st, form);
    EXPECT_EQ(readFile(path).substr(264, 8), "00000205");
  }
}

TEST(StlImport, RoundTripOfTheSampleScript) {
  FormatsStation t;
  t.open(sampleScript());
  const std::string path = tempDir("stl-roundtrip") + "/r.stl";
  exportStl(t, path);
  t.ui.openPaths.push_back(path);
  ASSERT_TRUE(mnuSubImpEBU(t.st));
  EXPECT_EQ(t.docs.fontName(), u"Arial Unicode MS");
  // Page 0 comes first; italics marks arrive as text under style N; VP 22
  // comes back as 0, VP 20 with two lines as 0, VP 16 one line as 3, VP 7 as
  // 0 and VP 6 as 7 or 8; JC 0 reads L, 3 R, 2 blank. The ellipsis stays
  // three full stops.
  EXPECT_TRUE(testing::matchesGolden("import_stl.txt", plainTextBytes(*t.docs.active())));
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
  image += tti(0xFE, 20, 1, "extension") + tti(0xFF, 20, 1, "\xCA" "A\x8A" "b") + tti(0xFF, 2, 9, "c");
  EXPECT_EQ(testing::script(ebuStlToScript(image, 30)),
            testing::script(u"SUB[0LN 01:02:03:15>01:02:04:00]\n\u00baA\nb\n\nSUB[9 N 01:02:03:15>01:02:04:00]\nc\n\n"));
}

// ttconv shows page 0 as a subtitle of its own, takes "<" and ">" as literal
// text and decodes 0xA4 as the currency sign where the station means "$";
// texts and times agree.
TEST(StlImport, ThirdPartyReaderAgreesOnTextsAndTimes) {
  if (!std::filesystem::exists("/usr/bin/ttconv")) GTEST_SKIP() << "ttconv not installed";
  FormatsStation t;
  t.open(sampleScript());
  const std::string dir = tempDir("stl-ttconv");
  exportStl(t, dir + "/s.stl");
  std::string cmd = "/usr/bin/ttconv convert -i " + dir + "/s.stl -o " + dir + "/s.srt > " + dir + "/log.txt 2>&1";
  ASSERT_EQ(std::system(cmd.c_str()), 0) << readFile(dir + "/log.txt");
  std::string srt = readFile(dir + "/s.srt");
  for (const char* part : {"Title: Script1", "10:00:01,000 --> 10:00:03,480", "<¿Y después...?>",
                           "<“Second” costs 5¤>", "Mark two, À la carte"})
    EXPECT_NE(srt.find(part), std::string::npos) << part << "\n" << srt;
  EXPECT_EQ(srt.find("A dubbing line"), std::string::npos);
}

}  // namespace
}  // namespace quillon
