// frmMain: the station's main window. It renders the view state (labels,
// slider, toolbar, status bar, menus, caption, overlays) and turns the
// operator's clicks and keys into the logic's commands.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include <QMainWindow>

#include "core/station.h"

class QAction;
class QLabel;
class QMenu;
class QSlider;
class QToolBar;

namespace quillon {

class FormaSubWindow;
class FormaCCWindow;
class Text1Window;
class SplashWindow;

// Twips to pixels, at the 15 twips a pixel the station's sizes are given in.
inline int twipsToPixels(int twips) { return twips / 15; }

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  // `video` is the widget the player draws in (the main window adopts it),
  // or null for a plain black picture area.
  MainWindow(Station& st, QWidget* video = nullptr);
  ~MainWindow() override;

  // Brings every widget in line with the view state. Cheap when little
  // has changed: only what differs is touched.
  void refresh();
  // Runs after every command the window has started, and after each timer
  // tick: the owner refreshes and re-arms its timers there.
  std::function<void()> afterCommand;
  // Runs before a key (or an overlay's press) reaches the logic.
  std::function<void()> beforeKey;
  // The close box: the owner runs the closing path.
  std::function<void()> closeRequested;

  // Takes the splash away for good: a box of the start must never sit
  // under it.
  void dismissSplash();

  // Runs a command of the logic, then afterCommand.
  void run(const std::function<void(Station&)>& command);
  // The click of a menu item by name, as a key that stands for it does.
  void clickMenu(std::string_view item);

  // Where an overlay at Left, Top, Width, Height twips stands, in the
  // coordinates of the window's client area, where the overlays live. The
  // station's overlay geometry counts from the main window's Left and Top
  // as the picture sat on the desktop the layout was drawn for (4 pixels of
  // border, 43 of title and menu bar above the picture), so it is taken
  // from the picture's place here, whatever this desktop's frame.
  QRect overlayPlace(int left, int top, int width, int height) const;

  // The widgets, by the names the logic gives them.
  QAction* action(std::string_view item) const;
  QMenu* menu(std::string_view item) const;
  QLabel* LabTimecode() const { return labTimecode_; }
  QLabel* LabCom() const { return labCom_; }
  QLabel* LabDur() const { return labDur_; }
  QSlider* slVideo() const { return slider_; }
  QToolBar* Toolbar1() const { return toolbar_; }
  QAction* toolbarButton(int index) const { return buttons_.at(static_cast<size_t>(index - 1)); }
  QLabel* panel(int index) const { return panels_.at(static_cast<size_t>(index)); }
  QWidget* videoArea() const { return video_; }
  FormaSubWindow* formaSub() const { return formaSub_; }
  FormaCCWindow* formaCC() const { return formaCC_; }
  Text1Window* text1() const { return text1_; }
  SplashWindow* splash() const { return splash_; }

 protected:
  bool event(QEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  void moveEvent(QMoveEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void buildMenus();
  void buildControls();
  void renderMenus();
  void renderGainedItems();
  void renderControls();
  void renderOverlays();
  void renderFocus();
  void showOverlay(QWidget* overlay, bool visible);
  // Moves an overlay to its place and shows or hides it when `visible`
  // differs from `shownNow`; one that comes up takes the focus `name`.
  void placeOverlay(QWidget* overlay, const QRect& place, bool visible, bool& shownNow, const char* name);
  void renderGeometry();
  void onFocusChanged(QWidget* now);
  void sendKey(QKeyEvent* e);

  Station& st_;
  std::map<std::string, QAction*, std::less<>> actions_;
  std::map<std::string, QMenu*, std::less<>> menus_;
  // Items gained at run time as last built, by parent, with the separator
  // before them.
  std::map<std::string, std::vector<std::string>, std::less<>> gainedShown_;
  std::map<std::string, QAction*, std::less<>> gainedSeparators_;
  QWidget* central_ = nullptr;
  QWidget* video_ = nullptr;
  QLabel *labTimecode_ = nullptr, *labCom_ = nullptr, *labDur_ = nullptr;
  QSlider* slider_ = nullptr;
  QToolBar* toolbar_ = nullptr;
  std::array<QAction*, 11> buttons_{};
  std::array<QLabel*, 9> panels_{};  // 1 to 8
  FormaSubWindow* formaSub_ = nullptr;
  FormaCCWindow* formaCC_ = nullptr;
  Text1Window* text1_ = nullptr;
  SplashWindow* splash_ = nullptr;

  bool settingSlider_ = false;
  bool rendering_ = false;
  bool splashDismissed_ = false;
  bool labelDoubleClicked_ = false;
  std::string appliedFocus_ = "\x01";  // nothing applied yet
  bool subShown_ = false, ccShown_ = false;
  int shownWidth_ = 0, shownHeight_ = 0;
  int knownLeft_ = 0, knownTop_ = 0;  // the main window's place as last seen, twips
};

}  // namespace quillon
