#include "app/main_window.h"

#include <set>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QSlider>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

#include "app/menu_commands.h"
#include "app/overlay_windows.h"
#include "app/qt_ui.h"
#include "app/toolbar_icons.h"
#include "app/vk_keys.h"
#include "core/menu_table.h"
#include "transport/controls.h"
#include "transport/keys.h"
#include "transport/startup.h"

namespace quillon {

namespace {

// The window's design, in pixels of its client area.
constexpr int kClientWidth = 367;  // 5505 twips
constexpr int kControlsHeight = 356;
constexpr QRect kVideo(5, 0, 360, 270);
constexpr int kNormalWidthTwips = 5505, kNormalHeightTwips = 6330;
// Status panel widths, 1 to 8.
constexpr int kPanelWidths[9] = {0, 36, 22, 104, 26, 30, 30, 30, 68};
// The frame and title of the desktop the overlay geometry was drawn for.
constexpr QPoint kFrameToPicture(4 + 5, 43);

void setLabel(QLabel* l, const LabelState& s) {
  const QString text = toQString(s.caption);
  if (l->text() != text) l->setText(text);
  if (l->isVisibleTo(l->parentWidget()) != s.visible) l->setVisible(s.visible);
  const QColor fore = bgrColor(s.foreColor), back = bgrColor(s.backColor);
  QPalette p = l->palette();
  if (p.color(QPalette::WindowText) != fore || p.color(QPalette::Window) != back) {
    p.setColor(QPalette::WindowText, fore);
    p.setColor(QPalette::Window, back);
    l->setPalette(p);
  }
}

QLabel* timeLabel(QWidget* parent, const char* name, QRect where, Qt::Alignment align, int pixels) {
  auto* l = new QLabel(parent);
  l->setObjectName(name);
  l->setGeometry(where);
  l->setAlignment(align | Qt::AlignVCenter);
  l->setAutoFillBackground(true);
  QFont f("Monospace");
  f.setStyleHint(QFont::TypeWriter);
  f.setPixelSize(pixels);
  f.setBold(true);
  l->setFont(f);
  return l;
}

}  // namespace

MainWindow::MainWindow(Station& st, QWidget* video)
    : QMainWindow(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                               Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint),
      st_(st),
      video_(video) {
  setObjectName("frmMain");
  setFocusPolicy(Qt::StrongFocus);
  buildMenus();
  buildControls();
  // Created after the picture, so they stack above it.
  formaSub_ = new FormaSubWindow(st, central_);
  formaCC_ = new FormaCCWindow(st, central_);
  text1_ = new Text1Window(st, central_);
  splash_ = new SplashWindow();
  for (OverlayWindow* w : {static_cast<OverlayWindow*>(formaSub_), static_cast<OverlayWindow*>(formaCC_),
                           static_cast<OverlayWindow*>(text1_)})
  {
    w->beforeEvent = [this] {
      if (beforeKey) beforeKey();
    };
    w->afterEvent = [this] {
      if (afterCommand) afterCommand();
    };
  }
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { onFocusChanged(now); });
  renderGeometry();
  // The station starts in the top left corner of the usable screen; a
  // window manager left to choose may put it anywhere, even half off it.
  if (const QScreen* s = QGuiApplication::primaryScreen()) move(s->availableGeometry().topLeft());
}

MainWindow::~MainWindow() { delete splash_; }

void MainWindow::buildMenus() {
  // The seven menus share the window's narrow width.
  menuBar()->setStyleSheet("QMenuBar { font-size: 11px; } QMenuBar::item { padding: 2px 2px; }");
  std::set<std::string_view> parents;
  for (const MenuEntry& e : menuTable())
    if (!e.parent.empty()) parents.insert(e.parent);
  for (const MenuEntry& e : menuTable()) {
    const std::string name(e.name);
    const QString caption = toQString(e.caption);
    QMenu* parentMenu = e.parent.empty() ? nullptr : menus_.find(e.parent)->second;
    if (parentMenu && e.separatorBefore) parentMenu->addSeparator();
    QAction* a = nullptr;
    if (e.parent.empty() || parents.count(e.name)) {
      QMenu* m = parentMenu ? parentMenu->addMenu(caption) : menuBar()->addMenu(caption);
      m->setObjectName(QString::fromUtf8(e.name.data(), static_cast<qsizetype>(e.name.size())));
      menus_[name] = m;
      a = m->menuAction();
    } else {
      a = parentMenu->addAction(caption);
      connect(a, &QAction::triggered, this, [this, name] { clickMenu(name); });
    }
    a->setObjectName(QString::fromStdString(name));
    a->setCheckable(e.checkable);
    if (!e.shortcut.empty()) a->setShortcut(QKeySequence(QString::fromUtf8(e.shortcut.data(), qsizetype(e.shortcut.size()))));
    actions_[name] = a;
  }
}

