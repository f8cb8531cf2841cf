#pragma once

#include <algorithm>
#include <cmath>
#include <optional>

namespace pellar {

// Coordinate spaces. Values of two spaces do not mix; CoordinateFlip in app/strip/place converts between
// them.
struct AxSpace {};      // global, origin at the top left of the first screen, y downward (Accessibility)
struct ScreenSpace {};  // global, origin at the bottom left of the first screen, y upward (panels)
struct ViewSpace {};    // inside one view, origin at its top left, y downward
struct UnitSpace {};    // fractions of an area, origin at its top left, y downward

// A position in points.
template <class Space>
struct Point {
  double x = 0;
  double y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

// An extent in points. Never mixes with a position.
struct Size {
  double width = 0;
  double height = 0;
  friend bool operator==(const Size&, const Size&) = default;
};

// A rectangle in points, half open: it contains its minimum edges and not its maximum ones.
template <class Space>
struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  friend bool operator==(const Rect&, const Rect&) = default;

  static Rect of(Point<Space> origin, Size size) { return {origin.x, origin.y, size.width, size.height}; }

  [[nodiscard]] double minX() const { return x; }
  [[nodiscard]] double minY() const { return y; }
  [[nodiscard]] double midX() const { return x + width / 2; }
  [[nodiscard]] double midY() const { return y + height / 2; }
  [[nodiscard]] double maxX() const { return x + width; }
  [[nodiscard]] double maxY() const { return y + height; }
  [[nodiscard]] Point<Space> origin() const { return {x, y}; }
  [[nodiscard]] Size size() const { return {width, height}; }
  [[nodiscard]] double area() const { return width * height; }

  [[nodiscard]] bool contains(Point<Space> point) const {
    return point.x >= x && point.x < maxX() && point.y >= y && point.y < maxY();
  }

  // The rectangle grown by `margin` on every side (shrunk when negative).
  [[nodiscard]] Rect grown(double margin) const {
    return {x - margin, y - margin, width + 2 * margin, height + 2 * margin};
  }

  // Whether every number is a finite one. A window may tell anything of itself.
  [[nodiscard]] bool isFinite() const {
    return std::isfinite(x) && std::isfinite(y) && std::isfinite(width) && std::isfinite(height);
  }

  // The common area; absent when the two share none: touching edges share none, and a rectangle with a number
  // that is not finite is nowhere.
  [[nodiscard]] std::optional<Rect> intersection(const Rect& other) const {
    if (!isFinite() || !other.isFinite()) return std::nullopt;
    const double left = std::max(x, other.x);
    const double top = std::max(y, other.y);
    const double right = std::min(maxX(), other.maxX());
    const double bottom = std::min(maxY(), other.maxY());
    if (!(right > left) || !(bottom > top)) return std::nullopt;
    return Rect{left, top, right - left, bottom - top};
  }
  [[nodiscard]] bool intersects(const Rect& other) const { return intersection(other).has_value(); }

  // Whether each of the four numbers differs by less than `tolerance`.
  [[nodiscard]] bool isNear(const Rect& other, double tolerance) const {
    const auto near = [tolerance](double a, double b) { return std::abs(a - b) < tolerance; };
    return near(x, other.x) && near(y, other.y) && near(width, other.width) && near(height, other.height);
  }
};

using AxPoint = Point<AxSpace>;
using AxRect = Rect<AxSpace>;
using ScreenPoint = Point<ScreenSpace>;
using ScreenRect = Rect<ScreenSpace>;
using ViewPoint = Point<ViewSpace>;
using ViewRect = Rect<ViewSpace>;
using UnitRect = Rect<UnitSpace>;

}  // namespace pellar
