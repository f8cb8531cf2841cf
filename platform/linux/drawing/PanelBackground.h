#pragma once

#include <QImage>
#include <QRect>

#include "platform/Canvas.h"

// The dark, rounded, bordered ground of every panel.
namespace pellar::PanelBackground {

inline constexpr double cornerRadius = 12;  // points

// The ground's colour: translucent where a compositing program blends it with what lies behind, else opaque.
[[nodiscard]] Color color(bool blends);

// The parts of pictures are in pixels.

// Lays the ground under a part of a panel's picture.
void drawUnder(QImage& picture, const QRect& part, bool blends);
// Lays the border, a point wide, over the part's content and, where that can be seen, takes away what is
// outside the corners. `scale` is pixels to a point.
void drawOver(QImage& picture, const QRect& part, double scale, bool blends);

}  // namespace pellar::PanelBackground
