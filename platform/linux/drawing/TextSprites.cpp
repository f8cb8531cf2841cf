#include "platform/linux/drawing/TextSprites.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "platform/linux/drawing/DrawnText.h"
#include "platform/linux/drawing/GlyphSheet.h"

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

// A text whose glyphs stand side by side.
Sprite simpleSprite(QString text, bool cut, const QtFace& face, const Color& color,
                    std::optional<double> maximumWidth) {
  GlyphSheet& sheet = *face.sheet;
  const auto next = [&](qsizetype i) { return i + 1 < text.size() ? text.at(i + 1).unicode() : char16_t{0}; };
  double width = 0;
  qsizetype kept = 0;  // characters before which an ellipsis would fit
  const double room = maximumWidth ? *maximumWidth - face.ellipsisWidth : 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (width <= room) kept = i;
    width += sheet.advance(text.at(i).unicode(), next(i));
  }
  if (maximumWidth && (cut || width > *maximumWidth)) {
    if (cut && width <= room) kept = text.size();
    text.truncate(kept);
    text.append(QChar(ellipsis));
    width = 0;
    for (qsizetype i = 0; i < text.size(); ++i) width += sheet.advance(text.at(i).unicode(), next(i));
  }

  Sprite sprite = emptySprite(width, face);
  // The colour at every coverage.
  std::array<QRgb, 256> shades{};
  for (std::size_t coverage = 0; coverage < shades.size(); ++coverage) {
    Color shade = color;
    shade.alpha *= static_cast<double>(coverage) / 255;
    shades[coverage] = premultiplied(shade);
  }
  double x = padding;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char16_t character = text.at(i).unicode();
    const auto quarters = static_cast<int>(std::floor(x * 4 + 0.5));
    const GlyphSheet::Glyph& glyph = sheet.glyph(character, static_cast<unsigned>(quarters) % 4);
    x += sheet.advance(character, next(i));
    const int left = quarters / 4 + glyph.left;
    const int top = glyph.top - sprite.top;
    const QRect area = QRect({left, top}, glyph.coverage.size()).intersected(sprite.pixels.rect());
    for (int line = area.top(); line <= area.bottom(); ++line) {
      const uchar* coverage = glyph.coverage.constScanLine(line - top) + (area.left() - left);
      QRgb* pixel = reinterpret_cast<QRgb*>(sprite.pixels.scanLine(line)) + area.left();
      for (int column = 0; column < area.width(); ++column) {
        // Neighbours hardly overlap; where they do, the darker coverage is the nearer to the truth.
        if (const QRgb shade = shades[coverage[column]]; qAlpha(shade) > qAlpha(pixel[column]))
          pixel[column] = shade;
      }
    }
  }
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
  // The number of leading characters that fit into `room`.
  [[nodiscard]] int fitting(double room) const {
    int position = line.xToCursor(std::max(room, 0.0), QTextLine::CursorBetweenCharacters);
    while (position > 0 && end(position) > room) position = layout.previousCursorPosition(position);
    return position;
  }
  // Where the glyphs of the leading characters end. A ligature of which only a part is asked for counts in
  // full.
  [[nodiscard]] double end(int characters) const {
    double right = 0;
    for (const QGlyphRun& run : layout.glyphRuns(0, characters)) {
      if (run.positions().isEmpty()) continue;
      const QList<QPointF> advances = run.rawFont().advancesForGlyphIndexes({run.glyphIndexes().back()});
      right = std::max(right, run.positions().back().x() + advances.front().x());
    }
    return right;
  }

  QTextLayout layout;
  QTextLine line;
};

Sprite paintedLine(const ShapedLine& line, int characters, double width, bool withEllipsis,
                   const QtFace& face, const Color& color) {
  Sprite sprite = emptySprite(width, face);
  QPainter painter(&sprite.pixels);
  painter.setPen(QColor::fromRgba(qUnpremultiply(premultiplied(color))));
  // Glyph runs are placed from the top of the line; its ascent is that of the tallest font in it.
  const QPointF origin(padding, -sprite.top - (line.line.isValid() ? line.line.ascent() : 0));
  if (characters > 0) {
    for (const QGlyphRun& run : line.layout.glyphRuns(0, characters)) painter.drawGlyphRun(origin, run);
  }
  if (withEllipsis) {
    painter.setFont(face.native);
    painter.drawText(QPointF(padding + width - face.ellipsisWidth, -sprite.top), QString(QChar(ellipsis)));
  }
  return sprite;
}

bool hasRightToLeft(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar c) {
    return c.isSurrogate() || c.direction() == QChar::DirR || c.direction() == QChar::DirAL;
  });
}

Sprite shapedSprite(const DrawnText& drawn, const QtFace& face, const Color& color,
                    std::optional<double> maximumWidth) {
  const ShapedLine line(drawn.text, face.native);
  const int all = static_cast<int>(drawn.text.size());
  if (!maximumWidth || (line.width() <= *maximumWidth && !drawn.cut))
    return paintedLine(line, all, line.width(), false, face, color);

  if (hasRightToLeft(drawn.text)) {
    // The characters that go are not the ones at the right end: the whole paragraph is shaped anew.
    const QString whole = drawn.cut ? drawn.text + QChar(ellipsis) : drawn.text;
    const QString elided =
        QFontMetricsF(face.native).elidedText(whole, Qt::ElideRight, std::max(*maximumWidth, 0.0));
    const ShapedLine shorter(elided, face.native);
    return paintedLine(shorter, static_cast<int>(elided.size()), shorter.width(), false, face, color);
  }
  const int kept = line.fitting(*maximumWidth - face.ellipsisWidth);
  const double width = line.end(kept) + face.ellipsisWidth;
  return paintedLine(line, kept, width, true, face, color);
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
  if (face.sheet->covers(drawn.text))
    return cache.add(key.view(), simpleSprite(drawn.text, drawn.cut, face, color, maximumWidth));
  return cache.add(key.view(), shapedSprite(drawn, face, color, maximumWidth));
}

}  // namespace pellar
