#pragma once

#include <QColor>

#include "platform/Canvas.h"

namespace pellar {

// A port's colour as one of the toolkit's; the shades that a system names are those of its components.
[[nodiscard]] inline QColor nativeColor(const Color& color) {
  return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                          static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

}  // namespace pellar
