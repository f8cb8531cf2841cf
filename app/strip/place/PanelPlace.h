#pragma once

#include "core/Geometry.h"

// Where a panel goes that comes up beside something, so that the whole of it can be seen. Pure functions in
// screen coordinates, points; `visible` is the part of the screen that no menu bar or dock takes.
namespace pellar::PanelPlace {

// What stays free between a panel and the edges of the visible area.
constexpr double margin = 8;

// The left edge of a panel that would like to have it at `wanted`. On an area too narrow for the panel its
// left part is the one that is seen.
[[nodiscard]] double left(double wanted, double width, const ScreenRect& visible);

// The top edge of a panel that would like to have it at `wanted`.
[[nodiscard]] double top(double wanted, const ScreenRect& visible);

// The rectangle of a panel whose top left corner is there.
[[nodiscard]] ScreenRect hanging(ScreenPoint topLeft, Size size);

}  // namespace pellar::PanelPlace
