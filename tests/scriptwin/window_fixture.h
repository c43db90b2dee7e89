// A script window on the offscreen platform, with a scripted user interface
// answering its questions.
#pragma once

#include <QApplication>
#include <QTextBlock>
#include <cstdlib>
#include <memory>

#include "app/scriptwin/script_view.h"
#include "app/scriptwin/script_window.h"
#include "doubles/scripted_ui.h"
#include "support/station_fixture.h"

namespace quillon::testing {

inline QApplication& qtApp() {
  static int argc = 1;
  static char name[] = "test_scriptwin";
  static char* argv[] = {name, nullptr};
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  // Never destroyed: the platform's devices must outlive static teardown.
  static QApplication* app = new QApplication(argc, argv);
  return *app;
}

// Lets queued work (the selection put on screen, timers due) run.
inline void settle() {
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

// Whether the editor shows exactly what the document holds: text, italics
// (paragraph marks aside) and, once settled, the selection.
inline ::testing::AssertionResult editorInStep(ScriptView& v) {
  v.flushSelection();
  const MemoryDocument& d = v.model();
  const u16 text = d.text();
  if (v.shownText() != text)
    return ::testing::AssertionFailure() << "editor text differs: '" << toUtf8(v.shownText()) << "' vs '"
                                         << toUtf8(text) << "'";
  const auto shown = v.shownItalics();
  const auto flags = d.italicFlags();
  for (size_t i = 0; i < text.size(); ++i)
    if (text[i] != CR && (shown[i] != 0) != (flags[i] != 0))
      return ::testing::AssertionFailure() << "italics differ at " << i;
  const TextRange s = v.shownSelection();
  const TextRange m = d.selection();
  const long last = d.length() - 1;
  if (s.start != std::min(m.start, last) || s.end != std::min(m.end, last))
    return ::testing::AssertionFailure() << "selection " << s.start << "-" << s.end << " vs " << m.start << "-"
                                         << m.end;
  return ::testing::AssertionSuccess();
}

struct WindowStation {
  explicit WindowStation(std::string journal = {}) : window((qtApp(), ui), std::move(journal)), st(ui) {
    installScriptWindow(st, window);
    st.s.g_fps = 30;
    st.s.framePeriod = 1.0 / 30;
  }
  // A new document holding `text` ('\n' standing for CR), shown in front.
  ScriptView& open(std::u16string_view text) {
    window.service().documentsAdd();
    window.service().active()->setText(script(text));
    window.service().active()->modified = false;
    settle();
    return *window.activeView();
  }

  ScriptedUi ui;
  ScriptWindow window;
  Station st;
};

}  // namespace quillon::testing
