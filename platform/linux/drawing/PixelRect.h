#pragma once

#include <algorithm>
#include <cmath>

#include "core/Geometry.h"

namespace pellar {

// A rectangle in pixels of the X screen: origin at the top left of the root window, y downward.
struct PixelRect {
  int x = 0;
  int y = 0;
  int width = 1;
  int height = 1;
  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

// The one place where y-up screen coordinates meet the X server's. A point is a pixel; `firstScreenHeight` is
// the height of the first screen's frame.
inline PixelRect toPixels(const ScreenRect& rect, double firstScreenHeight) {
  const auto rounded = [](double value) { return static_cast<int>(std::lround(value)); };
  return {rounded(rect.x), rounded(firstScreenHeight - rect.maxY()), std::max(rounded(rect.width), 1),
          std::max(rounded(rect.height), 1)};
}

inline ScreenPoint toScreenPoint(double x, double y, double firstScreenHeight) {
  return {x, firstScreenHeight - y};
}

}  // namespace pellar
