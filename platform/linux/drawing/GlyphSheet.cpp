#include "platform/linux/drawing/GlyphSheet.h"

#include <QGlyphRun>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

namespace pellar {
namespace {

constexpr int padding = 2;  // beyond the glyph's outline: smoothing and hinting

bool isSimple(char16_t c) {
  if (c < 0x20) return false;
  if (c < 0x7f) return true;
  if (c < 0xa0 || c == 0xad) return false;  // controls, soft hyphen
  return c < 0x250 || (c >= 0x2013 && c <= 0x2026 && c != 0x2025);
}

}  // namespace

quint32 GlyphSheet::index(char16_t character) {
  const auto [entry, isNew] = indexes_.try_emplace(character, 0);
  if (isNew) {
    const QList<quint32> found = font_.glyphIndexesForString(QString(QChar(character)));
    entry->second = found.isEmpty() ? 0 : found.front();
  }
  return entry->second;
}

bool GlyphSheet::covers(QStringView text) {
  return std::all_of(text.begin(), text.end(),
                     [this](QChar c) { return isSimple(c.unicode()) && index(c.unicode()) != 0; });
}

double GlyphSheet::advance(char16_t character, char16_t next) {
  const auto [entry, isNew] = advances_.try_emplace(static_cast<std::uint32_t>(character) << 16U | next, 0.0);
  if (isNew) {
    const std::array<quint32, 2> pair{index(character), next == 0 ? 0 : index(next)};
    std::array<QPointF, 2> advances;
    font_.advancesForGlyphIndexes(pair.data(), advances.data(), next == 0 ? 1 : 2, QRawFont::KernedAdvances);
    entry->second = advances.front().x();
  }
  return entry->second;
}

const GlyphSheet::Glyph& GlyphSheet::glyph(char16_t character, unsigned quarter) {
  const auto [entry, isNew] = glyphs_.try_emplace(static_cast<std::uint32_t>(character) << 2U | quarter);
  Glyph& glyph = entry->second;
  if (!isNew) return glyph;

  const quint32 index = this->index(character);
  const QRectF outline = font_.boundingRect(index);
  if (outline.isEmpty()) return glyph;
  glyph.left = static_cast<int>(std::floor(outline.left())) - padding;
  glyph.top = static_cast<int>(std::floor(outline.top())) - padding;
  QImage drawn(static_cast<int>(std::ceil(outline.right())) + padding + 1 - glyph.left,
               static_cast<int>(std::ceil(outline.bottom())) + padding - glyph.top,
               QImage::Format_ARGB32_Premultiplied);
  drawn.fill(Qt::transparent);
  QGlyphRun run;
  run.setRawFont(font_);
  run.setGlyphIndexes({index});
  run.setPositions({{quarter * 0.25, 0}});
  QPainter painter(&drawn);
  painter.setPen(Qt::white);
  painter.drawGlyphRun(QPointF(-glyph.left, -glyph.top), run);
  painter.end();
  glyph.coverage = drawn.convertToFormat(QImage::Format_Alpha8);
  return glyph;
}

}  // namespace pellar
