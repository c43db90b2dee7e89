#include <gtest/gtest.h>

#include "formats/cpc_export.h"
#include "formats/dvdm_export.h"
#include "formats/sub_export.h"
#include "formats_fixture.h"

namespace quillon {
namespace {

using testing::FormatsStation;
using testing::SampleStation;
using testing::readFile;
using testing::tempDir;

// The menu command, the form's fields, its OK; the file written.
template <typename Form>
std::string runExport(FormatsStation& t, const std::string& path, bool (*handler)(Station&, Form&),
                      WriteResult (*press)(Station&, Form&), void (*edit)(Form&) = nullptr) {
  Form form;
  t.ui.savePaths.push_back(path);
  if (!handler(t.st, form)) return {};
  if (edit) edit(form);
  press(t.st, form);
  return readFile(path);
}

// DVD Maestro: the background key has no value whatever the form shows;
// three line ends close the list. CPC: position 3, two lines, italics is row
// A; one line at position 0 sits on row E; the clear line keeps the style of
// the subtitle it clears. .SUB: italics open only; position 3 is three
// braces, 9 a closing brace. Both go through code page 850.
TEST(ListExports, SampleScriptMatchesGoldenFiles) {
  SampleStation t;
  const std::string dir = tempDir("lists");
  EXPECT_TRUE(testing::matchesGolden("sample_dvdm.txt", runExport(t, dir + "/d.txt", mnuSubDvdm, commandProximoDVDM,
      +[](FormDVDMaestro& f) { f["TextCommentArea"] = u"Episode 12, first cut"; })));
  EXPECT_TRUE(testing::matchesGolden("sample_cpc.txt", runExport(t, dir + "/c.txt", mnuSubCpc, commandProximoCPC,
      +[](FormCPC& f) {
        f["ComboVersion"] = u"CPCC6.78";
        f["TextDATE"] = u"01312024";
        f["TextGENRE"] = u"Drama";
        f["TextNotes"] = u"Caf\u00e9";
      })));
  EXPECT_TRUE(testing::matchesGolden("sample.sub", runExport(t, dir + "/s.sub", mnuSubSub, commandProximoSUB,
      +[](FormSUB& f) { f["TextFONTS"] = u"Arial 22"; })));
}

TEST(DvdMaestroExport, WrongExtensionShowsTwoBoxesAndUtf8WhenAsked) {
  SampleStation t;
  const std::string dir = tempDir("dvdm");
  EXPECT_EQ(runExport(t, dir + "/s.lst", mnuSubDvdm, commandProximoDVDM), "");
  EXPECT_EQ(t.ui.boxTexts(), (std::vector<u16>{u"filename is     ", u"Error: Wrong subtitle file extension"}));
  std::string file = runExport(t, dir + "/s.txt", mnuSubDvdm, commandProximoDVDM,
                               +[](FormDVDMaestro& f) { f.encoding = TextEncoding::Utf8; });
  EXPECT_NE(file.find("Los ni\xC3\xB1os cantan|\xC2\xBFY despu\xC3\xA9s\xE2\x80\xA6?"), std::string::npos);
}

// CPC writes a clear line only where a gap follows; .SUB checks no
// extension and goes through code page 850.
TEST(ListExports, ShortScriptsMatchGoldenFiles) {
  FormatsStation t;
  t.open(u"SUB[0 N 00:00:01:00>00:00:02:00]\nA\n\nSUB[3 N 00:00:02:00>00:00:03:00]\nB\nb\n\n"
         u"SUB[0 N 00:00:03:01>00:00:05:00]\nC\n\nSUB[\n");
  EXPECT_TRUE(testing::matchesGolden("gaps_cpc.txt", runExport(t, tempDir("cpc-gaps") + "/g.txt", mnuSubCpc, commandProximoCPC)));
  FormatsStation u;
  u.open(u"SUB[2 I 00:00:01:00>00:00:02:05]\n\u00c1rbol \u00e2me\nl\u00ednea dos\n\nSUB[\n");
  EXPECT_TRUE(testing::matchesGolden("one.sub", runExport(u, tempDir("sub-one") + "/one.lst", mnuSubSub, commandProximoSUB)));
  EXPECT_TRUE(u.ui.boxes.empty());
}

TEST(CpcExport, RunningTimeFromTheLabelsWhenNoProperty) {
  SampleStation t;
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

}  // namespace
}  // namespace quillon
