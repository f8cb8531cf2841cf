#include "app/tracking/AX.h"

namespace pellar::AX {

std::optional<AxRect> frame(Accessibility& accessibility, const Element& element) {
  const auto position = value<AxPoint>(accessibility, element, "AXPosition");
  if (!position) return std::nullopt;
  const auto size = value<Size>(accessibility, element, "AXSize");
  if (!size) return std::nullopt;
  // Another program may tell what it likes. A place that is no number compares with nothing, so that every
  // attempt to correct it would write it back, and panels cannot be put there.
  const AxRect frame = AxRect::of(*position, *size);
  return frame.isFinite() ? std::optional(frame) : std::nullopt;
}

void writeFrame(Accessibility& accessibility, const Element& window, const AxRect& frame) {
  accessibility.set(window, "AXPosition", frame.origin());
  accessibility.set(window, "AXSize", frame.size());
  // The change of size may have pushed the window, for instance away from a screen edge.
  accessibility.set(window, "AXPosition", frame.origin());
}

bool pressCloseButton(Accessibility& accessibility, const Element& window) {
  const auto button = value<Element>(accessibility, window, "AXCloseButton");
  if (!button) return false;
  accessibility.perform(*button, "AXPress");
  return true;
}

}  // namespace pellar::AX
