#include "platform/linux/drawing/QtTextMeasure.h"

#include <QFontMetricsF>
#include <QImage>
#include <algorithm>

#include "platform/linux/drawing/DrawnText.h"

namespace pellar {
namespace {

constexpr std::size_t longestRememberedText = 64;
constexpr std::size_t mostRememberedWidths = 512;
// Nothing on a screen is wider; measuring more of a hostile title would only cost time.
constexpr std::size_t longestMeasuredText = 8192;

QFont::Weight nativeWeight(FontWeight weight) {
  switch (weight) {
    case FontWeight::regular:
      return QFont::Normal;
    case FontWeight::medium:
      return QFont::Medium;
    case FontWeight::bold:
      return QFont::Bold;
  }
  return QFont::Normal;
}

QFont nativeFont(const Font& font) {
  // Pixel sizes are whole numbers in QFont, point sizes are not: a half pixel is said in points of the
  // resolution that images are drawn with.
  static const double dotsPerInch = QImage(1, 1, QImage::Format_ARGB32_Premultiplied).logicalDpiY();
  QFont native(QStringLiteral("sans-serif"));
  native.setPointSizeF(font.size * 72 / dotsPerInch);
  native.setWeight(nativeWeight(font.weight));
  return native;
}

}  // namespace

const QtFace& QtTextMeasure::face(const Font& font) const {
  const auto found =
      std::find_if(faces_.begin(), faces_.end(), [&](const QtFace& face) { return face.font == font; });
  if (found != faces_.end()) return *found;
  const QFont native = nativeFont(font);
  const QFontMetricsF metrics(native);
  faces_.push_back({font, native, metrics.ascent(), metrics.descent()});
  return faces_.back();
}

double QtTextMeasure::width(std::string_view text, const Font& font) const {
  const QtFace& used = face(font);
  const auto measured = [&] {
    return QFontMetricsF(used.native).horizontalAdvance(drawnText(text, longestMeasuredText).text);
  };
  if (text.size() > longestRememberedText) return measured();

  key_.assign(reinterpret_cast<const char*>(&used.font.size), sizeof used.font.size);
  key_.push_back(static_cast<char>(used.font.weight));
  key_.append(text);
  if (const auto found = widths_.find(key_); found != widths_.end()) return found->second;
  if (widths_.size() >= mostRememberedWidths) widths_.clear();
  return widths_[key_] = measured();
}

}  // namespace pellar