void MainWindow::buildControls() {
  central_ = new QWidget(this);
  central_->setObjectName("frmMainClient");
  central_->setFixedSize(kClientWidth, kControlsHeight);
  setCentralWidget(central_);
  if (video_) {
    video_->setParent(central_);
  } else {
    video_ = new QWidget(central_);
    video_->setStyleSheet("background: black");
  }
  video_->setObjectName("FrameVideo");
  video_->setGeometry(kVideo);

  labCom_ = timeLabel(central_, "LabCom", QRect(5, 273, 112, 20), Qt::AlignLeft, 13);
  labTimecode_ = timeLabel(central_, "LabTimecode", QRect(121, 271, 126, 24), Qt::AlignHCenter, 17);
  labDur_ = timeLabel(central_, "LabDur", QRect(251, 273, 112, 20), Qt::AlignRight, 13);
  for (QLabel* l : {labCom_, labTimecode_, labDur_}) l->installEventFilter(this);

  slider_ = new QSlider(Qt::Horizontal, central_);
  slider_->setObjectName("slVideo");
  slider_->setGeometry(5, 296, 357, 20);
  slider_->setFocusPolicy(Qt::StrongFocus);
  slider_->setSingleStep(1);
  slider_->setPageStep(5);
  slider_->installEventFilter(this);
  connect(slider_, &QSlider::valueChanged, this, [this](int v) {
    if (settingSlider_) return;
    run([v](Station& st) {
      st.view.slVideo.value = v;
      sliderScroll(st);
    });
  });

  toolbar_ = new QToolBar(central_);
  toolbar_->setObjectName("Toolbar1");
  toolbar_->setGeometry(0, 318, kClientWidth, 38);
  toolbar_->setIconSize(QSize(16, 16));
  // Eleven buttons across the window's width, none left over in a menu.
  toolbar_->setStyleSheet("QToolBar { spacing: 0px; padding: 0px; border: 0px; }"
                          "QToolButton { padding: 0px; margin: 0px; }");
  toolbar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  toolbar_->setMovable(false);
  QFont small = toolbar_->font();
  small.setPixelSize(9);
  toolbar_->setFont(small);
  for (int i = 1; i <= 11; ++i) {
    QAction* a = toolbar_->addAction(QString());
    a->setObjectName(QString("Toolbar1_%1").arg(i));
    connect(a, &QAction::triggered, this, [this, i] { run([i](Station& st) { toolbarClick(st, i); }); });
    buttons_[static_cast<size_t>(i - 1)] = a;
    if (auto* b = qobject_cast<QToolButton*>(toolbar_->widgetForAction(a))) {
      b->setFocusPolicy(Qt::NoFocus);
      b->setFixedSize(33, 36);
    }
  }

  QStatusBar* bar = statusBar();
  bar->setObjectName("BarraStatus");
  bar->setSizeGripEnabled(false);
  for (int i = 1; i <= 8; ++i) {
    auto* l = new QLabel(bar);
    l->setObjectName(QString("BarraStatus_%1").arg(i));
    l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    l->setFixedWidth(kPanelWidths[i]);
    bar->addWidget(l);
    panels_[static_cast<size_t>(i)] = l;
  }
}

void MainWindow::run(const std::function<void(Station&)>& command) {
  command(st_);
  if (afterCommand) afterCommand();
}

void MainWindow::clickMenu(std::string_view item) {
  MenuCommand c = menuCommand(item);
  if (c) run(c);
  else if (afterCommand) afterCommand();  // an inert item: its check mark goes back
}

QAction* MainWindow::action(std::string_view item) const {
  auto it = actions_.find(item);
  return it == actions_.end() ? nullptr : it->second;
}

QMenu* MainWindow::menu(std::string_view item) const {
  auto it = menus_.find(item);
  return it == menus_.end() ? nullptr : it->second;
}

// ---- rendering -------------------------------------------------------------

