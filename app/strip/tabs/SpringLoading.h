#pragma once

#include <functional>
#include <optional>

#include "platform/Accessibility.h"
#include "platform/MainLoop.h"
#include "platform/Subscription.h"

namespace pellar {

// Opens what the user holds a dragged file over for a moment, so that it can be dropped in a window whose tab
// it was held over. Main thread only.
class SpringLoading {
 public:
  explicit SpringLoading(MainLoop& loop) : loop_(loop) {}

  // Called from the main loop, once for each time that the drag comes to a tab and stays.
  std::function<void(WindowId)> onOpen;

  // The drag is over a tab, or over none; may be told again and again.
  void draggedOver(std::optional<WindowId> tab);

 private:
  MainLoop& loop_;
  std::optional<WindowId> tab_;
  Subscription timer_;
};

}  // namespace pellar
