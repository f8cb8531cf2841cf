#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "core/Geometry.h"

namespace pellar {

// A part of a screen that a window can be placed on.
enum class Tile {
  left,
  right,
  top,
  bottom,
  fill,
  leftThird,
  middleThird,
  rightThird,
  topLeft,
  topRight,
  bottomLeft,
  bottomRight
};

inline constexpr std::array allTiles{Tile::left,    Tile::right,     Tile::top,         Tile::bottom,
                                     Tile::fill,    Tile::leftThird, Tile::middleThird, Tile::rightThird,
                                     Tile::topLeft, Tile::topRight,  Tile::bottomLeft,  Tile::bottomRight};

// The name of the case.
std::string_view rawValue(Tile tile);
// Exact; absent for anything else.
std::optional<Tile> tileWithRawValue(std::string_view rawValue);
// The name shown in the menu and the picker.
std::string_view title(Tile tile);
// The tile as fractions of the usable screen area.
UnitRect unit(Tile tile);
// The tiles as the picker groups them, each group a small screen, in order.
const std::vector<std::vector<Tile>>& tileGroups();

// The window frame for a tile on a screen with the usable area `visible`. Unrounded, without gaps.
AxRect tileFrame(Tile tile, const AxRect& visible);

// Whether strictly more than half of `target` lies over `front`. False for an empty `target`.
bool shouldAlign(const AxRect& target, const AxRect& front);

// The next index when cycling through `count` tabs, always in 0..<count; 0 when there are none. A `current`
// outside is folded into the range.
int cycledIndex(int current, int count, bool forward);

}  // namespace pellar
