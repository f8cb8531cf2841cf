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
// the height of the first screen's frame. A part of a pixel too many is a whole one: what just fits into the
// rectangle must go on fitting.
inline PixelRect toPixels(const ScreenRect& rect, double firstScreenHeight) {
  const auto rounded = [](double value) { return static_cast<int>(std::lround(value)); };
  const auto held = [](double length) {
    constexpr double noise = 0.001;  // of sums of fractions
    return std::max(static_cast<int>(std::ceil(length - noise)), 1);
  };
  return {rounded(rect.x), rounded(firstScreenHeight - rect.maxY()), held(rect.width), held(rect.height)};
}

// What a window covers, from where the X server has it.
inline PixelRect wholePixels(const AxRect& rect) {
  const auto rounded = [](double value) { return static_cast<int>(std::lround(value)); };
  return {rounded(rect.x), rounded(rect.y), rounded(rect.width), rounded(rect.height)};
}

inline ScreenPoint toScreenPoint(double x, double y, double firstScreenHeight) {
  return {x, firstScreenHeight - y};
}

}  // namespace pellar
