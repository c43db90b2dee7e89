#include "transport/mpv/mpv_software_video_widget.h"

#include <mpv/render.h>

#include <QMetaObject>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QPainter>

#include "transport/mpv/mpv_player.h"
#include "transport/mpv/mpv_video_widget.h"

namespace quillon {

namespace {

// mpv asks for a redraw from one of its own threads; the frame is drawn on
// the window thread.
void onUpdate(void* widget) {
  QMetaObject::invokeMethod(static_cast<MpvSoftwareVideoWidget*>(widget), "frameReady", Qt::QueuedConnection);
}

}  // namespace

MpvSoftwareVideoWidget::MpvSoftwareVideoWidget(MpvPlayer& player, QWidget* parent)
    : QWidget(parent), player_(&player) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  // No OpenGL context to wait for: the render context exists before the
  // first file is loaded, as the player needs.
  if (player.handle()) {
    char api[] = MPV_RENDER_API_TYPE_SW;
    mpv_render_param params[] = {
        {MPV_RENDER_PARAM_API_TYPE, api},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_create(&render_, player.handle(), params) < 0)
      render_ = nullptr;
    else
      mpv_render_context_set_update_callback(render_, onUpdate, this);
  }
  followPlayerWindow(this, player, [this] {
    freeRenderContext();
    player_ = nullptr;
  });
}

MpvSoftwareVideoWidget::~MpvSoftwareVideoWidget() {
  freeRenderContext();
  releasePlayerWindow(player_);
}

void MpvSoftwareVideoWidget::frameReady() {
  if (!render_ || !(mpv_render_context_update(render_) & MPV_RENDER_UPDATE_FRAME)) return;
  const QSize size = this->size() * devicePixelRatioF();
  if (size.isEmpty()) return;
  if (frame_.size() != size) frame_ = QImage(size, QImage::Format_RGB32);
  // Format_RGB32 holds each pixel as B, G, R, pad in memory.
  int wh[2] = {size.width(), size.height()};
  char format[] = "bgr0";
  size_t stride = static_cast<size_t>(frame_.bytesPerLine());
  mpv_render_param params[] = {
      {MPV_RENDER_PARAM_SW_SIZE, wh},
      {MPV_RENDER_PARAM_SW_FORMAT, format},
      {MPV_RENDER_PARAM_SW_STRIDE, &stride},
      {MPV_RENDER_PARAM_SW_POINTER, frame_.bits()},
      {MPV_RENDER_PARAM_INVALID, nullptr},
  };
  if (mpv_render_context_render(render_, params) >= 0) update();
}

void MpvSoftwareVideoWidget::paintEvent(QPaintEvent*) {
  QPainter p(this);
  if (frame_.isNull())
    p.fillRect(rect(), Qt::black);
  else
    p.drawImage(rect(), frame_);
  // Tells mpv the frame reached the screen, which paces its frame timing.
  if (render_) mpv_render_context_report_swap(render_);
}

void MpvSoftwareVideoWidget::freeRenderContext() {
  if (!render_) return;
  mpv_render_context_set_update_callback(render_, nullptr, nullptr);
  mpv_render_context_free(render_);
  render_ = nullptr;
}

bool openGlRunsInSoftware() {
  QOffscreenSurface surface;
  surface.create();
  QOpenGLContext ctx;
  if (!ctx.create() || !ctx.makeCurrent(&surface)) return true;
  const auto* name = reinterpret_cast<const char*>(ctx.functions()->glGetString(GL_RENDERER));
  const QByteArray renderer = name ? QByteArray(name).toLower() : QByteArray();
  ctx.doneCurrent();
  return renderer.contains("llvmpipe") || renderer.contains("softpipe") || renderer.contains("software");
}

}  // namespace quillon
