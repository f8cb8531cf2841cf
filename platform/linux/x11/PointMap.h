#pragma once

#include <vector>

#include "core/Geometry.h"

namespace pellar {

// The X screen in pixels: origin at the top left of the root window, y downward.
struct RootSpace {};
using RootPoint = Point<RootSpace>;
using RootRect = Rect<RootSpace>;

// How the points on and around one monitor and its pixels map onto each other. Nothing is rounded.
class MonitorMap {
 public:
  // Pixel for point.
  MonitorMap() = default;
  // `origin` is where the points of the monitor begin, `scale` how many pixels a point has.
  MonitorMap(const RootRect& pixels, AxPoint origin, double scale);

  [[nodiscard]] double scale() const { return scale_; }
  [[nodiscard]] const RootRect& pixels() const { return pixels_; }
  [[nodiscard]] const AxRect& points() const { return points_; }

  [[nodiscard]] AxPoint toPoints(RootPoint pixel) const;
  [[nodiscard]] AxRect toPoints(const RootRect& pixels) const;
  [[nodiscard]] RootPoint toPixels(AxPoint point) const;
  [[nodiscard]] RootRect toPixels(const AxRect& points) const;

 private:
  RootRect pixels_;
  AxRect points_;
  double scale_ = 1;
};

// The pixels of all monitors as one space of points. Monitors keep their order in it and do not overlap;
// where scales differ there may be room between them that is on no monitor. A rectangle belongs to the
// monitor that holds most of it, and all of it is mapped as that monitor is.
class PointMap {
 public:
  struct Monitor {
    RootRect pixels;
    double scale = 1;
  };

  // Without monitors pixel for point.
  explicit PointMap(const std::vector<Monitor>& monitors = {});

  // In the order given; at least one.
  [[nodiscard]] const std::vector<MonitorMap>& monitors() const { return monitors_; }
  // Whether all monitors have one scale; then it does not matter which of them maps.
  [[nodiscard]] bool isUniform() const { return isUniform_; }

  // The monitor that holds most of something, else the nearest; the earlier of two that are alike.
  [[nodiscard]] const MonitorMap& holding(const RootRect& pixels) const;
  [[nodiscard]] const MonitorMap& holding(RootPoint pixel) const;
  // A rectangle that came from pixels belongs to the monitor that it came from.
  [[nodiscard]] const MonitorMap& holding(const AxRect& points) const;

  // Whether another monitor is above the one that holds most of something.
  [[nodiscard]] bool hasMonitorAbove(const RootRect& pixels) const;

  [[nodiscard]] AxPoint toPoints(RootPoint pixel) const { return holding(pixel).toPoints(pixel); }
  [[nodiscard]] AxRect toPoints(const RootRect& pixels) const { return holding(pixels).toPoints(pixels); }
  [[nodiscard]] RootRect toPixels(const AxRect& points) const { return holding(points).toPixels(points); }
  // Where the corner of a window of so many pixels goes. Between two scales some points are no window's: as
  // it goes over to the other monitor, its corner becomes another point at once. There it stays at that
  // place, so that a window that is moved one way never goes back.
  [[nodiscard]] RootPoint toPixels(AxPoint corner, Size pixels) const;

 private:
  std::vector<MonitorMap> monitors_;
  bool isUniform_ = true;
};

}  // namespace pellar
