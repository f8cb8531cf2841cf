#pragma once

#include "platform/Canvas.h"

namespace pellar {

// Measures with the text system that also draws.
class MacTextMeasure final : public TextMeasure {
 public:
  [[nodiscard]] double width(std::string_view text, const Font& font) const override;
};

}  // namespace pellar
