#include "platform/linux/system/ToolkitPlace.h"

#include <QGuiApplication>
#include <QScreen>

namespace pellar::ToolkitPlace {

QPoint of(RootPoint pixel) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return QPointF(pixel.x, pixel.y).toPoint();
  for (const QScreen* each : QGuiApplication::screens()) {
    const QRect units = each->geometry();
    const QRectF pixels(units.topLeft(), QSizeF(units.size()) * each->devicePixelRatio());
    if (pixels.contains(pixel.x, pixel.y)) screen = each;
  }
  const QPointF corner = screen->geometry().topLeft();
  return (corner + (QPointF(pixel.x, pixel.y) - corner) / screen->devicePixelRatio()).toPoint();
}

QRect of(const RootRect& pixels) {
  return {of(pixels.origin()), of(RootPoint{pixels.maxX(), pixels.maxY()}) - QPoint(1, 1)};
}

}  // namespace pellar::ToolkitPlace
