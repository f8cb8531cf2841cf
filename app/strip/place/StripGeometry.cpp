#include "app/strip/place/StripGeometry.h"

#include <algorithm>

#include "app/strip/place/CoordinateFlip.h"

namespace pellar::StripGeometry {
namespace {

constexpr double pushDownTolerance = 0.5;
constexpr double smallestPushedHeight = 200;
constexpr double zoomTolerance = 2;

const Screen* screenOf(const AxRect& window, std::span<const Screen> screens) {
  if (screens.empty()) return nullptr;
  const CoordinateFlip flip(screens);
  const auto found = std::ranges::find_if(
      screens, [&](const Screen& screen) { return flip.toAx(screen.frame).intersects(window); });
  return found == screens.end() ? &screens.front() : &*found;
}

}  // namespace

ScreenRect stripFrame(const AxRect& window, std::span<const Screen> screens) {
  return {window.x, CoordinateFlip(screens).screenY(window.y), window.width, stripHeight};
}

double workTop(const AxRect& window, std::span<const Screen> screens) {
  const Screen* screen = screenOf(window, screens);
  return screen ? CoordinateFlip(screens).axY(screen->visibleFrame.maxY()) : 0;
}

AxRect tileArea(const AxRect& window, std::span<const Screen> screens) {
  const Screen* screen = screenOf(window, screens);
  if (!screen) return {};
  AxRect area = CoordinateFlip(screens).toAx(screen->visibleFrame);
  area.y += stripHeight;
  area.height -= stripHeight;
  return area;
}

bool isBelow(const AxRect& window, double top) {
  return window.y >= top - pushDownTolerance;
}

std::optional<AxRect> pushedDown(const AxRect& window, std::span<const Screen> screens) {
  const double top = workTop(window, screens) + stripHeight;
  if (isBelow(window, top)) return std::nullopt;
  return AxRect{window.x, top, window.width,
                std::max(window.height - (top - window.y), smallestPushedHeight)};
}

bool fills(const AxRect& window, const AxRect& area) {
  return window.isNear(area, zoomTolerance);
}

}  // namespace pellar::StripGeometry
