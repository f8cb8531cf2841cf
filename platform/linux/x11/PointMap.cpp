#include "platform/linux/x11/PointMap.h"

#include <algorithm>
#include <limits>

namespace pellar {
namespace {

// The square of the room between two rectangles.
template <class Space>
double distance(const Rect<Space>& a, const Rect<Space>& b) {
  const double across = std::max({0.0, a.minX() - b.maxX(), b.minX() - a.maxX()});
  const double down = std::max({0.0, a.minY() - b.maxY(), b.minY() - a.maxY()});
  return across * across + down * down;
}

// The monitor that holds most of a rectangle, else the nearest; `areaOf` says what of the desktop is a
// monitor's.
template <class Space, class AreaOf>
const MonitorMap& mostOf(const Rect<Space>& rect, const std::vector<MonitorMap>& monitors, AreaOf areaOf) {
  const MonitorMap* best = &monitors.front();
  double held = 0;
  double nearest = std::numeric_limits<double>::infinity();
  for (const MonitorMap& each : monitors) {
    const auto common = (each.*areaOf)().intersection(rect);
    const double area = common ? common->area() : 0;
    const double away = distance((each.*areaOf)(), rect);
    if (area > held || (held == 0 && away < nearest)) best = &each;
    held = std::max(held, area);
    nearest = std::min(nearest, away);
  }
  return *best;
}

}  // namespace

MonitorMap::MonitorMap(const RootRect& pixels, AxPoint origin, double scale)
    : pixels_(pixels),
      points_{origin.x, origin.y, pixels.width / scale, pixels.height / scale},
      scale_(scale) {}

AxPoint MonitorMap::toPoints(RootPoint pixel) const {
  return {points_.x + (pixel.x - pixels_.x) / scale_, points_.y + (pixel.y - pixels_.y) / scale_};
}

AxRect MonitorMap::toPoints(const RootRect& pixels) const {
  return AxRect::of(toPoints(pixels.origin()), {pixels.width / scale_, pixels.height / scale_});
}

RootPoint MonitorMap::toPixels(AxPoint point) const {
  return {pixels_.x + (point.x - points_.x) * scale_, pixels_.y + (point.y - points_.y) * scale_};
}

RootRect MonitorMap::toPixels(const AxRect& points) const {
  return RootRect::of(toPixels(points.origin()), {points.width * scale_, points.height * scale_});
}

PointMap::PointMap(const std::vector<Monitor>& monitors) {
  double smallest = std::numeric_limits<double>::infinity();
  double largest = 0;
  for (const Monitor& each : monitors) {
    smallest = std::min(smallest, each.scale);
    largest = std::max(largest, each.scale);
  }
  // The smallest scale for the distances: by a larger one a monitor would reach into the next.
  for (const auto& [pixels, scale] : monitors)
    monitors_.emplace_back(pixels, AxPoint{pixels.x / smallest, pixels.y / smallest}, scale);
  isUniform_ = monitors_.empty() || smallest == largest;
  if (monitors_.empty()) monitors_.emplace_back();
}

const MonitorMap& PointMap::holding(const RootRect& pixels) const {
  return monitors_.size() == 1 ? monitors_.front() : mostOf(pixels, monitors_, &MonitorMap::pixels);
}

const MonitorMap& PointMap::holding(RootPoint pixel) const {
  return holding(RootRect{pixel.x, pixel.y, 1, 1});
}

const MonitorMap& PointMap::holding(const AxRect& points) const {
  if (monitors_.size() == 1) return monitors_.front();
  const MonitorMap& most = mostOf(points, monitors_, &MonitorMap::points);
  if (isUniform_ || &holding(most.toPixels(points)) == &most) return most;
  // Beside the monitor that it came from it reached over another, whose points are elsewhere.
  for (const MonitorMap& each : monitors_)
    if (&holding(each.toPixels(points)) == &each) return each;
  return most;
}

RootPoint PointMap::toPixels(AxPoint corner, Size pixels) const {
  const auto at = [pixels](RootPoint origin) { return RootRect::of(origin, pixels); };
  for (const MonitorMap& each : monitors_) {
    const RootPoint origin = each.toPixels(corner);
    if (&holding(at(origin)) == &each) return origin;
  }
  // By the map of the nearest monitor it would be on another: it stops where it is about to leave that one.
  const MonitorMap& here = mostOf(AxRect::of(corner, {1, 1}), monitors_, &MonitorMap::points);
  RootPoint there = here.toPixels(corner);
  const RootRect& area = here.pixels();
  RootPoint held{std::max(area.x, std::min(there.x, area.maxX() - pixels.width)),
                 std::max(area.y, std::min(there.y, area.maxY() - pixels.height))};
  if (&holding(at(held)) != &here) return there;
  constexpr int halvings = 20;  // of less than a million pixels
  for (int i = 0; i < halvings; ++i) {
    const RootPoint middle{(held.x + there.x) / 2, (held.y + there.y) / 2};
    (&holding(at(middle)) == &here ? held : there) = middle;
  }
  return held;
}

bool PointMap::hasMonitorAbove(const RootRect& pixels) const {
  const RootRect& own = holding(pixels).pixels();
  return std::ranges::any_of(monitors_, [&](const MonitorMap& each) {
    const RootRect& other = each.pixels();
    return other.y < own.y && other.x < own.maxX() && own.x < other.maxX();
  });
}

}  // namespace pellar
