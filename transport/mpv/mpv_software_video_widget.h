// The video area drawn without OpenGL: mpv scales each frame into a memory
// image (its software render API) and the widget paints that image. Where
// OpenGL itself runs in software (a desktop without a graphics driver, a
// virtual display) this costs a fraction of the OpenGL path, which would
// rasterise every frame through several shader passes on the processor.
#pragma once

#include <QImage>
#include <QWidget>

struct mpv_render_context;

namespace quillon {

class MpvPlayer;

class MpvSoftwareVideoWidget : public QWidget {
  Q_OBJECT

 public:
  MpvSoftwareVideoWidget(MpvPlayer& player, QWidget* parent = nullptr);
  ~MpvSoftwareVideoWidget() override;

  // True when the widget draws the picture (the render context exists).
  bool drawing() const { return render_ != nullptr; }

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  Q_INVOKABLE void frameReady();
  void freeRenderContext();

  MpvPlayer* player_;
  mpv_render_context* render_ = nullptr;
  QImage frame_;
};

// Whether OpenGL on this desktop is a software rasteriser, so the picture
// is better drawn with MpvSoftwareVideoWidget.
bool openGlRunsInSoftware();

}  // namespace quillon
