#pragma once

#include "platform/Canvas.h"

// How a search field looks, shared by its drawing at rest and its editor.
namespace pellar::SearchFieldLook {

inline constexpr Font font{12, FontWeight::regular};
inline constexpr Color textColor = Color::white(0.95);
inline constexpr Color placeholderColor = Color::white(0.5);
inline constexpr double textLeft = 25;  // from the field's left edge
inline constexpr double textRight = 8;  // from its right edge

// The rounded ground and the magnifying glass.
inline void drawGround(Canvas& canvas, const ViewRect& frame) {
  canvas.fillRoundedRect(frame, 8, Color::white(0.1));
  canvas.drawSymbol(Symbol::magnifyingGlass, {frame.minX() + 8, frame.midY() - 6, 12, 12},
                    receding(0.6, canvas));
}

}  // namespace pellar::SearchFieldLook