void MainWindow::refresh() {
  const ViewState& v = st_.view;
  const bool outer = !rendering_;
  rendering_ = true;
  const bool splash = v.splashVisible && !splashDismissed_;
  if (splash_->isVisible() != splash) splash_->setVisible(splash);
  if (splash && splash_->isVisible()) {
    if (const QScreen* s = splash_->screen()) splash_->move(s->geometry().center() - splash_->rect().center());
  }
  const QString title = toQString(v.caption);
  if (windowTitle() != title) setWindowTitle(title);
  // The menus first: the normal window's height counts the menu bar, which
  // full screen hid.
  renderMenus();
  renderGeometry();
  renderControls();
  if (isVisible() != v.visible) setVisible(v.visible);
  renderOverlays();
  renderFocus();
  if (outer) rendering_ = false;
}

void MainWindow::dismissSplash() {
  splashDismissed_ = true;
  splash_->hide();
}

void MainWindow::renderGeometry() {
  const ViewState& v = st_.view;
  if (v.mainWidth != shownWidth_ || v.mainHeight != shownHeight_) {
    shownWidth_ = v.mainWidth;
    shownHeight_ = v.mainHeight;
    if (v.mainWidth == kNormalWidthTwips && v.mainHeight == kNormalHeightTwips) {
      central_->setFixedSize(kClientWidth, kControlsHeight);
      setFixedSize(kClientWidth, menuBar()->sizeHint().height() + kControlsHeight + statusBar()->sizeHint().height());
    } else {
      const QSize full(twipsToPixels(v.mainWidth), twipsToPixels(v.mainHeight));
      central_->setFixedSize(full);
      setFixedSize(full);
    }
  }
  const OverlayState& o = v.overlays;
  if (o.mainLeft != knownLeft_ || o.mainTop != knownTop_) {
    knownLeft_ = o.mainLeft;
    knownTop_ = o.mainTop;
    move(twipsToPixels(o.mainLeft), twipsToPixels(o.mainTop));
  }
}

namespace {

void renderItem(QAction* a, const MenuItemState& m) {
  const QString caption = toQString(m.caption);
  if (a->text() != caption) a->setText(caption);
  if (a->isCheckable() && a->isChecked() != m.checked) a->setChecked(m.checked);
  if (a->isEnabled() != m.enabled) a->setEnabled(m.enabled);
  if (a->isVisible() != m.visible) a->setVisible(m.visible);
}

}  // namespace

void MainWindow::renderMenus() {
  bool anyTop = false;
  for (const MenuEntry& e : menuTable()) {
    const MenuItemState& m = st_.view.menu(e.name);
    renderItem(actions_.find(e.name)->second, m);
    if (e.parent.empty()) anyTop = anyTop || m.visible;
  }
  renderGainedItems();
  // Full screen hides every menu; the bar goes with them.
  if (menuBar()->isVisibleTo(this) != anyTop) menuBar()->setVisible(anyTop);
}

void MainWindow::renderGainedItems() {
  const auto& gained = st_.view.gainedItems;
  // A menu whose gained items changed has them built again.
  for (auto it = gainedShown_.begin(); it != gainedShown_.end();) {
    auto now = gained.find(it->first);
    if (now != gained.end() && now->second == it->second) {
      ++it;
      continue;
    }
    for (const std::string& name : it->second) {
      delete actions_[name];
      actions_.erase(name);
    }
    delete gainedSeparators_[it->first];
    gainedSeparators_.erase(it->first);
    it = gainedShown_.erase(it);
  }
  for (const auto& [parent, names] : gained) {
    QMenu* m = menu(parent);
    if (!m) continue;
    if (!gainedShown_.count(parent)) {
      gainedSeparators_[parent] = m->addSeparator();
      for (const std::string& name : names) {
        QAction* a = m->addAction(QString());
        a->setObjectName(QString::fromStdString(name));
        a->setCheckable(true);
        connect(a, &QAction::triggered, this, [this, name] { clickMenu(name); });
        actions_[name] = a;
      }
      gainedShown_[parent] = names;
    }
    for (const std::string& name : names) renderItem(actions_[name], st_.view.menu(name));
  }
}

