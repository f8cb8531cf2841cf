#pragma once

#include <string_view>

#include "platform/linux/drawing/QtTextMeasure.h"

namespace pellar {

// Measures in points what is drawn with that many pixels to each: the fonts of that size, not small ones made
// larger, whose letters stand differently.
class ScaledTextMeasure final : public TextMeasure {
 public:
  explicit ScaledTextMeasure(const QtTextMeasure& pixels, double scale = 1)
      : pixels_(pixels), scale_(scale) {}

  void setScale(double scale) { scale_ = scale; }
  [[nodiscard]] double width(std::string_view text, const Font& font) const override {
    return pixels_.width(text, {font.size * scale_, font.weight}) / scale_;
  }

 private:
  const QtTextMeasure& pixels_;
  double scale_;
};

}  // namespace pellar
