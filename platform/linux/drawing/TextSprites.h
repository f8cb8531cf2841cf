#pragma once

#include <optional>
#include <string_view>

#include "platform/Canvas.h"
#include "platform/linux/drawing/QtTextMeasure.h"
#include "platform/linux/drawing/Sprite.h"
#include "platform/linux/drawing/SpriteCache.h"

namespace pellar {

// One line of text as a sprite, drawn from the left end of its baseline; truncated with an ellipsis to
// `maximumWidth` when given. Good until the next sprite is made.
const Sprite& textSprite(std::string_view text, const Font& font, const Color& color,
                         std::optional<double> maximumWidth, const QtTextMeasure& measure,
                         SpriteCache& cache);

}  // namespace pellar
