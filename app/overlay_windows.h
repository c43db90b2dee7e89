// What floats over the picture: the subtitle overlay FormaSub, the caption
// overlay FormaCC and the dubbing text box Text1, and the splash window
// frminicio. Each renders its part of the view state and hands its keys and
// mouse presses to the logic.
//
// The three overlays are child widgets of the main window, stacked above the
// picture. A separate top-level window is stacked by the window manager,
// which may (or, on a bare X server, will) put the main window over it the
// moment the main window is raised; a child cannot go under its own window.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include <QLabel>
#include <QPlainTextEdit>
#include <QWidget>

#include "core/station.h"

class QVBoxLayout;

namespace quillon {

// 24-bit colour with blue in the high byte, as Qt takes it.
QColor bgrColor(uint32_t c);

// A borderless panel over the picture, a child of `owner`.
class OverlayWindow : public QWidget {
  Q_OBJECT

 public:
  OverlayWindow(Station& st, QWidget* owner);
  // Runs before a key or press goes to the logic.
  std::function<void()> beforeEvent;
  // Runs after each event the logic has handled, so the windows follow.
  std::function<void()> afterEvent;

 protected:
  void starting() {
    if (beforeEvent) beforeEvent();
  }
  void done() {
    if (afterEvent) afterEvent();
  }
  // Every key with the focus here is the overlay's own: no shortcut of the
  // main window (a menu's Alt letter) takes it first.
  bool event(QEvent* e) override;
  Station& st_;
};

// An overlay of the timing runs: labels stacked edge to edge; its keys (Tab
// among them), presses and clicks go to the logic's handlers, and a press on
// one of its labels is the window's press without the window's click.
class TimingOverlayWindow : public OverlayWindow {
  Q_OBJECT

 public:
  struct Handlers {
    void (*keyDown)(Station&, int keyCode, int shift);
    void (*mouseDown)(Station&, int button);
    void (*click)(Station&);
  };
  TimingOverlayWindow(Station& st, QWidget* owner, const char* name, const Handlers& handlers);

 protected:
  // The next label down, named `name`.
  QLabel* addLabel(const QString& name);
  bool event(QEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  Handlers handlers_;
  QVBoxLayout* layout_;
  std::vector<QLabel*> labels_;
};

class FormaSubWindow : public TimingOverlayWindow {
  Q_OBJECT

 public:
  FormaSubWindow(Station& st, QWidget* owner);
  void render(const FormaSubState& f, int fontPoints);
  QLabel* line1() const { return lines_[0]; }
  QLabel* line2() const { return lines_[1]; }

 private:
  std::array<QLabel*, 2> lines_{};
};

class FormaCCWindow : public TimingOverlayWindow {
  Q_OBJECT

 public:
  FormaCCWindow(Station& st, QWidget* owner);
  void render(const FormaCCState& f);
  QLabel* row(int i) const { return rows_.at(static_cast<size_t>(i - 1)); }

 private:
  // Rows 1 to 4 of Labline, then Line1 and Line2 of the caption timing.
  std::array<QLabel*, 6> rows_{};
};

// Text1: the dialogue of a dubbing block, highlighted as far as the actor
// should have come.
class Text1Window : public OverlayWindow {
  Q_OBJECT

 public:
  Text1Window(Station& st, QWidget* owner);
  void render(const Text1State& t);
  QPlainTextEdit* box() const { return box_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  QPlainTextEdit* box_;
  u16 shownText_;
  int shownStart_ = -1, shownLength_ = -1, shownAlignment_ = -1;
};

// frminicio, the splash window of the start.
class SplashWindow : public QWidget {
 public:
  SplashWindow();

 protected:
  void paintEvent(QPaintEvent* e) override;
};

}  // namespace quillon