void MainWindow::renderControls() {
  const ViewState& v = st_.view;
  setLabel(labTimecode_, v.LabTimecode);
  setLabel(labCom_, v.LabCom);
  setLabel(labDur_, v.LabDur);

  const SliderState& s = v.slVideo;
  settingSlider_ = true;
  const int lo = static_cast<int>(s.min), hi = static_cast<int>(s.max);
  if (slider_->minimum() != lo || slider_->maximum() != hi) slider_->setRange(lo, hi);
  const int value = static_cast<int>(s.value);
  if (slider_->value() != value) slider_->setValue(value);
  settingSlider_ = false;
  if (slider_->isEnabled() != s.enabled) slider_->setEnabled(s.enabled);
  if (slider_->isVisibleTo(central_) != s.visible) slider_->setVisible(s.visible);

  if (toolbar_->isEnabled() != v.toolbarEnabled) toolbar_->setEnabled(v.toolbarEnabled);
  if (toolbar_->isVisibleTo(central_) != v.toolbarVisible) toolbar_->setVisible(v.toolbarVisible);
  for (int i = 1; i <= 11 && i <= static_cast<int>(v.toolbar.size()); ++i) {
    const ToolbarButtonState& b = v.toolbar[static_cast<size_t>(i - 1)];
    QAction* a = buttons_[static_cast<size_t>(i - 1)];
    const QString caption = toQString(b.caption), tip = toQString(b.toolTip);
    if (a->text() != caption) a->setText(caption);
    if (a->toolTip() != tip) a->setToolTip(tip);
    if (a->isEnabled() != b.enabled) a->setEnabled(b.enabled);
    if (a->property("image").toInt() != b.image) {
      a->setProperty("image", b.image);
      a->setIcon(toolbarIcon(b.image));
    }
  }

  for (int i = 1; i <= 8; ++i) {
    const StatusPanelState& p = v.panels[static_cast<size_t>(i)];
    QLabel* l = panels_[static_cast<size_t>(i)];
    const QString text = toQString(p.text), tip = toQString(p.toolTip);
    if (l->text() != text) l->setText(text);
    if (l->toolTip() != tip) l->setToolTip(tip);
    if (l->isEnabled() != p.enabled) l->setEnabled(p.enabled);
  }
}

QRect MainWindow::overlayPlace(int left, int top, int width, int height) const {
  const OverlayState& o = st_.view.overlays;
  return QRect(video_->pos() - kFrameToPicture +
                   QPoint(twipsToPixels(left - o.mainLeft), twipsToPixels(top - o.mainTop)),
               QSize(twipsToPixels(width), twipsToPixels(height)));
}

void MainWindow::showOverlay(QWidget* overlay, bool visible) {
  if (overlay->isVisibleTo(central_) == visible) return;
  if (visible) {
    overlay->raise();
    overlay->show();
    return;
  }
  // The keys it held go back to the window; where from there is the view
  // state's to say, not the widget order's.
  if (overlay->isAncestorOf(QApplication::focusWidget()) || overlay->hasFocus()) setFocus(Qt::OtherFocusReason);
  overlay->hide();
}

void MainWindow::renderOverlays() {
  OverlayState& o = st_.view.overlays;
  const bool shown = isVisible();

  const FormaSubState& f = o.FormaSub;
  formaSub_->render(f, st_.s.overlayFontSize);
  placeOverlay(formaSub_, overlayPlace(f.Left, f.Top, f.Width, f.Height), f.Visible && shown, subShown_, "FormaSub");

  const FormaCCState& c = o.FormaCC;
  formaCC_->render(c);
  placeOverlay(formaCC_, overlayPlace(c.Left, c.Top, c.Width, c.Height), c.Visible && shown, ccShown_, "FormaCC");

  // Text1 lies across the top of the picture; it rests off to the left.
  const Text1State& t = o.Text1;
  text1_->render(t);
  const QRect textRect(video_->pos() + QPoint(twipsToPixels(t.Left), 4), QSize(video_->width(), 66));
  if (text1_->geometry() != textRect) text1_->setGeometry(textRect);
  // An empty box would only hide the picture; its keys reach it through
  // the main window meanwhile.
  showOverlay(text1_, t.Visible && !t.Text.empty() && shown);
}

void MainWindow::placeOverlay(QWidget* overlay, const QRect& place, bool visible, bool& shownNow, const char* name) {
  if (overlay->geometry() != place) overlay->setGeometry(place);
  if (visible == shownNow) return;
  shownNow = visible;
  showOverlay(overlay, visible);
  // An overlay that comes up takes the keys, as the operator expects.
  if (visible) st_.view.overlays.focus = name;
}

