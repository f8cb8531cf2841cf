#include "platform/shared/panel/PointerPresence.h"

#include <utility>

namespace pellar {

bool PointerPresence::noteInside() {
  if (!tellPanelLeft()) return false;
  View* const view = view_();
  if (std::exchange(inside_, true) || view == nullptr) return true;
  const auto alive = alive_.watch();
  view->mouseEntered();
  return static_cast<bool>(alive);
}

bool PointerPresence::noteOutside() {
  panelLeft_ = false;
  View* const view = view_();
  if (!std::exchange(inside_, false) || view == nullptr) return true;
  const auto alive = alive_.watch();
  view->mouseExited();
  return static_cast<bool>(alive);
}

void PointerPresence::panelLeft() {
  if (!inside_ || std::exchange(panelLeft_, true)) return;
  loop_.post([this, alive = alive_.watch()] {
    if (alive) tellPanelLeft();
  });
}

bool PointerPresence::tellPanelLeft() {
  return !panelLeft_ || noteOutside();
}

}  // namespace pellar
