#include "platform/sim/user/SimPointer.h"

#include <utility>

#include "platform/sim/panel/SimListView.h"
#include "platform/sim/panel/SimSearchField.h"

namespace pellar {
namespace {

constexpr double titleBarHeight = 28;

}  // namespace

void SimPointer::moveTo(ScreenPoint point, const std::function<void()>& look) {
  location_ = point;
  loop_.post([this, look] {
    leftHeld_ ? dragged() : hover();
    if (!look) return;
    looking_ = true;
    look();
    looking_ = false;
  });
  loop_.runUntilIdle();
}

void SimPointer::hover() {
  SimPanel* const panel = panels_.at(location_);
  SimPanel* const before = std::exchange(hovered_, panel);
  if (before != panel && panels_.contains(before)) before->pointer().noteOutside();
  if (!panels_.contains(panel) || !panel->pointer().noteInside() || !panel->isVisible()) return;
  if (panel->simHost().view() != nullptr) panel->simHost().view()->mouseMoved(eventIn(*panel, 1, false));
}

void SimPointer::dragged() {
  if (dragged_) {
    const AxPoint pointer = screens_.toAccessibility(location_);
    AxRect frame = dragged_->frame;
    frame.x = pointer.x - grip_.x;
    frame.y = pointer.y - grip_.y;
    desktop_.setFrame(*dragged_, AxRect::of(screens_.clamped(frame), frame.size()));
    return;
  }
  if (!panels_.contains(pressed_) || pressed_->simHost().view() == nullptr) return;
  if (pressedList_ != nullptr) {
    if (pressed_->simHost().contains(pressedList_))
      pressedList_->drag(pressed_->simHost().fromScreen(location_));
    return;
  }
  pressed_->simHost().view()->mouseDragged(eventIn(*pressed_, clickCount_, false));
}

void SimPointer::press(ScreenPoint point, int clickCount, Control control) {
  // A button that is down goes up before it can be pressed again.
  if (leftHeld_) release();
  moveTo(point);
  leftHeld_ = true;
  monitors_.buttonHeld();
  clickCount_ = clickCount;
  loop_.post(
      [this, clickCount, control] { deliverPress(Button::left, clickCount, control == Control::held); });
  loop_.runUntilIdle();
}

void SimPointer::release() {
  leftHeld_ = false;
  dragged_.reset();
  loop_.post([this] { releasePanel(); });
  loop_.post([this] { monitors_.buttonsReleased(); });
  loop_.runUntilIdle();
}

void SimPointer::releasePanel() {
  SimPanel* const panel = std::exchange(pressed_, nullptr);
  SimListView* const list = std::exchange(pressedList_, nullptr);
  if (!panels_.contains(panel) || panel->simHost().view() == nullptr) return;
  if (list != nullptr) {
    if (panel->simHost().contains(list)) list->release();
    return;
  }
  panel->simHost().view()->mouseUp(eventIn(*panel, clickCount_, false));
}

void SimPointer::deliverPress(Button button, int clickCount, bool control) {
  SimPanel* const panel = panels_.at(location_);
  if (panel != nullptr) {
    if (panels_.inModalSession()) return;
    if (button != Button::middle) monitors_.pressedHere({panel, location_});
    // A monitor may have put the panel away.
    if (panels_.contains(panel) && panel->isVisible()) {
      pressInPanel(*panel, button, eventIn(*panel, clickCount, control));
    }
    return;
  }
  if (button != Button::middle) monitors_.pressedElsewhere();
  panels_.keys().loseKey();
  if (const auto window = desktop_.windowAt(screens_.toAccessibility(location_))) {
    desktop_.focus(window);
    desktop_.activate(window->pid);
    const AxPoint pointer = screens_.toAccessibility(location_);
    if (button != Button::left || !leftHeld_ || pointer.y >= window->frame.y + titleBarHeight) return;
    dragged_ = window;
    grip_ = {pointer.x - window->frame.x, pointer.y - window->frame.y};
  }
}

void SimPointer::pressInPanel(SimPanel& panel, Button button, const MouseEvent& event) {
  SimSearchField* const field = panel.simHost().fieldAt(event.location);
  if (field != nullptr) {
    if (button != Button::left || !panel.style().canBecomeKey) return;
    panels_.keys().makeKey(panel);
    if (keyPanelMakesPellarFrontmost) desktop_.activatePellar();
    field->click();
    return;
  }
  View* const view = panel.simHost().view();
  if (view == nullptr) return;
  if (SimListView* const list = panel.simHost().listAt(event.location)) {
    if (button != Button::left) return;
    pressed_ = &panel;
    pressedList_ = list;
    list->press(event.location, event.clickCount);
    return;
  }
  switch (button) {
    case Button::left:
      pressed_ = &panel;
      view->mouseDown(event);
      break;
    case Button::right:
      view->rightMouseDown(event);
      break;
    case Button::middle:
      view->otherMouseDown(event);
      break;
  }
}

MouseEvent SimPointer::eventIn(const SimPanel& panel, int clickCount, bool control) const {
  return {panel.simHost().fromScreen(location_), location_, control, clickCount};
}

void SimPointer::click(ScreenPoint point) {
  press(point);
  release();
}

void SimPointer::doubleClick(ScreenPoint point) {
  click(point);
  press(point, 2);
  release();
}

void SimPointer::controlClick(ScreenPoint point) {
  press(point, 1, Control::held);
  release();
}

void SimPointer::rightClick(ScreenPoint point) {
  moveTo(point);
  loop_.post([this] { deliverPress(Button::right, 1, false); });
  loop_.runUntilIdle();
}

void SimPointer::middleClick(ScreenPoint point) {
  moveTo(point);
  loop_.post([this] { deliverPress(Button::middle, 1, false); });
  loop_.runUntilIdle();
}

void SimPointer::drag(ScreenPoint from, ScreenPoint to) {
  press(from);
  dragOn(from, to);
}

void SimPointer::dragOn(ScreenPoint from, ScreenPoint to) {
  constexpr int steps = 4;
  for (int step = 1; step <= steps; ++step) {
    const double part = static_cast<double>(step) / steps;
    moveTo({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part});
  }
  release();
}

void SimPointer::scroll(ScreenPoint point, int notches) {
  moveTo(point);
  loop_.post([this, notches] {
    SimPanel* const panel = panels_.at(location_);
    if (panel == nullptr) return;
    if (auto* const list = panel->simHost().listAt(panel->simHost().fromScreen(location_)))
      list->scroll(notches);
  });
  loop_.runUntilIdle();
}

}  // namespace pellar
