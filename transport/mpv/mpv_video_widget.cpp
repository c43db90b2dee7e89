#include "transport/mpv/mpv_video_widget.h"

#include <mpv/render_gl.h>

#include <QMetaObject>
#include <QOpenGLContext>

#include "transport/mpv/mpv_player.h"

namespace quillon {

namespace {

void* procAddress(void*, const char* name) {
  QOpenGLContext* ctx = QOpenGLContext::currentContext();
  return ctx ? reinterpret_cast<void*>(ctx->getProcAddress(name)) : nullptr;
}

// mpv asks for a redraw from one of its own threads; the widget repaints on
// the window thread.
void onUpdate(void* widget) {
  QMetaObject::invokeMethod(static_cast<MpvVideoWidget*>(widget), "frameReady", Qt::QueuedConnection);
}

}  // namespace

void followPlayerWindow(QWidget* widget, MpvPlayer& player, std::function<void()> gone) {
  player.setWindowHandler([widget](int left, int top, int width, int height, bool visible) {
    QMetaObject::invokeMethod(widget, [=] {
      widget->setGeometry(left, top, width, height);
      widget->setVisible(visible);
    });
  });
  player.setBeforeDestroy(std::move(gone));
}

void releasePlayerWindow(MpvPlayer* player) {
  if (!player) return;
  player->setWindowHandler(nullptr);
  player->setBeforeDestroy(nullptr);
}

MpvVideoWidget::MpvVideoWidget(MpvPlayer& player, QWidget* parent) : QOpenGLWidget(parent), player_(&player) {
  // The player going first takes the render context with it, and the
  // widget then draws nothing.
  followPlayerWindow(this, player, [this] {
    freeRenderContext();
    player_ = nullptr;
  });
}

MpvVideoWidget::~MpvVideoWidget() {
  disconnect(contextGone_);
  freeRenderContext();
  releasePlayerWindow(player_);
}

void MpvVideoWidget::initializeGL() {
  if (render_ || !player_ || !player_->handle()) return;
  mpv_opengl_init_params gl{procAddress, nullptr};
  int advanced = 0;
  mpv_render_param params[] = {
      {MPV_RENDER_PARAM_API_TYPE, const_cast<char*>(MPV_RENDER_API_TYPE_OPENGL)},
      {MPV_RENDER_PARAM_OPENGL_INIT_PARAMS, &gl},
      {MPV_RENDER_PARAM_ADVANCED_CONTROL, &advanced},
      {MPV_RENDER_PARAM_INVALID, nullptr},
  };
  if (mpv_render_context_create(&render_, player_->handle(), params) < 0) {
    render_ = nullptr;
    return;
  }
  mpv_render_context_set_update_callback(render_, onUpdate, this);
  contextGone_ = connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { freeRenderContext(); });
}

void MpvVideoWidget::paintGL() {
  if (!render_) return;
  const qreal dpr = devicePixelRatioF();
  mpv_opengl_fbo fbo{static_cast<int>(defaultFramebufferObject()), static_cast<int>(width() * dpr),
                     static_cast<int>(height() * dpr), 0};
  int flipY = 1;
  mpv_render_param params[] = {
      {MPV_RENDER_PARAM_OPENGL_FBO, &fbo},
      {MPV_RENDER_PARAM_FLIP_Y, &flipY},
      {MPV_RENDER_PARAM_INVALID, nullptr},
  };
  mpv_render_context_render(render_, params);
}

void MpvVideoWidget::frameReady() {
  if (render_ && (mpv_render_context_update(render_) & MPV_RENDER_UPDATE_FRAME)) update();
}

void MpvVideoWidget::freeRenderContext() {
  if (!render_) return;
  makeCurrent();
  mpv_render_context_set_update_callback(render_, nullptr, nullptr);
  mpv_render_context_free(render_);
  render_ = nullptr;
  doneCurrent();
}

}  // namespace quillon
