#include "tests/e2e/SidePanel.h"

namespace pellar::e2e {

std::optional<Box> SidePanel::box() {
  for (const auto window : strip_.allWindows()) {
    const auto box = desktop_.observer().box(window);
    if (box && box->height == strip_.pixels(height_) && desktop_.observer().isViewable(window)) return box;
  }
  return std::nullopt;
}

Box SidePanel::waitUntilShown() {
  desktop_.observer().waitUntil("the panel is shown", [this] { return box().has_value(); });
  return box().value_or(Box{});
}

void SidePanel::waitUntilGone() {
  desktop_.observer().waitUntil("the panel is gone", [this] { return !box().has_value(); });
}

}  // namespace pellar::e2e
