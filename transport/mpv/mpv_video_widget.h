// The video area of the main window: mpv draws the player's picture into
// this OpenGL widget through its render API. Create the widget before the
// first file is loaded; it places itself where the player's setWindow says,
// inside its parent.
#pragma once

#include <functional>

#include <QOpenGLWidget>

struct mpv_render_context;

namespace quillon {

class MpvPlayer;

// Makes `widget` the player's picture area: placed and shown where the
// player's setWindow says, on the window thread; `gone` runs when the player
// goes first. releasePlayerWindow undoes it.
void followPlayerWindow(QWidget* widget, MpvPlayer& player, std::function<void()> gone);
void releasePlayerWindow(MpvPlayer* player);

class MpvVideoWidget : public QOpenGLWidget {
  Q_OBJECT

 public:
  MpvVideoWidget(MpvPlayer& player, QWidget* parent = nullptr);
  ~MpvVideoWidget() override;

 protected:
  void initializeGL() override;
  void paintGL() override;

 private:
  Q_INVOKABLE void frameReady();
  // Frees the render context with the GL context current; safe to repeat.
  void freeRenderContext();

  MpvPlayer* player_;
  mpv_render_context* render_ = nullptr;
  QMetaObject::Connection contextGone_;
};

}  // namespace quillon
