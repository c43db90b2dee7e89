#include <gtest/gtest.h>

#include "formats/cpc_export.h"
#include "formats/dvdm_export.h"
#include "formats/sub_export.h"
#include "formats_fixture.h"

namespace quillon {
namespace {

using testing::FormatsStation;
using testing::kSampleScript;
using testing::readFile;
using testing::tempDir;

template <typename Form, typename Edit>
std::string runExport(FormatsStation& t, const std::string& path, bool (*handler)(Station&, Form&),
                      WriteResult (*press)(Station&, Form&), Edit edit) {
  Form form;
  t.ui.savePaths.push_back(path);
  if (!handler(t.st, form)) return {};
  edit(form);
  press(t.st, form);
  return readFile(path);
}

auto noEdit = [](auto&) {};

std::string dvdm(FormatsStation& t, const std::string& path, void (*edit)(FormDVDMaestro&) = noEdit) {
  return runExport<FormDVDMaestro>(t, path, mnuSubDvdm, commandProximoDVDM, edit);
}
std::string cpc(FormatsStation& t, const std::string& path, void (*edit)(FormCPC&) = noEdit) {
  return runExport<FormCPC>(t, path, mnuSubCpc, commandProximoCPC, edit);
}
std::string sub(FormatsStation& t, const std::string& path, void (*edit)(FormSUB&) = noEdit) {
  return runExport<FormSUB>(t, path, mnuSubSub, commandProximoSUB, edit);
}

TEST(DvdMaestroExport, SampleScriptMatchesGoldenFile) {
  FormatsStation t;
  t.open(kSampleScript);
  std::string file = dvdm(t, tempDir("dvdm") + "/s.txt", [](FormDVDMaestro& f) {
    f["TextCommentArea"] = u"Episode 12, first cut";
  });
  EXPECT_TRUE(testing::matchesGolden("sample_dvdm.txt", file));
  // The background key has no value whatever the form shows; three line ends
  // close the list.
  EXPECT_NE(file.find("$BackgroundContrast          =   \r\n$ForceDisplay"), std::string::npos);
  EXPECT_EQ(file.substr(file.size() - 17), "         \r\n\r\n\r\n\r\n");
}

TEST(DvdMaestroExport, WrongExtensionShowsTwoBoxes) {
  FormatsStation t;
  t.open(kSampleScript);
  const std::string dir = tempDir("dvdm-ext");
  EXPECT_EQ(dvdm(t, dir + "/s.lst"), "");
  ASSERT_EQ(t.ui.boxes.size(), 2u);
  EXPECT_EQ(t.ui.boxes[0].box.text, u"filename is     ");
  EXPECT_EQ(t.ui.boxes[1].box.text, u"Error: Wrong subtitle file extension");
  EXPECT_EQ(t.ui.saveRequests[0].title, u"Create DVD Maestro subtitle list file(*.txt)");
  EXPECT_EQ(t.ui.saveRequests[0].defaultName, u"Script1.txt");
}

TEST(DvdMaestroExport, Utf8WhenAsked) {
  FormatsStation t;
  t.open(kSampleScript);
  std::string file = dvdm(t, tempDir("dvdm-utf8") + "/s.txt", [](FormDVDMaestro& f) { f.encoding = TextEncoding::Utf8; });
  EXPECT_EQ(file.rfind("// Subtitle list in DVD Maestro\xC2\xAE format", 0), 0u);
  EXPECT_NE(file.find("Los ni\xC3\xB1os cantan|\xC2\xBFY despu\xC3\xA9s\xE2\x80\xA6?"), std::string::npos);
}

TEST(CpcExport, SampleScriptMatchesGoldenFile) {
  FormatsStation t;
  t.open(kSampleScript);
  std::string file = cpc(t, tempDir("cpc") + "/s.txt", [](FormCPC& f) {
    f["ComboVersion"] = u"CPCC6.78";
    f["TextDATE"] = u"01312024";
    f["TextGENRE"] = u"Drama";
    f["TextNotes"] = u"Caf\u00e9";
  });
  EXPECT_TRUE(testing::matchesGolden("sample_cpc.txt", file));
  // Position 3, two lines, italics: row A; the text goes through code page 850.
  EXPECT_NE(file.find("10:00:04:00\xB3" "0CAI\xB3Los ni\xA4os cantan\\\xA8Y despu\x82s??"), std::string::npos);
  // One line at position 0 sits on row E; the clear line keeps the style of
  // the subtitle it clears.
  EXPECT_NE(file.find("10:00:01:00\xB3" "0CEN\xB3Plain and simple.\r\n10:00:03:12\xB3" "0CEN\xB3^N\r\n"),
            std::string::npos);
}

TEST(CpcExport, ClearLinesOnlyForGaps) {
  FormatsStation t;
  t.open(u"SUB[0 N 00:00:01:00>00:00:02:00]\nA\n\nSUB[3 N 00:00:02:00>00:00:03:00]\nB\nb\n\n"
         u"SUB[0 N 00:00:03:01>00:00:05:00]\nC\n\nSUB[\n");
  std::string file = cpc(t, tempDir("cpc-gaps") + "/g.txt");
  EXPECT_EQ(file,
            "~CPCC6.70~;UpperLower;PopOn;01;\r\n"
            "00:00:01:00\xB3" "0CEN\xB3" "A\r\n"
            "00:00:02:00\xB3" "0CAN\xB3" "B\\b\r\n"
            "00:00:03:00\xB3" "0CAN\xB3^N\r\n"
            "00:00:03:01\xB3" "0CEN\xB3" "C\r\n"
            "00:00:05:00\xB3" "0CEN\xB3^N\r\n\r\n");
}

TEST(CpcExport, StyleCodeFollowsTheMapping) {
  FormCPC f;
  EXPECT_EQ(cpcStyleCode(f, false, u'3', u'I'), u"0CAI");
  EXPECT_EQ(cpcStyleCode(f, true, u'0', u'N'), u"0CEN");
  EXPECT_EQ(cpcStyleCode(f, false, u'0', u'2'), u"0CF2");
  f["Text_vpos9"] = u"B";
  EXPECT_EQ(cpcStyleCode(f, true, u'9', u'1'), u"0CB1");
}

TEST(CpcExport, RunningTimeFromTheLabelsWhenNoProperty) {
  FormatsStation t;
  t.open(kSampleScript);
  FormCPC f;
  fillFormCPC(t.st, f);
  EXPECT_EQ(f["TextTRT"], u"00:00:00:00");
  t.st.view.LabCom.caption = u"10:00:00:00";
  t.st.view.LabDur.caption = u"10:21:30:05";
  t.docs.user = u"Subtitler";
  fillFormCPC(t.st, f);
  EXPECT_EQ(f["TextTRT"], u"00:21:30:05");
  EXPECT_EQ(f["TextCONTACT"], u"Subtitler");
  t.docs.setCustomProperty(u"TRT", u"01:30:00:00");
  fillFormCPC(t.st, f);
  EXPECT_EQ(f["TextTRT"], u"01:30:00:00");
}

TEST(SubListExport, SampleScriptMatchesGoldenFile) {
  FormatsStation t;
  t.open(kSampleScript);
  std::string file = sub(t, tempDir("sub") + "/s.sub", [](FormSUB& f) { f["TextFONTS"] = u"Arial 22"; });
  EXPECT_TRUE(testing::matchesGolden("sample.sub", file));
  // Italics open only; position 3 is three braces, 9 a closing brace.
  EXPECT_NE(file.find("{{{[Los ni\xA4os cantan\r\n[\xA8Y despu\x82s...?\r\n10:00:04.00\\10:00:06.00\r\n"),
            std::string::npos);
  EXPECT_NE(file.find("}First plain\r\n[?Second? costs 5$\r\n"), std::string::npos);
}

TEST(SubListExport, FormatSampleShowsTheCodePageLetters) {
  EXPECT_EQ(FormSUB()["TextFORMATSAMPLE"], u" \u00c5\u00e5\u00c9\u00e9\u00cc\u00ec\u00d5\u00f5\u00db\u00fb\u00ff*");
}

TEST(SubListExport, NoExtensionCheckAndOneSubtitle) {
  FormatsStation t;
  t.open(u"SUB[2 I 00:00:01:00>00:00:02:05]\n\u00c1rbol \u00e2me\nl\u00ednea dos\n\nSUB[\n");
  std::string file = sub(t, tempDir("sub-one") + "/one.lst");
  EXPECT_TRUE(t.ui.boxes.empty());
  EXPECT_EQ(file.rfind(
            "*PART 1*\r\n00:00:00.00\\00:00:00.00\r\n"
            "{{[\xB5rbol \x83me\r\n[l\xA1nea dos\r\n00:00:01.00\\00:00:02.05\r\n"
            "*END*\r\n00:00:02.05\\00:00:02.05\r\n", 0), 0u);
}

}  // namespace
}  // namespace quillon
