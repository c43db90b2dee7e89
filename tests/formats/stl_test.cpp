#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "formats/ebu_text.h"
#include "formats/stl_export.h"
#include "formats/stl_import.h"
#include "formats_fixture.h"
#include "script/document_files.h"

namespace quillon {
namespace {

using testing::FormatsStation;
using testing::SampleStation;
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
  SampleStation t;
  EXPECT_TRUE(testing::matchesGolden("sample.stl", exportStl(t, tempDir("stl-golden") + "/sample.stl")));
}

// Typed text replaces the labels' page 0 and goes uncoded, CR LF leaving its
// LF behind the break; the user's name goes in code page 850.
TEST(StlExport, PageZeroFromTheTypedTextAndTheLanguage) {
  SampleStation t;
  t.docs.user = u"Ana Mar\u00eda";
  std::string file = exportStl(t, tempDir("stl-page0") + "/a.stl", [](FormaSTL& f) {
    f["ComboLC"] = u"Italian";
    f["TextPage0"] = u"L\u00ednea 1\r\nLine 2";
  });
  const std::string typed = "L\xEDnea 1\x0A\x8A\x0ALine 2\x0A\x8F";
  EXPECT_EQ(block(file, 0).substr(18, typed.size()), typed);
  EXPECT_EQ(file.substr(277, 32), "Ana Mar\xA1" "a" + std::string(23, ' '));

  SampleStation u;
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

// A wrong extension keeps the form up with its button reading Cancel, which
// hides it; the next export of the same form writes its file.
TEST(StlExport, WrongExtensionThenCancelThenTheNextExport) {
  FormaSTL form;
  SampleStation w;
  const std::string dir = tempDir("stl-ext");
  w.ui.savePaths = {dir + "/x.txt", dir + "/x.stl"};
  ASSERT_TRUE(mnuSubEbu(w.st, form));
  EXPECT_EQ(w.ui.saveRequests[0].defaultName, u"Script1.stl");
  commandProximoSTL(w.st, form);
  EXPECT_EQ(w.ui.boxTexts(), std::vector<u16>{u"Error: Wrong subtitle file extension"});
  EXPECT_TRUE(form.visible && form.commandCaption == u"Cancel" && !std::filesystem::exists(dir + "/x.txt"));
  commandProximoSTL(w.st, form);
  EXPECT_FALSE(form.visible);
  ASSERT_TRUE(mnuSubEbu(w.st, form));
  EXPECT_TRUE(commandProximoSTL(w.st, form));
  EXPECT_EQ(readFile(dir + "/x.stl").size(), 1024u + 128u * 7u);
}

TEST(StlExport, ReplaceQuestionAsksAgainOnNo) {
  SampleStation t;
  const std::string dir = tempDir("stl-replace");
  std::ofstream(dir + "/old.stl") << "old";
  t.ui.savePaths = {dir + "/old.stl", dir + "/new.stl"};
  t.ui.answers = {Answer::No};
  exportStl(t, dir + "/unused.stl");
  EXPECT_EQ(t.ui.boxTexts(), std::vector<u16>{u"Do you want to replace the existing " + fromUtf8(dir) + u"/old.stl?\r"});
  EXPECT_EQ(t.ui.boxes[0].box.title, u"Create stl file");
  EXPECT_EQ(readFile(dir + "/old.stl"), "old");
  EXPECT_EQ(readFile(dir + "/new.stl").size(), 1024u + 128u * 7u);
  EXPECT_EQ(t.st.s.g_stlFileName, fromUtf8(dir + "/new.stl"));
}

TEST(StlExport, PropertiesAreAddedOnceAndFillTheNextExport) {
  SampleStation t;
  MemoryDocument& doc = *t.docs.active();
  doc.builtinProperties = {{wdPropertyTitle, u"A title longer than thirty-two characters"},
                           {wdPropertyTimeCreated, u"2023-04-05 10:11:12"}};
  doc.customProperties = {{u"OPT", u"Earlier"}};
  FormaSTL form;
  const std::string path = tempDir("stl-props") + "/p.stl";
  t.ui.savePaths.push_back(path);
  ASSERT_TRUE(mnuSubEbu(t.st, form));
  EXPECT_EQ((std::vector<u16>{form["TextOPT"], form["TextTET"], form["TextCD"]}),
            (std::vector<u16>{u"Earlier", u"A title longer than thirty-two c", u"230405"}));
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
  SampleStation t;
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
  SampleStation t;
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

// The text field's character coding, both ways.
std::string code(u16v text) {
  std::string out;
  for (char16_t c : text) out += ANSItoEBU(c);
  return out;
}

TEST(EbuTextCoder, EachCharacterToItsRowOrNothing) {
  const struct {
    const char16_t* text;
    std::string expected;
  } cases[] = {
      // Accented letters are the diacritic, then the base letter.
      {u"Espa\u00f1a", "\x45\x73\x70\x61\xC4\x6E\x61"},
      {u"\u00e0\u00c9\u00ee\u00d5\u00fc\u00c5\u00e7", "\xC1" "a\xC2" "E\xC3" "i\xC4" "O\xC8" "u\xCA" "A\xCB" "c"},
      {u"100$'", "100\xA4'"},
      {u"\u2019\u2018\u201c\u201d\u00ab\u00bb", "\xB9\xA9\xAA\xBA\xAB\xBB"},
      {u"\u0093\u0094", "\xAA\xBA"},  // the same quotation marks as Windows-1252 code values
      {u"\u2026", "..."},
      {u"\u00ba", "\xCA"},  // the ordinal is the ring
      {u"\u266a\u00df\u00bf\u00a1\u00c6\u0153", "\xD5\xFB\xBF\xA1\xE1\xFA"},
      // Cyrillic, euro, degree, o-stroke, feminine ordinal, nbsp, tab and LF have no row.
      {u"\u0416\u20ac\u00b0\u00f8\u00aa\u00a0\t\n", ""},
      {u"\r", "\x8A"},
  };
  for (const auto& c : cases) EXPECT_EQ(code(c.text), c.expected) << toUtf8(c.text);
  EXPECT_EQ(ANSItoEBU(u16v()), "");
}

TEST(EbuTextDecoder, ReversesTheCoderAndDropsWhatItCannotRead) {
  const struct {
    std::string bytes;
    u16 expected;
    bool twoLines;
  } cases[] = {
      {"\x0B\x0B" "A\xC2" "e\xA4" "\x0A\x8A\x0B\x0B" "\xA9x\xB9\x0A\x8F\x8F", u"A\u00e9$\r\u2018x\u2019", true},
      {"<\x0B\x0B" "abc>\x0A\x8F", u"<abc>", false},
      {"\xCA" "A", u"\u00baA", false},  // the ring pair comes back as ordinal and letter
      {"\xB7", u"o", false},
      {"x\xC2Zy", u"xy", false},             // acute Z has no row: both bytes go
      {"\x80" "a\x81\x0A\x0B\x1F", u"a", false},  // italics and row codes of the teletext set
      {"ab\x8F" "cd", u"ab", false},
      {std::string(112, 'z'), u16(112, u'z'), false},  // no end mark: the field's end
  };
  for (const auto& c : cases) {
    bool two = false;
    EXPECT_EQ(decodeEbuText(c.bytes, two), c.expected) << toUtf8(c.expected);
    EXPECT_EQ(two, c.twoLines) << toUtf8(c.expected);
  }
}

}  // namespace
}  // namespace quillon
