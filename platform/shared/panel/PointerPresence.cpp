#include "platform/shared/panel/PointerPresence.h"

#include <utility>

namespace pellar {

bool PointerPresence::noteInside() {
  if (!tellPanelLeft()) return false;
  View* const view = view_();
  if (std::exchange(inside_, true) || view == nullptr) return true;
  const std::weak_ptr alive(alive_);
  view->mouseEntered();
  return !alive.expired();
}

bool PointerPresence::noteOutside() {
  panelLeft_ = false;
  View* const view = view_();
  if (!std::exchange(inside_, false) || view == nullptr) return true;
  const std::weak_ptr alive(alive_);
  view->mouseExited();
  return !alive.expired();
}

void PointerPresence::panelLeft() {
  if (!inside_ || std::exchange(panelLeft_, true)) return;
  loop_.post([this, alive = std::weak_ptr(alive_)] {
    if (!alive.expired()) tellPanelLeft();
  });
}

bool PointerPresence::tellPanelLeft() {
  return !panelLeft_ || noteOutside();
}

}  // namespace pellar
