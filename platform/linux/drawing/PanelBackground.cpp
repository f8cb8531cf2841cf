#include "platform/linux/drawing/PanelBackground.h"

#include <QPainter>
#include <array>

#include "platform/linux/drawing/Sprite.h"

namespace pellar::PanelBackground {
namespace {

constexpr Color opaque{0x2b / 255.0, 0x2b / 255.0, 0x2e / 255.0, 1, std::nullopt};
constexpr double translucency = 0.88;
constexpr Color border = Color::white(0.14);

// One corner: the border's arc, and what of the content lies inside of it.
struct Corner {
  Sprite arc;
  QImage inside;
};

QImage transparentCorner() {
  QImage image(cornerRadius, cornerRadius, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  return image;
}

// Top left, top right, bottom left, bottom right.
std::array<Corner, 4> makeCorners() {
  Corner first;
  first.arc.pixels = transparentCorner();
  first.inside = transparentCorner();
  const QRectF outline(0, 0, 4 * cornerRadius, 4 * cornerRadius);
  {
    QPainter painter(&first.arc.pixels);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgbF(1, 1, 1, static_cast<float>(border.alpha)), 1));
    painter.drawRoundedRect(outline.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius - 0.5, cornerRadius - 0.5);
  }
  {
    QPainter painter(&first.inside);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(outline, cornerRadius, cornerRadius);
  }
  std::array<Corner, 4> corners;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const bool right = i % 2 == 1;
    const bool bottom = i / 2 == 1;
    corners[i].arc.pixels = first.arc.pixels.mirrored(right, bottom);
    corners[i].inside = first.inside.mirrored(right, bottom);
  }
  return corners;
}

}  // namespace

Color color(bool blends) {
  Color ground = opaque;
  if (blends) ground.alpha = translucency;
  return ground;
}

void drawUnder(QImage& picture, const QRect& part, bool blends) {
  fill(picture, part, premultiplied(color(blends)));
}

void drawOver(QImage& picture, const QRect& part, bool blends) {
  static const std::array<Corner, 4> corners = makeCorners();
  const int right = picture.width() - cornerRadius;
  const int bottom = picture.height() - cornerRadius;
  const int across = right - cornerRadius;
  const int down = bottom - cornerRadius;
  const QRgb line = premultiplied(border);
  for (const QRect& edge :
       {QRect(cornerRadius, 0, across, 1), QRect(cornerRadius, picture.height() - 1, across, 1),
        QRect(0, cornerRadius, 1, down), QRect(picture.width() - 1, cornerRadius, 1, down)}) {
    tint(picture, edge.intersected(part), line);
  }
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const int x = i % 2 == 1 ? right : 0;
    const int y = i / 2 == 1 ? bottom : 0;
    blend(corners[i].arc, x, y, picture, part);
    if (blends) keepCovered(corners[i].inside, x, y, picture, part);
  }
}

}  // namespace pellar::PanelBackground
