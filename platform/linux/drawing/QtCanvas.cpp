#include "platform/linux/drawing/QtCanvas.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <algorithm>
#include <cmath>

#include "platform/linux/drawing/FittedText.h"
#include "platform/linux/drawing/NativeColor.h"
#include "platform/linux/drawing/TextSprites.h"

namespace pellar {
namespace {

constexpr double largestSprite = 64 * 1024;  // in pixels; larger shapes are painted each time

// The transparent sprite of a rectangle, and the rectangle's place in it: the part of its corner behind the
// point.
Sprite spriteAround(const ViewRect& rect) {
  Sprite sprite;
  sprite.pixels = QImage(static_cast<int>(std::ceil(rect.width)) + 1,
                         static_cast<int>(std::ceil(rect.height)) + 1, QImage::Format_ARGB32_Premultiplied);
  sprite.pixels.fill(Qt::transparent);
  return sprite;
}

QRectF inSprite(const ViewRect& rect) {
  return {rect.x - std::floor(rect.x), rect.y - std::floor(rect.y), rect.width, rect.height};
}

ViewRect scaled(const ViewRect& rect, double scale) {
  return {rect.x * scale, rect.y * scale, rect.width * scale, rect.height * scale};
}

void paintRoundedRect(QPainter& painter, const QRectF& rect, double radius, const Color& color) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(nativeColor(color));
  painter.drawRoundedRect(rect, radius, radius);
}

void paintMagnifyingGlass(QPainter& painter, const QRectF& rect, const Color& color) {
  const double side = std::min(rect.width(), rect.height());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(nativeColor(color), side * 0.11, Qt::SolidLine, Qt::RoundCap));
  // One path, so that a translucent colour does not add up where lens and handle meet.
  const QPointF centre(rect.x() + side * 0.42, rect.y() + side * 0.42);
  const double radius = side * 0.33;
  const double rim = radius * std::sqrt(0.5);
  QPainterPath path;
  path.moveTo(rect.x() + side * 0.93, rect.y() + side * 0.93);
  path.lineTo(centre.x() + rim, centre.y() + rim);
  path.arcTo(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius), -45, 360);
  painter.drawPath(path);
}

}  // namespace

ViewRect QtCanvas::inPixels(const ViewRect& rect) const {
  if (scale_ == 1) return rect;
  // An edge between two pixels would blur. What is as wide as high stays so wherever it stands.
  const double left = std::round(rect.x * scale_);
  const double top = std::round(rect.y * scale_);
  const double width = std::round(rect.maxX() * scale_) - left;
  const double height = std::round(rect.maxY() * scale_) - top;
  if (rect.width != rect.height) return {left, top, std::max(width, 1.0), std::max(height, 1.0)};
  const double side = std::max(std::round(rect.width * scale_), 1.0);
  return {left, top, side, side};
}

void QtCanvas::fillRoundedRect(const ViewRect& rect, double radius, const Color& color) {
  if (!(rect.width > 0) || !(rect.height > 0)) return;
  const ViewRect pixels = inPixels(rect);
  const double corner = radius * scale_;
  if (pixels.area() > largestSprite) {
    QPainter painter(&picture_);
    painter.setClipRect(clip_);
    paintRoundedRect(painter, {pixels.x, pixels.y, pixels.width, pixels.height}, corner, color);
    return;
  }
  SpriteKey key;
  key.with('r').with(corner).with(premultiplied(color));
  drawShape(key, pixels, [&](QPainter& painter, const QRectF& inside) {
    paintRoundedRect(painter, inside, corner, color);
  });
}

void QtCanvas::drawShape(SpriteKey& key, const ViewRect& rect,
                         const std::function<void(QPainter& painter, const QRectF& inside)>& paint) {
  const QRectF inside = inSprite(rect);
  key.with(inside);
  const Sprite* sprite = sprites_.find(key.view());
  if (sprite == nullptr) {
    Sprite fresh = spriteAround(rect);
    QPainter painter(&fresh.pixels);
    paint(painter, inside);
    painter.end();
    sprite = &sprites_.add(key.view(), std::move(fresh));
  }
  blend(*sprite, static_cast<int>(std::floor(rect.x)), static_cast<int>(std::floor(rect.y)), picture_, clip_);
}

double QtCanvas::lineHeight(const Font& font) const {
  const QtFace& face = measure_.face(inPixels(font));
  return (face.ascent + face.descent) / scale_;
}

void QtCanvas::place(const Sprite& text, ViewPoint origin, const Font& font) {
  blend(text, static_cast<int>(std::lround(origin.x)),
        static_cast<int>(std::lround(origin.y + measure_.face(font).ascent)), picture_, clip_);
}

void QtCanvas::drawLine(std::string_view text, ViewPoint origin, const Font& font, const Color& color) {
  place(textSprite(text, font, color, std::nullopt, measure_, sprites_), origin, font);
}

void QtCanvas::drawTruncatedLine(std::string_view text, const ViewRect& rect, const Font& font,
                                 const Color& color) {
  if (rect.width > 0)
    place(textSprite(text, font, color, rect.width, measure_, sprites_), rect.origin(), font);
}

void QtCanvas::drawText(std::string_view text, ViewPoint origin, const Font& font, const Color& color) {
  drawLine(text, {origin.x * scale_, origin.y * scale_}, inPixels(font), color);
}

void QtCanvas::drawTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                                 const Color& color) {
  drawTruncatedLine(text, scaled(rect, scale_), inPixels(font), color);
}

void QtCanvas::drawMiddleTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                                       const Color& color) {
  if (!(rect.width > 0)) return;
  const ViewRect line = scaled(rect, scale_);
  const QString fitted = FittedText::elidedInMiddle(text, line.width, measure_.face(inPixels(font)));
  drawLine(fitted.toStdString(), line.origin(), inPixels(font), color);
}

void QtCanvas::drawWrappedText(std::string_view text, const ViewRect& rect, int lines, const Font& font,
                               const Color& color) {
  if (!(rect.width > 0) || lines < 1) return;
  ViewRect line = scaled({rect.x, rect.y, rect.width, rect.height / lines}, scale_);
  for (const QString& fitted : FittedText::wrapped(text, line.width, lines, measure_.face(inPixels(font)))) {
    drawTruncatedLine(fitted.toStdString(), line, inPixels(font), color);
    line.y += line.height;
  }
}

void QtCanvas::drawCenteredText(std::string_view text, const ViewRect& rect, const Font& font,
                                const Color& color) {
  const ViewRect pixels = scaled(rect, scale_);
  const Font large = inPixels(font);
  const Sprite& sprite = textSprite(text, large, color, std::nullopt, measure_, sprites_);
  const QtFace& face = measure_.face(large);
  place(sprite, {pixels.midX() - sprite.width / 2, pixels.midY() - (face.ascent + face.descent) / 2}, large);
}

void QtCanvas::drawSymbol(Symbol symbol, const ViewRect& rect, const Color& color) {
  if (!(rect.width > 0) || !(rect.height > 0)) return;
  SpriteKey key;
  key.with('s').with(symbol).with(premultiplied(color));
  drawShape(key, inPixels(rect), [&](QPainter& painter, const QRectF& inside) {
    switch (symbol) {
      case Symbol::magnifyingGlass:
        paintMagnifyingGlass(painter, inside, color);
        break;
    }
  });
}

}  // namespace pellar
