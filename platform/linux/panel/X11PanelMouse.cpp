#include "platform/linux/panel/X11PanelMouse.h"

#include <cmath>
#include <utility>

namespace pellar {
namespace {

constexpr std::uint32_t doubleClickMilliseconds = 400;
constexpr double doubleClickDistance = 5;  // points, in each direction

// Press, release, motion, enter and leave carry these under the same names.
template <class Event>
MouseEvent mouseEvent(const Event& event, const PointerSpace& space) {
  return {{event.event_x / space.scale, event.event_y / space.scale},
          space.onScreen(event.root_x, event.root_y),
          (event.state & XCB_MOD_MASK_CONTROL) != 0,
          1};
}

}  // namespace

void X11PanelMouse::press(const xcb_button_press_event_t& event, View* view, const PointerSpace& space) {
  MouseEvent mouse = mouseEvent(event, space);
  last_ = mouse;
  if (event.detail == XCB_BUTTON_INDEX_1) {
    const bool again = lastPress_ && event.time - lastPress_->time <= doubleClickMilliseconds &&
                       std::abs(mouse.location.x - lastPress_->place.x) <= doubleClickDistance &&
                       std::abs(mouse.location.y - lastPress_->place.y) <= doubleClickDistance;
    mouse.clickCount = again ? lastPress_->count + 1 : 1;
    lastPress_ = Press{event.time, mouse.location, mouse.clickCount};
    leftDown_ = true;
    if (view != nullptr) view->mouseDown(mouse);
  } else if (event.detail == XCB_BUTTON_INDEX_2) {
    if (view != nullptr) view->otherMouseDown(mouse);
  } else if (event.detail == XCB_BUTTON_INDEX_3) {
    if (view != nullptr) view->rightMouseDown(mouse);
  }
}

void X11PanelMouse::release(const xcb_button_release_event_t& event, View* view, const PointerSpace& space) {
  last_ = mouseEvent(event, space);
  if (event.detail != XCB_BUTTON_INDEX_1 || !std::exchange(leftDown_, false)) return;
  if (view != nullptr) view->mouseUp(last_);
}

void X11PanelMouse::motion(const xcb_motion_notify_event_t& event, View* view, const PointerSpace& space) {
  moveTo(mouseEvent(event, space), (event.state & XCB_BUTTON_MASK_1) != 0, view);
}

void X11PanelMouse::cross(const xcb_enter_notify_event_t& event, View* view, const PointerSpace& space) {
  moveTo(mouseEvent(event, space), (event.state & XCB_BUTTON_MASK_1) != 0, view);
}

void X11PanelMouse::moveTo(const MouseEvent& event, bool leftIsDown, View* view) {
  last_ = event;
  // A menu that opened under the press took the release.
  const bool releaseWasLost = leftDown_ && !leftIsDown;
  if (releaseWasLost) leftDown_ = false;
  if (view == nullptr) return;
  if (releaseWasLost) {
    view->mouseUp(event);
  } else if (leftDown_) {
    view->mouseDragged(event);
  } else if (!leftIsDown) {
    view->mouseMoved(event);
  }
}

bool X11PanelMouse::leavesBy(const xcb_leave_notify_event_t& event) const {
  if (event.detail == XCB_NOTIFY_DETAIL_INFERIOR) return false;
  // The view keeps the pointer until the button is released; the server then reports the leaving once more.
  return !leftDown_ || (event.state & XCB_BUTTON_MASK_1) == 0;
}

void X11PanelMouse::abandon(View* view) {
  lastPress_.reset();
  if (std::exchange(leftDown_, false) && view != nullptr) view->mouseUp(last_);
}

}  // namespace pellar
