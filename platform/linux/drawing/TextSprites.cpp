#include "platform/linux/drawing/TextSprites.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "platform/linux/drawing/DrawnText.h"

namespace pellar {
namespace {

constexpr std::size_t longestDrawnText = 1024;
constexpr int padding = 3;  // room for what a glyph paints outside its advance and its line box
constexpr char16_t ellipsis = 0x2026;

// What can be seen of a text within a width: even narrow glyphs are a pixel wide, and a title may be 100 kB
// long.
std::size_t mostCharacters(std::optional<double> width) {
  if (!width) return longestDrawnText;
  return std::min(longestDrawnText, static_cast<std::size_t>(std::max(*width, 0.0)) + 32);
}

Sprite emptySprite(double width, const QtFace& face) {
  Sprite sprite;
  sprite.left = -padding;
  sprite.top = -static_cast<int>(std::ceil(face.ascent)) - padding;
  sprite.width = width;
  sprite.pixels = QImage(static_cast<int>(std::ceil(width)) + 2 * padding,
                         static_cast<int>(std::ceil(face.descent)) + padding - sprite.top,
                         QImage::Format_ARGB32_Premultiplied);
  sprite.pixels.fill(Qt::transparent);
  return sprite;
}

// One line that the toolkit shapes.
struct ShapedLine {
  ShapedLine(const QString& text, const QFont& font) : layout(text, font) {
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);
    layout.beginLayout();
    line = layout.createLine();
    layout.endLayout();
  }
  [[nodiscard]] double width() const { return line.isValid() ? line.naturalTextWidth() : 0; }

  QTextLayout layout;
  QTextLine line;
};

Sprite paintedLine(const ShapedLine& shaped, const QtFace& face, const Color& color) {
  Sprite sprite = emptySprite(shaped.width(), face);
  if (!shaped.line.isValid()) return sprite;
  QPainter painter(&sprite.pixels);
  painter.setPen(QColor::fromRgba(qUnpremultiply(premultiplied(color))));
  // A line is placed by its top; its ascent is that of the tallest font in it.
  shaped.line.draw(&painter, QPointF(padding, -sprite.top - shaped.line.ascent()));
  return sprite;
}

Sprite lineSprite(const DrawnText& drawn, const QtFace& face, const Color& color,
                  std::optional<double> maximumWidth) {
  const ShapedLine whole(drawn.text, face.native);
  if (!maximumWidth || (whole.width() <= *maximumWidth && !drawn.cut)) return paintedLine(whole, face, color);
  const QString text = drawn.cut ? drawn.text + QChar(ellipsis) : drawn.text;
  const QString elided =
      QFontMetricsF(face.native).elidedText(text, Qt::ElideRight, std::max(*maximumWidth, 0.0));
  return paintedLine(ShapedLine(elided, face.native), face, color);
}

}  // namespace

const Sprite& textSprite(std::string_view text, const Font& font, const Color& color,
                         std::optional<double> maximumWidth, const QtTextMeasure& measure,
                         SpriteCache& cache) {
  const std::size_t most = mostCharacters(maximumWidth);
  // Four bytes a character at most: what comes after cannot be seen, and must not make a key of 100 kB.
  const std::string_view seen = text.substr(0, most * 4 + 1);
  SpriteKey key;
  key.with('t').with(font.size).with(font.weight).with(premultiplied(color)).with(maximumWidth.value_or(-1));
  key.with(seen);
  if (const Sprite* kept = cache.find(key.view())) return *kept;

  const DrawnText drawn = drawnText(seen, most);
  const QtFace& face = measure.face(font);
  return cache.add(key.view(), lineSprite(drawn, face, color, maximumWidth));
}

}  // namespace pellar
