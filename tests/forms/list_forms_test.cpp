#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <filesystem>
#include <gtest/gtest.h>

#include "forms_fixture.h"
#include "script/tag_grammar.h"

namespace quillon::testing {

namespace {

std::string subtitleScript(int count) {
  u16 text = generatedSubtitleScript(count);
  const double in = 10.0 + 4.0 * count;
  text += subtitleTag(3, u'L', u'I', in, in + 2.0, 30) + u"L\u00ednea uno\rL\u00ednea dos\r\r";
  return toUtf8(text);
}

struct Files {
  explicit Files(const std::string& name) : dir(tempDir(name)) {}
  std::string dir;
  std::string gui(const std::string& ext) const { return dir + "/gui." + ext; }
  std::string cli(const std::string& ext) const { return dir + "/cli." + ext; }
};

}  // namespace

TEST(ListExportForms, EbuFormWritesWhatTheCommandLineWritesForTheSameFields) {
  Files files("forms_stl");
  FormsStation f;
  const std::string script = f.load(files.dir, subtitleScript(12));
  f.t.ui.savePaths = {files.gui("stl")};
  ASSERT_TRUE(f.forms->open("mnu_sub_ebu"));
  FormDialog& d = f.forms->dialogSTL();
  EXPECT_TRUE(d.isVisible());
  EXPECT_FALSE(d.isModal());
  EXPECT_EQ(d.windowTitle(), QStringLiteral("Quillon: Conversion to EBU Subtitling data exchange format"));
  EXPECT_EQ(d.commandProximo()->text(), QStringLiteral("OK"));
  auto* cpn = qobject_cast<QComboBox*>(d.control("ComboCPN"));
  ASSERT_NE(cpn, nullptr);
  QStringList cpnItems;
  for (int i = 0; i < cpn->count(); ++i) cpnItems << cpn->itemText(i);
  EXPECT_EQ(cpnItems, (QStringList{"United States", "Multilingual", "Portugal", "Canada-French", "Nordic"}));
  EXPECT_EQ(cpn->currentText(), QStringLiteral("Multilingual"));
  EXPECT_EQ(qobject_cast<QLineEdit*>(d.control("TextMNC"))->text(), QStringLiteral("40"));

  fill(d, "TextOPT", "Programa");
  fill(d, "TextSLR", "REF-0123456789ABCDEF");  // longer than its 16 places
  EXPECT_EQ(qobject_cast<QLineEdit*>(d.control("TextSLR"))->text().size(), 16);
  fill(d, "TextTN", "Ana Tradutora");
  fill(d, "ComboLC", "English");
  fill(d, "ComboDFC", "25");
  fill(d, "ComboCO", "Spain");
  fill(d, "TextPage0", "Line A\nLine B");
  QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
  EXPECT_FALSE(d.isVisible());

  ASSERT_EQ(0, runCli("export stl --field TextOPT=Programa --field TextSLR=REF-0123456789ABCDEF "
                      "--field 'TextTN=Ana Tradutora' --field ComboLC=English --field ComboDFC=25 "
                      "--field ComboCO=Spain --field 'TextPage0=Line A\\nLine B' " +
                      script + " -o " + files.cli("stl")));
  const std::string written = readFile(files.gui("stl"));
  EXPECT_EQ(written.size(), 1024u + 128u * 14u);
  EXPECT_EQ(written, readFile(files.cli("stl")));
}

TEST(ListExportForms, DvdMaestroFormWritesWhatTheCommandLineWrites) {
  Files files("forms_dvdm");
  FormsStation f;
  const std::string script = f.load(files.dir, subtitleScript(6));
  f.t.ui.savePaths = {files.gui("txt")};
  ASSERT_TRUE(f.forms->open("mnu_sub_dvdm"));
  FormDialog& d = f.forms->dialogDVDMaestro();
  EXPECT_EQ(d.windowTitle(), QStringLiteral("Quillon: Conversion to DVD Maestro\u00ae format"));
  fill(d, "TextFontName", "Verdana");
  fill(d, "ComboBold", "TRUE");
  fill(d, "ComboHorzAlign", "Left");
  fill(d, "TextCommentArea", "Made here");
  QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
  ASSERT_EQ(0, runCli("export dvdm --field TextFontName=Verdana --field ComboBold=TRUE --field ComboHorzAlign=Left "
                      "--field 'TextCommentArea=Made here' " +
                      script + " -o " + files.cli("txt")));
  EXPECT_FALSE(readFile(files.gui("txt")).empty());
  EXPECT_EQ(readFile(files.gui("txt")), readFile(files.cli("txt")));
}

TEST(ListExportForms, CpcFormWithItsTenPositionBoxesWritesWhatTheCommandLineWrites) {
  Files files("forms_cpc");
  FormsStation f;
  const std::string script = f.load(files.dir, subtitleScript(6));
  f.t.ui.savePaths = {files.gui("txt")};
  ASSERT_TRUE(f.forms->open("mnu_sub_cpc"));
  FormDialog& d = f.forms->dialogCPC();
  EXPECT_EQ(d.windowTitle(), QStringLiteral("Quillon: Conversion to CPC\u00ae format"));
  auto* frame = d.findChild<QGroupBox*>("Frame1");
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(frame->title(), QStringLiteral("Position mapping"));
  const auto boxes = frame->findChildren<QLineEdit*>();
  ASSERT_EQ(boxes.size(), 10);
  for (auto* b : boxes) EXPECT_EQ(b->maxLength(), 1);
  EXPECT_EQ(qobject_cast<QLineEdit*>(d.control("Text_vpos3"))->text(), QStringLiteral("A"));

  fill(d, "ComboVersion", "CPCC6.78");
  fill(d, "TextMOVIE", "Film");
  fill(d, "Text_vpos3", "B");
  QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
  ASSERT_EQ(0, runCli("export cpc --field ComboVersion=CPCC6.78 --field TextMOVIE=Film --field Text_vpos3=B " + script +
                      " -o " + files.cli("txt")));
  EXPECT_NE(readFile(files.gui("txt")).find("0CBI"), std::string::npos);
  EXPECT_EQ(readFile(files.gui("txt")), readFile(files.cli("txt")));
}

TEST(ListExportForms, SubFormWritesWhatTheCommandLineWrites) {
  Files files("forms_sub");
  FormsStation f;
  const std::string script = f.load(files.dir, subtitleScript(6));
  f.t.ui.savePaths = {files.gui("sub")};
  ASSERT_TRUE(f.forms->open("mnu_sub_sub"));
  FormDialog& d = f.forms->dialogSUB();
  EXPECT_EQ(d.windowTitle(), QStringLiteral("Quillon: Conversion to .SUB format"));
  EXPECT_EQ(qobject_cast<QLineEdit*>(d.control("TextTIMING"))->text(), QStringLiteral("1 30 0"));
  fill(d, "TextCAST", "Ana");
  fill(d, "Text_vpos3", "<<<");
  QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
  ASSERT_EQ(0, runCli("export sub --field TextCAST=Ana --field 'Text_vpos3=<<<' " + script + " -o " + files.cli("sub")));
  EXPECT_NE(readFile(files.gui("sub")).find("<<<["), std::string::npos);
  EXPECT_EQ(readFile(files.gui("sub")), readFile(files.cli("sub")));
}

TEST(ListExportForms, UltFormWritesWhatTheCommandLineWrites) {
  Files files("forms_ult");
  FormsStation f;
  const std::string script =
      f.load(files.dir, "CAP[0NC 00:00:01:00>00:00:02:00]\rHELLO\r\rCAP[0NC 00:00:04:00>00:00:06:00]\rTHERE\r\r");
  f.t.ui.savePaths = {files.gui("ult")};
  ASSERT_TRUE(f.forms->open("mnu_cc_ult"));
  UltDialog& d = f.forms->dialogCCult();
  EXPECT_TRUE(d.isVisible());
  EXPECT_EQ(d.windowTitle(), QStringLiteral("Quillon: Conversion to .ULT Closed caption file format"));
  auto* vi = qobject_cast<QComboBox*>(d.control("VILine"));
  ASSERT_NE(vi, nullptr);
  EXPECT_EQ(vi->count(), 8);
  EXPECT_EQ(vi->currentText(), QStringLiteral("21"));
  auto* info = qobject_cast<QLineEdit*>(d.control("ProgramInfo"));
  QTest::keyClicks(info, "Show");
  QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
  EXPECT_FALSE(d.isVisible());
  ASSERT_EQ(0, runCli("export ult --field ProgramInfo=Show " + script + " -o " + files.cli("ult")));
  EXPECT_FALSE(readFile(files.gui("ult")).empty());
  EXPECT_EQ(readFile(files.gui("ult")), readFile(files.cli("ult")));
}

TEST(ListExportForms, CancelDuringALongExportLeavesNoFile) {
  Files files("forms_cancel");
  FormsStation f;
  f.load(files.dir, subtitleScript(4000));
  f.t.ui.savePaths = {files.gui("stl")};
  ASSERT_TRUE(f.forms->open("mnu_sub_ebu"));
  FormDialog& d = f.forms->dialogSTL();
  bool cancelSeenRunning = false;
  // The operator presses the same button again while the file is being built.
  QTimer::singleShot(0, &d, [&] {
    cancelSeenRunning = d.running() && d.commandProximo()->text() == QStringLiteral("Cancel");
    QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
  });
  QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
  EXPECT_TRUE(cancelSeenRunning);
  EXPECT_FALSE(d.isVisible());
  EXPECT_FALSE(std::filesystem::exists(files.gui("stl")));
  EXPECT_LT(f.forms->formaSTL().progressValue, 4000);

  // The next export starts clear and runs to its end.
  f.t.ui.savePaths = {files.gui("stl")};
  ASSERT_TRUE(f.forms->open("mnu_sub_ebu"));
  EXPECT_EQ(d.commandProximo()->text(), QStringLiteral("OK"));
  QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
  EXPECT_EQ(readFile(files.gui("stl")).size(), 1024u + 128u * 4002u);
}

}  // namespace quillon::testing
