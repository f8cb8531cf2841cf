#include "app/strip/place/PanelPlace.h"

#include <algorithm>

namespace pellar::PanelPlace {

double left(double wanted, double width, const ScreenRect& visible) {
  return std::max(std::min(wanted, visible.maxX() - width - margin), visible.minX() + margin);
}

double top(double wanted, const ScreenRect& visible) {
  return std::min(wanted, visible.maxY() - margin);
}

ScreenRect hanging(ScreenPoint topLeft, Size size) {
  return {topLeft.x, topLeft.y - size.height, size.width, size.height};
}

}  // namespace pellar::PanelPlace
