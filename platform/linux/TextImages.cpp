#include "platform/linux/TextImages.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "platform/linux/DrawnText.h"

namespace pellar {
namespace {

constexpr std::size_t mostBytes = 1024 * 1024;
constexpr std::size_t longestDrawnText = 1024;
constexpr int padding = 3;  // room for what a glyph paints outside its advance and its line box
constexpr QChar ellipsis(static_cast<char16_t>(0x2026));

void appendBytes(std::string& key, double value) {
  key.append(reinterpret_cast<const char*>(&value), sizeof value);
}

// What can be seen of a text within a width: even narrow glyphs are a pixel wide, and a title may be 100 kB
// long.
std::size_t mostCharacters(std::optional<double> width) {
  if (!width) return longestDrawnText;
  return std::min(longestDrawnText, static_cast<std::size_t>(std::max(*width, 0.0)) + 32);
}

bool hasRightToLeft(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar c) {
    return c.isSurrogate() || c.direction() == QChar::DirR || c.direction() == QChar::DirAL;
  });
}

// One shaped line.
struct Line {
  Line(const QString& text, const QFont& font) : layout(text, font) {
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
    while (position > 0 && line.cursorToX(position) > room)
      position = layout.previousCursorPosition(position);
    return position;
  }

  QTextLayout layout;
  QTextLine line;
};

TextImage paintedLine(const Line& line, int characters, double width, bool withEllipsis, const QtFace& face,
                      const Color& color) {
  TextImage image;
  image.left = padding;
  image.baseline = static_cast<int>(std::ceil(face.ascent)) + padding;
  image.width = width;
  image.pixels = QImage(static_cast<int>(std::ceil(width)) + 2 * padding,
                        image.baseline + static_cast<int>(std::ceil(face.descent)) + padding,
                        QImage::Format_ARGB32_Premultiplied);
  image.pixels.fill(Qt::transparent);
  QPainter painter(&image.pixels);
  painter.setPen(QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                                  static_cast<float>(color.blue), static_cast<float>(color.alpha)));
  // Glyph runs are placed from the top of the line; its ascent is that of the tallest font in it.
  const QPointF origin(padding, image.baseline - (line.line.isValid() ? line.line.ascent() : 0));
  if (characters > 0) {
    for (const QGlyphRun& run : line.layout.glyphRuns(0, characters)) painter.drawGlyphRun(origin, run);
  }
  if (withEllipsis) {
    painter.setFont(face.native);
    painter.drawText(QPointF(padding + width - face.ellipsisWidth, image.baseline), QString(ellipsis));
  }
  return image;
}

TextImage drawnLine(const DrawnText& drawn, const QtFace& face, const Color& color,
                    std::optional<double> maximumWidth) {
  const Line line(drawn.text, face.native);
  const int all = static_cast<int>(drawn.text.size());
  if (!maximumWidth || (line.width() <= *maximumWidth && !drawn.cut))
    return paintedLine(line, all, line.width(), false, face, color);

  if (hasRightToLeft(drawn.text)) {
    // The characters that go are not the ones at the right end: the whole paragraph is shaped anew.
    const QString whole = drawn.cut ? drawn.text + ellipsis : drawn.text;
    const QString elided =
        QFontMetricsF(face.native).elidedText(whole, Qt::ElideRight, std::max(*maximumWidth, 0.0));
    const Line shorter(elided, face.native);
    return paintedLine(shorter, static_cast<int>(elided.size()), shorter.width(), false, face, color);
  }
  const int kept = line.fitting(*maximumWidth - face.ellipsisWidth);
  const double width = (kept > 0 ? line.line.cursorToX(kept) : 0) + face.ellipsisWidth;
  return paintedLine(line, kept, width, true, face, color);
}

}  // namespace

const TextImage& TextImages::image(std::string_view text, const Font& font, const Color& color,
                                   std::optional<double> maximumWidth) {
  const std::size_t most = mostCharacters(maximumWidth);
  // Four bytes a character at most: what comes after cannot be seen, and must not make a key of 100 kB.
  const std::string_view seen = text.substr(0, most * 4 + 1);
  key_.clear();
  for (const double value :
       {font.size, color.red, color.green, color.blue, color.alpha, maximumWidth.value_or(-1)})
    appendBytes(key_, value);
  key_.push_back(static_cast<char>(font.weight));
  key_.append(seen);

  if (const auto found = byKey_.find(key_); found != byKey_.end()) {
    entries_.splice(entries_.begin(), entries_, found->second);
    return found->second->image;
  }
  TextImage fresh = drawnLine(drawnText(seen, most), measure_.face(font), color, maximumWidth);
  const auto size = static_cast<std::size_t>(fresh.pixels.sizeInBytes());
  makeRoom(size);
  entries_.push_front({key_, std::move(fresh)});
  byKey_.emplace(entries_.front().key, entries_.begin());
  bytes_ += size;
  return entries_.front().image;
}

void TextImages::makeRoom(std::size_t bytes) {
  while (!entries_.empty() && bytes_ + bytes > mostBytes) {
    bytes_ -= static_cast<std::size_t>(entries_.back().image.pixels.sizeInBytes());
    byKey_.erase(entries_.back().key);
    entries_.pop_back();
  }
}

}  // namespace pellar
