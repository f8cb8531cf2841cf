#include "core/Tile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace pellar {

namespace {

struct Facts {
  std::string_view rawValue;
  std::string_view title;
  UnitRect unit;
};

constexpr double third = 1.0 / 3.0;

constexpr std::array<Facts, allTiles.size()> facts{
    {{"left", "Tile left half", {0, 0, 0.5, 1}},
     {"right", "Tile right half", {0.5, 0, 0.5, 1}},
     {"top", "Tile top half", {0, 0, 1, 0.5}},
     {"bottom", "Tile bottom half", {0, 0.5, 1, 0.5}},
     {"fill", "Fill screen", {0, 0, 1, 1}},
     {"leftThird", "Left third", {0, 0, third, 1}},
     {"middleThird", "Middle third", {third, 0, third, 1}},
     {"rightThird", "Right third", {2.0 / 3.0, 0, third, 1}},
     {"topLeft", "Top left quarter", {0, 0, 0.5, 0.5}},
     {"topRight", "Top right quarter", {0.5, 0, 0.5, 0.5}},
     {"bottomLeft", "Bottom left quarter", {0, 0.5, 0.5, 0.5}},
     {"bottomRight", "Bottom right quarter", {0.5, 0.5, 0.5, 0.5}}}};

static_assert(std::ranges::none_of(facts, [](const Facts& each) { return each.title.empty(); }),
              "each tile has its facts, in the order of allTiles");

const Facts& of(Tile tile) {
  return facts[static_cast<std::size_t>(tile)];
}

}  // namespace

std::string_view rawValue(Tile tile) {
  return of(tile).rawValue;
}
std::string_view title(Tile tile) {
  return of(tile).title;
}
UnitRect unit(Tile tile) {
  return of(tile).unit;
}

std::optional<Tile> tileWithRawValue(std::string_view raw) {
  for (const Tile tile : allTiles) {
    if (rawValue(tile) == raw) return tile;
  }
  return std::nullopt;
}

const std::vector<std::vector<Tile>>& tileGroups() {
  static const std::vector<std::vector<Tile>> groups{
      {Tile::left, Tile::right},
      {Tile::leftThird, Tile::middleThird, Tile::rightThird},
      {Tile::topLeft, Tile::topRight, Tile::bottomLeft, Tile::bottomRight},
      {Tile::top, Tile::bottom},
      {Tile::fill}};
  return groups;
}

AxRect tileFrame(Tile tile, const AxRect& visible) {
  const UnitRect part = unit(tile);
  return {visible.minX() + part.minX() * visible.width, visible.minY() + part.minY() * visible.height,
          part.width * visible.width, part.height * visible.height};
}

bool shouldAlign(const AxRect& target, const AxRect& front) {
  const auto common = target.intersection(front);
  if (!common || target.width <= 0 || target.height <= 0) return false;
  return common->area() / target.area() > 0.5;
}

int cycledIndex(int current, int count, bool forward) {
  if (count < 1) return 0;
  // Wider than int, so that neither the step nor the fold overflows.
  const std::int64_t next = std::int64_t{current} + (forward ? 1 : -1);
  return static_cast<int>((next % count + count) % count);
}

}  // namespace pellar
