// A station with its forms on the offscreen platform, over a script file on
// disk that quillon-cli can read too.
#pragma once

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <cstdlib>
#include <fstream>
#include <sys/wait.h>

#include "app/forms/form_dialog.h"
#include "app/forms/station_forms.h"
#include "captions/caption_checks.h"
#include "core/settings.h"
#include "script/document_files.h"
#include "script/user_identity.h"
#include "subtitling/rule_checks.h"
#include "support/station_fixture.h"

namespace quillon::testing {

inline QApplication& qtApp() {
  static int argc = 1;
  static char name[] = "test_forms";
  static char* argv[] = {name, nullptr};
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  // Never destroyed: the platform's devices must outlive static teardown.
  static QApplication* app = new QApplication(argc, argv);
  return *app;
}

struct FormsStation {
  FormsStation() {
    qtApp();
    applySettingsLine(t.st.s, "");
    installSubtitleChecks(t.st);
    installCaptionChecks(t.st);
    t.docs.user = accountUserName();  // as the command line has it
    forms = std::make_unique<StationForms>(t.st, nullptr);
  }
  // Writes the script where the command line can read it and opens it.
  std::string load(const std::string& dir, const std::string& text) {
    const std::string path = dir + "/script.txt";
    std::ofstream(path, std::ios::binary) << text;
    std::string error;
    auto doc = loadDocumentFile(path, error);
    EXPECT_TRUE(doc) << error;
    if (doc) t.docs.addDocument(std::move(doc));
    return path;
  }

  TestStation t;
  std::unique_ptr<StationForms> forms;
};

// Types into a form's control as the operator would.
inline void fill(FormDialog& d, const std::string& name, const QString& text) {
  QWidget* w = d.control(name);
  ASSERT_NE(w, nullptr) << name;
  if (auto* e = qobject_cast<QLineEdit*>(w)) {
    e->selectAll();
    QTest::keyClicks(e, text);
  } else if (auto* c = qobject_cast<QComboBox*>(w)) {
    const int i = c->findText(text);
    ASSERT_GE(i, 0) << "combo " << name << " lacks " << text.toStdString();
    c->setCurrentIndex(i);
  } else if (auto* p = qobject_cast<QPlainTextEdit*>(w)) {
    p->setPlainText(text);
  }
}

// quillon-cli's exit code for `args` (a shell command line after the program).
inline int runCli(const std::string& args) {
  const int rc = std::system((std::string(QUILLON_CLI_PATH) + " " + args + " 2>/dev/null").c_str());
  return WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
}

}  // namespace quillon::testing
