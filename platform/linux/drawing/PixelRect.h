#pragma once

#include <algorithm>
#include <cmath>

#include "platform/linux/x11/PointMap.h"

namespace pellar {

// A rectangle in whole pixels of the X screen: origin at the top left of the root window, y downward.
struct PixelRect {
  int x = 0;
  int y = 0;
  int width = 1;
  int height = 1;
  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

inline RootRect rootRect(const PixelRect& rect) {
  return {static_cast<double>(rect.x), static_cast<double>(rect.y), static_cast<double>(rect.width),
          static_cast<double>(rect.height)};
}

// The whole pixels that a panel takes. A part of a pixel too many is a whole one: what just fits into the
// rectangle must go on fitting.
inline PixelRect wholePixels(const RootRect& rect) {
  const auto rounded = [](double value) { return static_cast<int>(std::lround(value)); };
  const auto held = [](double length) {
    constexpr double noise = 0.001;  // of sums of fractions
    return std::max(static_cast<int>(std::ceil(length - noise)), 1);
  };
  return {rounded(rect.x), rounded(rect.y), held(rect.width), held(rect.height)};
}

}  // namespace pellar
