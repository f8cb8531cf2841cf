#pragma once

#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "core/Geometry.h"
#include "platform/Subscription.h"

namespace pellar {

// One display.
struct Screen {
  ScreenRect frame;         // the whole display
  ScreenRect visibleFrame;  // without menu bar, dock and panels
  friend bool operator==(const Screen&, const Screen&) = default;
};

// The display that holds most of a rectangle, the earlier of two that hold as much; null when none holds any
// of it.
[[nodiscard]] inline const Screen* screenHoldingMost(const ScreenRect& rect,
                                                     std::span<const Screen> screens) {
  const Screen* most = nullptr;
  double largest = 0;
  for (const Screen& screen : screens) {
    const auto common = screen.frame.intersection(rect);
    if (!common || common->area() <= largest) continue;
    most = &screen;
    largest = common->area();
  }
  return most;
}

// The displays. The first is the one at whose top left Accessibility coordinates begin.
class ScreenList {
 public:
  virtual ~ScreenList() = default;
  // All displays, first one first; empty when there is none. Read anew on each call.
  [[nodiscard]] virtual std::vector<Screen> screens() const = 0;
  // The display of the window that has the keyboard, the first one while no window has it; absent when there
  // is no display.
  [[nodiscard]] virtual std::optional<Screen> mainScreen() const = 0;
  // A display came or went, or the place, the size or the visible part of one changed. Called from the main
  // loop; may be called when nothing did.
  [[nodiscard]] virtual Subscription onChanged(std::function<void()> callback) = 0;
};

}  // namespace pellar
