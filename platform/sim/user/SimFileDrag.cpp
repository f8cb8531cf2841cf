#include "platform/sim/user/SimFileDrag.h"

#include <utility>

namespace pellar {

void SimFileDrag::moveTo(ScreenPoint point) {
  loop_.post([this, point] {
    SimPanel* const panel = panels_.at(point);
    if (panel != over_) leave();
    over_ = panel;
    if (panel != nullptr && panel->simHost().view() != nullptr)
      panel->simHost().view()->draggingUpdated(panel->simHost().fromScreen(point));
  });
  loop_.runUntilIdle();
}

void SimFileDrag::end() {
  loop_.post([this] { leave(); });
  loop_.runUntilIdle();
}

void SimFileDrag::leave() {
  SimPanel* const panel = std::exchange(over_, nullptr);
  if (panels_.contains(panel) && panel->simHost().view() != nullptr)
    panel->simHost().view()->draggingExited();
}

}  // namespace pellar
