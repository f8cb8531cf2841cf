#include "platform/linux/drawing/Sprite.h"

#include <algorithm>
#include <cmath>

namespace pellar {
namespace {

// All four components times `factor` / 255, two at a time.
QRgb scaled(QRgb pixel, unsigned factor) {
  QRgb even = (pixel & 0xff00ffU) * factor;
  even = ((even + ((even >> 8U) & 0xff00ffU) + 0x800080U) >> 8U) & 0xff00ffU;
  QRgb odd = ((pixel >> 8U) & 0xff00ffU) * factor;
  odd = (odd + ((odd >> 8U) & 0xff00ffU) + 0x800080U) & 0xff00ff00U;
  return even | odd;
}

QRgb over(QRgb above, QRgb below) {
  return above + scaled(below, 255U - (above >> 24U));
}

QRgb* row(QImage& image, int y) {
  return reinterpret_cast<QRgb*>(image.scanLine(y));
}

const QRgb* row(const QImage& image, int y) {
  return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

}  // namespace

void blend(const Sprite& sprite, int x, int y, QImage& target, const QRect& clip) {
  const QPoint corner(x + sprite.left, y + sprite.top);
  const QRect area = QRect(corner, sprite.pixels.size()).intersected(clip).intersected(target.rect());
  for (int line = area.top(); line <= area.bottom(); ++line) {
    const QRgb* source = row(sprite.pixels, line - corner.y()) + (area.left() - corner.x());
    QRgb* pixel = row(target, line) + area.left();
    for (const QRgb* end = source + area.width(); source != end; ++source, ++pixel) {
      if (*source != 0) *pixel = over(*source, *pixel);
    }
  }
}

void fill(QImage& target, const QRect& rect, QRgb color) {
  const QRect area = rect.intersected(target.rect());
  for (int line = area.top(); line <= area.bottom(); ++line)
    std::fill_n(row(target, line) + area.left(), area.width(), color);
}

void tint(QImage& target, const QRect& rect, QRgb color) {
  const QRect area = rect.intersected(target.rect());
  for (int line = area.top(); line <= area.bottom(); ++line) {
    QRgb* begin = row(target, line) + area.left();
    std::transform(begin, begin + area.width(), begin, [&](QRgb below) { return over(color, below); });
  }
}

void keepCovered(const QImage& mask, int x, int y, QImage& target, const QRect& clip) {
  const QRect area = QRect({x, y}, mask.size()).intersected(clip).intersected(target.rect());
  for (int line = area.top(); line <= area.bottom(); ++line) {
    const QRgb* covered = row(mask, line - y) + (area.left() - x);
    QRgb* pixel = row(target, line) + area.left();
    for (int i = 0; i < area.width(); ++i) pixel[i] = scaled(pixel[i], covered[i] >> 24U);
  }
}

QRgb premultiplied(const Color& color) {
  const auto byte = [](double value) {
    return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
  };
  return qPremultiply(qRgba(byte(color.red), byte(color.green), byte(color.blue), byte(color.alpha)));
}

}  // namespace pellar
