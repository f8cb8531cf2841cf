#pragma once

#include <QFont>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/Canvas.h"

namespace pellar {

// The system's interface font at one weight and one size, which is in pixels here.
struct QtFace {
  Font font;
  QFont native;
  double ascent = 0;
  double descent = 0;
};

// Measures text in pixels with the fonts it is drawn with, of so many pixels. Remembers short texts: the
// strip asks for the same few widths at every layout.
class QtTextMeasure final : public TextMeasure {
 public:
  [[nodiscard]] double width(std::string_view text, const Font& font) const override;

  // The face for a font; the reference stays good.
  [[nodiscard]] const QtFace& face(const Font& font) const;

 private:
  mutable std::deque<QtFace> faces_;
  mutable std::unordered_map<std::string, double> widths_;
  mutable std::string key_;
};

}  // namespace pellar
