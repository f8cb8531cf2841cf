#include "platform/linux/panel/X11PanelMouse.h"

#include <cstdlib>
#include <utility>

#include "platform/linux/drawing/PixelRect.h"

namespace pellar {
namespace {

constexpr std::uint32_t doubleClickMilliseconds = 400;
constexpr int doubleClickPixels = 5;

// Press, release, motion, enter and leave carry these under the same names.
template <class Event>
MouseEvent mouseEvent(const Event& event, double firstScreenHeight) {
  return {{static_cast<double>(event.event_x), static_cast<double>(event.event_y)},
          toScreenPoint(event.root_x, event.root_y, firstScreenHeight),
          (event.state & XCB_MOD_MASK_CONTROL) != 0,
          1};
}

}  // namespace

void X11PanelMouse::press(const xcb_button_press_event_t& event, View* view, double firstScreenHeight) {
  MouseEvent mouse = mouseEvent(event, firstScreenHeight);
  last_ = mouse;
  if (event.detail == XCB_BUTTON_INDEX_1) {
    const bool again = lastPress_ && event.time - lastPress_->time <= doubleClickMilliseconds &&
                       std::abs(event.event_x - lastPress_->x) <= doubleClickPixels &&
                       std::abs(event.event_y - lastPress_->y) <= doubleClickPixels;
    mouse.clickCount = again ? lastPress_->count + 1 : 1;
    lastPress_ = Press{event.time, event.event_x, event.event_y, mouse.clickCount};
    leftDown_ = true;
    if (view != nullptr) view->mouseDown(mouse);
  } else if (event.detail == XCB_BUTTON_INDEX_2) {
    if (view != nullptr) view->otherMouseDown(mouse);
  } else if (event.detail == XCB_BUTTON_INDEX_3) {
    if (view != nullptr) view->rightMouseDown(mouse);
  }
}

void X11PanelMouse::release(const xcb_button_release_event_t& event, View* view, double firstScreenHeight) {
  last_ = mouseEvent(event, firstScreenHeight);
  if (event.detail != XCB_BUTTON_INDEX_1 || !std::exchange(leftDown_, false)) return;
  if (view != nullptr) view->mouseUp(last_);
}

void X11PanelMouse::motion(const xcb_motion_notify_event_t& event, View* view, double firstScreenHeight) {
  moveTo(mouseEvent(event, firstScreenHeight), (event.state & XCB_BUTTON_MASK_1) != 0, view);
}

void X11PanelMouse::cross(const xcb_enter_notify_event_t& event, View* view, double firstScreenHeight) {
  moveTo(mouseEvent(event, firstScreenHeight), (event.state & XCB_BUTTON_MASK_1) != 0, view);
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
