#include "app/toolbar_icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace quillon {

namespace {

constexpr int kSize = 32;  // drawn large, shown at the toolbar's icon size

void triangle(QPainter& p, double x, double w, bool right) {
  QPainterPath path;
  const double top = 7, bottom = kSize - 7, mid = kSize / 2.0;
  if (right) {
    path.moveTo(x, top);
    path.lineTo(x + w, mid);
    path.lineTo(x, bottom);
  } else {
    path.moveTo(x + w, top);
    path.lineTo(x, mid);
    path.lineTo(x + w, bottom);
  }
  path.closeSubpath();
  p.fillPath(path, p.brush());
}

void bar(QPainter& p, double x) { p.fillRect(QRectF(x, 7, 3.5, kSize - 14), p.brush()); }

void figure(QPainter& p, const char* text, bool right) {
  QFont f = p.font();
  f.setPixelSize(11);
  f.setBold(true);
  p.setFont(f);
  p.setPen(QColor(200, 40, 40));
  p.drawText(QRectF(right ? kSize - 16 : 0, kSize - 13, 16, 13), Qt::AlignCenter, text);
}

}  // namespace

QIcon toolbarIcon(int image) {
  QPixmap pm(kSize, kSize);
  pm.fill(Qt::transparent);
  QPainter p(&pm);
  p.setRenderHint(QPainter::Antialiasing);
  p.setBrush(QColor(40, 60, 110));
  switch (image) {
    case 1: triangle(p, 9, 16, true); break;
    case 2: p.fillRect(QRectF(9, 9, 14, 14), p.brush()); break;
    case 3:
      bar(p, 6);
      triangle(p, 10, 14, false);
      break;
    case 4:
    case 5:
    case 6:
      triangle(p, 3, 12, false);
      if (image != 6) triangle(p, 13, 12, false);
      figure(p, image == 4 ? "10" : image == 5 ? "5" : "1", true);
      break;
    case 7:
      triangle(p, 7, 13, false);
      bar(p, 22);
      break;
    case 9:
      bar(p, 7);
      triangle(p, 12, 13, true);
      break;
    case 10:
    case 11:
    case 12:
      triangle(p, image == 10 ? 17 : 7, 12, true);
      if (image != 10) triangle(p, 17, 12, true);
      figure(p, image == 12 ? "10" : image == 11 ? "5" : "1", false);
      break;
    case 13:
      triangle(p, 8, 14, true);
      bar(p, 23);
      break;
    default: break;
  }
  p.end();
  return QIcon(pm);
}

}  // namespace quillon
