#pragma once

#include <span>

#include "core/Geometry.h"
#include "platform/ScreenList.h"

namespace pellar {

// Converts between Accessibility coordinates (y down) and screen coordinates (y up). The only place that
// does.
class CoordinateFlip {
 public:
  // The height of the first screen decides; 0 without screens.
  explicit CoordinateFlip(std::span<const Screen> screens)
      : height_(screens.empty() ? 0 : screens.front().frame.height) {}

  [[nodiscard]] double axY(double screenY) const { return height_ - screenY; }
  [[nodiscard]] double screenY(double axY) const { return height_ - axY; }
  [[nodiscard]] AxRect toAx(const ScreenRect& rect) const {
    return {rect.minX(), axY(rect.maxY()), rect.width, rect.height};
  }

 private:
  double height_;
};

}  // namespace pellar
