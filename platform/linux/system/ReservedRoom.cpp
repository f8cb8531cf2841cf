#include "platform/linux/system/ReservedRoom.h"

#include <algorithm>
#include <optional>

namespace pellar {
namespace {

// What one edge reserves: how deep, and from where to where along the edge.
struct Reserve {
  double depth = 0;
  double first = 0;
  double last = 0;
};

struct Reserves {
  Reserve left;
  Reserve right;
  Reserve top;
  Reserve bottom;
};

std::optional<Reserves> reservesOf(const X11Window& window, const RootRect& root) {
  if (const auto& parts = window.strutPartial) {
    const auto at = [&parts](std::size_t index) { return static_cast<double>((*parts)[index]); };
    return Reserves{{at(0), at(4), at(5) + 1},
                    {at(1), at(6), at(7) + 1},
                    {at(2), at(8), at(9) + 1},
                    {at(3), at(10), at(11) + 1}};
  }
  if (const auto& edges = window.strut) {
    const auto at = [&edges](std::size_t index) { return static_cast<double>((*edges)[index]); };
    return Reserves{
        {at(0), 0, root.height}, {at(1), 0, root.height}, {at(2), 0, root.width}, {at(3), 0, root.width}};
  }
  return std::nullopt;
}

// Takes `band` away from one side of `area`, unless nothing of the monitor would be left: a panel between two
// monitors reserves the room of the whole monitor behind it.
void take(RootRect& area, const RootRect& monitor, const std::optional<RootRect>& band, bool vertical) {
  if (!band) return;
  if (vertical) {
    if (band->height >= monitor.height) return;
    const double top = band->y <= monitor.y ? std::max(area.y, band->maxY()) : area.y;
    const double bottom = band->y <= monitor.y ? area.maxY() : std::min(area.maxY(), band->y);
    area.y = top;
    area.height = std::max(0.0, bottom - top);
  } else {
    if (band->width >= monitor.width) return;
    const double left = band->x <= monitor.x ? std::max(area.x, band->maxX()) : area.x;
    const double right = band->x <= monitor.x ? area.maxX() : std::min(area.maxX(), band->x);
    area.x = left;
    area.width = std::max(0.0, right - left);
  }
}

}  // namespace

void takeReservedRoom(RootRect& area, const X11Window& window, const RootRect& monitor,
                      const RootRect& root) {
  const auto reserves = reservesOf(window, root);
  if (!reserves) return;
  const auto& [left, right, top, bottom] = *reserves;
  const auto band = [&monitor](double x, double y, double width, double height) {
    return monitor.intersection({x, y, width, height});
  };
  take(area, monitor, band(0, left.first, left.depth, left.last - left.first), false);
  take(area, monitor, band(root.width - right.depth, right.first, right.depth, right.last - right.first),
       false);
  take(area, monitor, band(top.first, 0, top.last - top.first, top.depth), true);
  take(area, monitor,
       band(bottom.first, root.height - bottom.depth, bottom.last - bottom.first, bottom.depth), true);
}

}  // namespace pellar
