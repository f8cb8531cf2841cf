#include "platform/linux/QtCanvas.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <algorithm>
#include <cmath>

namespace pellar {
namespace {

QColor native(const Color& color) {
  return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                          static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

}  // namespace

void QtCanvas::fillRoundedRect(const ViewRect& rect, double radius, const Color& color) {
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(native(color));
  painter_.drawRoundedRect(QRectF(rect.x, rect.y, rect.width, rect.height), radius, radius);
}

void QtCanvas::place(const TextImage& image, ViewPoint origin, const Font& font) {
  const int x = static_cast<int>(std::lround(origin.x)) - image.left;
  const int y = static_cast<int>(std::lround(origin.y + measure_.face(font).ascent)) - image.baseline;
  painter_.drawImage(x, y, image.pixels);
}

void QtCanvas::drawText(std::string_view text, ViewPoint origin, const Font& font, const Color& color) {
  place(texts_.image(text, font, color, std::nullopt), origin, font);
}

void QtCanvas::drawTruncatedText(std::string_view text, const ViewRect& rect, const Font& font,
                                 const Color& color) {
  if (rect.width > 0) place(texts_.image(text, font, color, rect.width), rect.origin(), font);
}

void QtCanvas::drawCenteredText(std::string_view text, const ViewRect& rect, const Font& font,
                                const Color& color) {
  const TextImage& image = texts_.image(text, font, color, std::nullopt);
  const QtFace& face = measure_.face(font);
  place(image, {rect.midX() - image.width / 2, rect.midY() - (face.ascent + face.descent) / 2}, font);
}

void QtCanvas::drawSymbol(Symbol symbol, const ViewRect& rect, const Color& color) {
  switch (symbol) {
    case Symbol::magnifyingGlass: {
      const double side = std::min(rect.width, rect.height);
      painter_.setRenderHint(QPainter::Antialiasing);
      painter_.setBrush(Qt::NoBrush);
      painter_.setPen(QPen(native(color), side * 0.11, Qt::SolidLine, Qt::RoundCap));
      // One path, so that a translucent colour does not add up where lens and handle meet.
      const QPointF centre(rect.x + side * 0.42, rect.y + side * 0.42);
      const double radius = side * 0.33;
      const double rim = radius * std::sqrt(0.5);
      QPainterPath path;
      path.moveTo(rect.x + side * 0.93, rect.y + side * 0.93);
      path.lineTo(centre.x() + rim, centre.y() + rim);
      path.arcTo(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius), -45, 360);
      painter_.drawPath(path);
      return;
    }
  }
}

}  // namespace pellar
