#include "platform/linux/system/X11ScreenList.h"

#include <algorithm>

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

std::vector<Screen> X11ScreenList::screens() const {
  update();
  return screens_;
}

void X11ScreenList::update() const {
  if (readVersion_ == mirror_.screensVersion()) return;
  readVersion_ = mirror_.screensVersion();
  monitors_.clear();
  screens_.clear();
  const auto& all = density_.map().monitors();
  const double height = all.front().points().height;
  const auto flipped = [height](const AxRect& rect) {
    return ScreenRect{rect.x, height - rect.maxY(), rect.width, rect.height};
  };
  for (const MonitorMap& each : all) {
    if (each.pixels().area() <= 0) continue;
    monitors_.push_back({each.pixels(), visible(each.pixels()), each.scale()});
    screens_.push_back({flipped(each.points()), flipped(each.toPoints(monitors_.back().visible))});
  }
}

std::optional<Screen> X11ScreenList::mainScreen() const {
  const auto all = screens();
  if (all.empty()) return std::nullopt;
  const Screen* best = &all.front();
  const X11Window* active = mirror_.find(mirror_.activeWindow());
  if (active == nullptr) return *best;
  const AxRect window = density_.map().toPoints(active->frame());
  const ScreenRect frame{window.x, best->frame.height - window.maxY(), window.width, window.height};
  double bestArea = 0;
  for (const Screen& screen : all) {
    const auto common = screen.frame.intersection(frame);
    if (!common || common->area() <= bestArea) continue;
    best = &screen;
    bestArea = common->area();
  }
  return *best;
}

RootRect X11ScreenList::visible(const RootRect& monitor) const {
  const RootRect root = density_.root();
  RootRect area = monitor;
  for (const auto& [id, window] : mirror_.windows()) {
    const auto reserves = reservesOf(window, root);
    if (!reserves || connection_.owns(id)) continue;
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
  // One rectangle for all monitors says more than the windows do only when there is one monitor.
  if (monitor == root && mirror_.workArea()) {
    RootRect workArea = *mirror_.workArea();
    if (workArea.y > area.y && ownReserves_.contains(workArea.y)) {
      workArea.height += workArea.y - area.y;
      workArea.y = area.y;
    }
    if (const auto common = area.intersection(workArea)) area = *common;
  }
  return area;
}

}  // namespace pellar