void MainWindow::renderFocus() {
  const std::string& focus = st_.view.overlays.focus;
  if (focus == appliedFocus_ || !isVisible()) return;
  appliedFocus_ = focus;
  auto take = [this](QWidget* target) {
    if (!target->isVisible()) return false;
    raise();
    activateWindow();
    target->setFocus(Qt::OtherFocusReason);
    return true;
  };
  if (focus == "FormaSub" && take(formaSub_)) return;
  if (focus == "FormaCC" && take(formaCC_)) return;
  if (focus == "Text1" && take(text1_->box())) return;
  if (focus == "slVideo" && slider_->isEnabled() && take(slider_)) return;
  take(this);
}

void MainWindow::onFocusChanged(QWidget* now) {
  // Only the operator's own moves (a click) tell the view state anything;
  // the window's moves follow it.
  if (!now || rendering_) return;
  std::string name;
  if (now == slider_)
    name = "slVideo";
  else if (now == text1_ || now == text1_->box())
    name = "Text1";
  else if (now == formaSub_)
    name = "FormaSub";
  else if (now == formaCC_)
    name = "FormaCC";
  else if (now->window() == this)
    // The window itself holds the keys for a Text1 that is not on show.
    name = st_.view.overlays.focus == "Text1" ? "Text1" : "";
  else
    return;  // a dialog of the logic's own
  st_.view.overlays.focus = name;
  appliedFocus_ = name;
}

// ---- input -----------------------------------------------------------------

void MainWindow::sendKey(QKeyEvent* e) {
  const int vk = virtualKey(e->key(), (e->modifiers() & Qt::KeypadModifier) != 0);
  if (vk == 0) return;
  const int shift = shiftMask(e->modifiers());
  if (beforeKey) beforeKey();
  run([vk, shift](Station& st) {
    if (st.view.overlays.focus == "Text1")
      text1KeyDown(st, vk, shift);
    else
      formKeyDown(st, vk, shift);
  });
}

bool MainWindow::event(QEvent* e) {
  if (e->type() == QEvent::KeyPress) {
    auto* k = static_cast<QKeyEvent*>(e);
    if (k->key() == Qt::Key_Tab || k->key() == Qt::Key_Backtab) {
      sendKey(k);
      return true;
    }
  }
  return QMainWindow::event(e);
}

void MainWindow::keyPressEvent(QKeyEvent* e) { sendKey(e); }

bool MainWindow::eventFilter(QObject* watched, QEvent* e) {
  if (watched == slider_ && e->type() == QEvent::KeyPress) {
    auto* k = static_cast<QKeyEvent*>(e);
    const int vk = virtualKey(k->key(), (k->modifiers() & Qt::KeypadModifier) != 0);
    const int shift = shiftMask(k->modifiers());
    if (vk) run([vk, shift](Station& st) { sliderKeyDown(st, vk, shift); });
    // The slider moves itself on arrows and pages, and its move seeks.
    switch (k->key()) {
      case Qt::Key_Left:
      case Qt::Key_Right:
      case Qt::Key_Up:
      case Qt::Key_Down:
      case Qt::Key_PageUp:
      case Qt::Key_PageDown: return false;
      default: return true;
    }
  }
  const bool label = watched == labTimecode_ || watched == labCom_ || watched == labDur_;
  if (label && e->type() == QEvent::MouseButtonDblClick) {
    labelDoubleClicked_ = true;
    if (watched == labTimecode_) run(labTimecodeDoubleClick);
    if (watched == labCom_) run(labComDoubleClick);
    if (watched == labDur_) run(labDurDoubleClick);
    return true;
  }
  if (label && e->type() == QEvent::MouseButtonRelease) {
    // The release that ends a double click is no click of its own.
    if (labelDoubleClicked_) labelDoubleClicked_ = false;
    else if (watched == labTimecode_) run(labTimecodeClick);
    return true;
  }
  return QMainWindow::eventFilter(watched, e);
}

void MainWindow::closeEvent(QCloseEvent* e) {
  // The closing path decides; it hides the window and ends the program.
  e->ignore();
  if (closeRequested)
    closeRequested();
  else
    run([](Station& st) { unloadMainForm(st); });
}

void MainWindow::moveEvent(QMoveEvent* e) {
  QMainWindow::moveEvent(e);
  knownLeft_ = pos().x() * 15;
  knownTop_ = pos().y() * 15;
  st_.view.overlays.mainLeft = knownLeft_;
  st_.view.overlays.mainTop = knownTop_;
  if (afterCommand) afterCommand();
}

}  // namespace quillon
