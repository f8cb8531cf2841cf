#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Canvas.h"

namespace pellar {

// Text as wide as 0.55 times the font size for each code point, a bad byte counting as one.
class SimTextMeasure final : public TextMeasure {
 public:
  [[nodiscard]] double width(std::string_view text, const Font& font) const override;

  static double lineHeight(const Font& font) { return font.size * 1.25; }
  static std::size_t codePoints(std::string_view text);
  // The first `count` code points, each bad byte replaced by U+FFFD.
  static std::string prefix(std::string_view text, std::size_t count);
  // The text as it is drawn in a width, with an ellipsis when it is too long.
  [[nodiscard]] std::string truncated(std::string_view text, double width, const Font& font) const;
  // The same with the ellipsis in the middle.
  [[nodiscard]] std::string truncatedInMiddle(std::string_view text, double width, const Font& font) const;
  // The text in lines of that width, each ending between two words where it can, the last one truncated.
  [[nodiscard]] std::vector<std::string> wrapped(std::string_view text, double width, int lines,
                                                 const Font& font) const;
};

}  // namespace pellar
