#pragma once

#include <optional>
#include <span>

#include "core/Geometry.h"
#include "platform/ScreenList.h"

// Where the strip and the windows under it go. Pure functions of a window's frame and the screens, points.
namespace pellar::StripGeometry {

constexpr double stripHeight = 32;

// The strip's rectangle: as wide as the window, its bottom edge on the window's top edge.
[[nodiscard]] ScreenRect stripFrame(const AxRect& window, std::span<const Screen> screens);

// Accessibility y of the top of the visible area of the window's screen: the first that the window
// intersects, else the first of all. 0 without screens.
[[nodiscard]] double workTop(const AxRect& window, std::span<const Screen> screens);

// The visible area of the same screen without the strip's room at its top; the zero rectangle without
// screens.
[[nodiscard]] AxRect tileArea(const AxRect& window, std::span<const Screen> screens);

// The frame that makes room for the strip above a window; absent when there is room already. The window gives
// up height rather than running off the bottom, down to 200 points.
[[nodiscard]] std::optional<AxRect> pushedDown(const AxRect& window, std::span<const Screen> screens);

// Whether a window's top is at `top` or below, give or take half a point.
[[nodiscard]] bool isBelow(const AxRect& window, double top);

// Whether a window fills an area, give or take less than 2 points on each of x, y, width and height.
[[nodiscard]] bool fills(const AxRect& window, const AxRect& area);

}  // namespace pellar::StripGeometry
