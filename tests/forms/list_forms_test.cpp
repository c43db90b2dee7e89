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

// Where the form's file and the command line's go.
std::string gui(const std::string& dir, const std::string& ext) { return dir + "/gui." + ext; }

}  // namespace

// Each form, filled in as the operator would, writes the file the command
// line writes for the same fields.
TEST(ListExportForms, EachFormWritesWhatTheCommandLineWrites) {
  struct Row {
    const char* menu;
    const char* command;
    const char* ext;
    std::vector<std::pair<const char*, const char*>> fields;
    const char* mark;  // something the fields put in the file
    std::pair<const char*, const char*> offered = {nullptr, nullptr};  // a control's text on opening
    const char* script = nullptr;  // six subtitles unless given
  };
  const Row rows[] = {
      {"mnu_sub_ebu", "stl", "stl",
       {{"TextOPT", "Programa"}, {"TextSLR", "REF-0123456789ABCDEF"}, {"TextTN", "Ana Tradutora"},
        {"ComboLC", "English"}, {"ComboDFC", "25"}, {"ComboCO", "Spain"}, {"TextPage0", "Line A\nLine B"}},
       "Programa", {"ComboCPN", "Multilingual"}},
      {"mnu_sub_dvdm", "dvdm", "txt",
       {{"TextFontName", "Verdana"}, {"ComboBold", "TRUE"}, {"ComboHorzAlign", "Left"}, {"TextCommentArea", "Made here"}},
       "Made here"},
      {"mnu_sub_cpc", "cpc", "txt", {{"ComboVersion", "CPCC6.78"}, {"TextMOVIE", "Film"}, {"Text_vpos3", "B"}}, "0CBI",
       {"Text_vpos3", "A"}},
      {"mnu_sub_sub", "sub", "sub", {{"TextCAST", "Ana"}, {"Text_vpos3", "<<<"}}, "<<<[", {"TextTIMING", "1 30 0"}},
      {"mnu_cc_ult", "ult", "ult", {{"ProgramInfo", "Show"}}, "Show", {nullptr, nullptr},
       "CAP[0NC 00:00:01:00>00:00:02:00]\rHELLO\r\rCAP[0NC 00:00:04:00>00:00:06:00]\rTHERE\r\r"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.menu);
    const std::string dir = tempDir(std::string("forms_") + r.command);
    FormsStation f;
    const std::string script = f.load(dir, r.script ? r.script : subtitleScript(6));
    f.t.ui.savePaths = {gui(dir, r.ext)};
    ASSERT_TRUE(f.forms->open(r.menu));
    FormDialog& d = f.forms->exportDialog(r.menu);
    if (r.offered.first) {
      QWidget* w = d.control(r.offered.first);
      auto* combo = qobject_cast<QComboBox*>(w);
      EXPECT_EQ(combo ? combo->currentText() : qobject_cast<QLineEdit*>(w)->text(), QString(r.offered.second));
    }
    std::string args;
    for (auto [name, value] : r.fields) {
      fill(d, name, value);
      // The command line reads a line break as backslash and n.
      args += " --field '" + std::string(name) + "=" + QString(value).replace("\n", "\\n").toStdString() + "'";
    }
    QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
    EXPECT_FALSE(d.isVisible());
    ASSERT_EQ(0, runCli(std::string("export ") + r.command + args + " " + script + " -o " + dir + "/cli." + r.ext));
    EXPECT_NE(readFile(gui(dir, r.ext)).find(r.mark), std::string::npos);
    EXPECT_EQ(readFile(gui(dir, r.ext)), readFile(dir + "/cli." + r.ext));
  }
}

TEST(ListExportForms, CancelDuringALongExportLeavesNoFile) {
  const std::string dir = tempDir("forms_cancel");
  FormsStation f;
  f.load(dir, subtitleScript(4000));
  f.t.ui.savePaths = {gui(dir, "stl")};
  ASSERT_TRUE(f.forms->open("mnu_sub_ebu"));
  FormDialog& d = f.forms->exportDialog("mnu_sub_ebu");
  bool cancelSeenRunning = false;
  // The operator presses the same button again while the file is being built.
  QTimer::singleShot(0, &d, [&] {
    cancelSeenRunning = d.running() && d.commandProximo()->text() == QStringLiteral("Cancel");
    QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
  });
  QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
  EXPECT_TRUE(cancelSeenRunning);
  EXPECT_FALSE(d.isVisible());
  EXPECT_FALSE(std::filesystem::exists(gui(dir, "stl")));
  EXPECT_LT(f.forms->formaSTL().progressValue, 4000);

  // The next export starts clear and runs to its end.
  f.t.ui.savePaths = {gui(dir, "stl")};
  ASSERT_TRUE(f.forms->open("mnu_sub_ebu"));
  EXPECT_EQ(d.commandProximo()->text(), QStringLiteral("OK"));
  QTest::mouseClick(d.commandProximo(), Qt::LeftButton);
  EXPECT_EQ(readFile(gui(dir, "stl")).size(), 1024u + 128u * 4002u);
}

}  // namespace quillon::testing
