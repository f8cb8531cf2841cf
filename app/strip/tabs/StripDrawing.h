#pragma once

#include <optional>
#include <span>

#include "app/strip/tabs/StripLayout.h"
#include "app/strip/tabs/TabItem.h"
#include "platform/Canvas.h"

namespace pellar {

// A tab under the pointer's drag.
struct DraggedTab {
  std::size_t index = 0;
  double x = 0;  // the pointer's, view coordinates
};

// Everything a strip shows at one moment, as far as its geometry does not say it.
struct StripPicture {
  std::span<const TabItem> tabs;  // as many as the layout has
  std::optional<std::size_t> hovered;
  std::optional<DraggedTab> dragged;
  Color accent;
  bool autoSaveOn = false;
};

// Paints the parts of the strip that lie in `dirty`, and only those.
void drawStrip(const StripLayout& layout, const StripPicture& picture, Canvas& canvas, const ViewRect& dirty);

}  // namespace pellar
