#pragma once

#include <functional>

#include "platform/Panel.h"
#include "platform/Subscription.h"

namespace pellar {

// A left or right mouse press, seen before it is delivered.
struct ObservedClick {
  const Panel* panel = nullptr;  // the panel of ours it landed in; null for another window of ours
  ScreenPoint location;
};

// Watches the mouse's buttons without taking their presses. Costs nothing without a subscription. Main thread
// only.
class EventMonitors {
 public:
  virtual ~EventMonitors() = default;
  // Presses in other applications.
  [[nodiscard]] virtual Subscription onGlobalMouseDown(std::function<void()> callback) = 0;
  // Presses in this program's own windows; the press is delivered afterwards as usual.
  [[nodiscard]] virtual Subscription onLocalMouseDown(std::function<void(const ObservedClick&)> callback) = 0;
  // Calls back once when no button is held any more, wherever it was pressed. Not active when none is held,
  // nor where the system does not tell.
  [[nodiscard]] virtual Subscription onceButtonsAreUp(std::function<void()> callback) = 0;
};

}  // namespace pellar
