#include "platform/linux/drawing/PanelBackground.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "platform/linux/drawing/NativeColor.h"
#include "platform/linux/drawing/Sprite.h"

namespace pellar::PanelBackground {
namespace {

constexpr Color opaque{0x2b / 255.0, 0x2b / 255.0, 0x2e / 255.0, 1, std::nullopt};
constexpr double translucency = 0.88;
constexpr Color border = Color::white(0.14);

// The border and the corners at one scale, in pixels.
struct Edge {
  // One corner: the border's arc, and what of the content lies inside of it.
  struct Corner {
    Sprite arc;
    QImage inside;
  };

  explicit Edge(double scale);

  int line;
  int radius;
  std::array<Corner, 4> corners;  // top left, top right, bottom left, bottom right
};

QImage transparentCorner(int radius) {
  QImage image(radius, radius, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  return image;
}

Edge::Edge(double scale)
    : line(std::max(static_cast<int>(std::lround(scale)), 1)),
      radius(static_cast<int>(std::lround(cornerRadius * scale))) {
  Corner first;
  first.arc.pixels = transparentCorner(radius);
  first.inside = transparentCorner(radius);
  const QRectF outline(0, 0, 4 * radius, 4 * radius);
  {
    QPainter painter(&first.arc.pixels);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(nativeColor(border), line));
    const double half = line / 2.0;
    painter.drawRoundedRect(outline.adjusted(half, half, -half, -half), radius - half, radius - half);
  }
  {
    QPainter painter(&first.inside);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(outline, radius, radius);
  }
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const bool right = i % 2 == 1;
    const bool bottom = i / 2 == 1;
    corners[i].arc.pixels = first.arc.pixels.mirrored(right, bottom);
    corners[i].inside = first.inside.mirrored(right, bottom);
  }
}

// Made once for each scale that some monitor has.
const Edge& edgeAt(double scale) {
  static std::map<double, Edge> edges;
  return edges.try_emplace(scale, scale).first->second;
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

void drawOver(QImage& picture, const QRect& part, double scale, bool blends) {
  const Edge& edge = edgeAt(scale);
  const int right = picture.width() - edge.radius;
  const int bottom = picture.height() - edge.radius;
  const int across = right - edge.radius;
  const int down = bottom - edge.radius;
  const QRgb line = premultiplied(border);
  for (const QRect& side : {QRect(edge.radius, 0, across, edge.line),
                            QRect(edge.radius, picture.height() - edge.line, across, edge.line),
                            QRect(0, edge.radius, edge.line, down),
                            QRect(picture.width() - edge.line, edge.radius, edge.line, down)}) {
    tint(picture, side.intersected(part), line);
  }
  for (std::size_t i = 0; i < edge.corners.size(); ++i) {
    const int x = i % 2 == 1 ? right : 0;
    const int y = i / 2 == 1 ? bottom : 0;
    blend(edge.corners[i].arc, x, y, picture, part);
    if (blends) keepCovered(edge.corners[i].inside, x, y, picture, part);
  }
}

}  // namespace pellar::PanelBackground
