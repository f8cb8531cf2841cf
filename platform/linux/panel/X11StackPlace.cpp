#include "platform/linux/panel/X11StackPlace.h"

#include <array>
#include <utility>

namespace pellar {

xcb_window_t X11StackPlace::frameNow() const {
  const X11Window* window = mirror_.find(client_);
  return window == nullptr || window->links.empty() ? static_cast<xcb_window_t>(XCB_WINDOW_NONE)
                                                    : window->links.back().id;
}

void X11StackPlace::take() {
  lost_ = false;
  const xcb_window_t frame = frameNow();
  if (std::exchange(frame_, frame) != frame) belowFrame_.reset();
  // A frame that has just gone refuses: the panel stays where it is until the next one is known.
  const bool above = frame != XCB_WINDOW_NONE;
  const std::array<std::uint32_t, 2> values{above ? frame : static_cast<std::uint32_t>(XCB_STACK_MODE_ABOVE),
                                            XCB_STACK_MODE_ABOVE};
  const std::uint16_t sibling = above ? XCB_CONFIG_WINDOW_SIBLING : 0;
  xcb_configure_window(connection_.xcb(), panel_, sibling | XCB_CONFIG_WINDOW_STACK_MODE, values.data());
}

bool X11StackPlace::keep() {
  const xcb_window_t frame = frameNow();
  if (isOnTop() || frame == XCB_WINDOW_NONE || (frame == frame_ && !lost_)) return false;
  take();
  return true;
}

bool X11StackPlace::note(const xcb_configure_notify_event_t& event) {
  // A window manager's own report says nothing of the stack.
  const bool synthetic = (event.response_type & 0x80U) != 0;
  if (synthetic || isOnTop() || frame_ == XCB_WINDOW_NONE || event.window == panel_) return false;
  if (event.window == frame_) {
    const auto before = std::exchange(belowFrame_, event.above_sibling);
    // Once the panel is above the frame again, another window is below it.
    if (event.above_sibling == panel_) belowFrame_.reset();
    // A window that is merely moved, perhaps a hundred times a second, stays above the same one.
    if (before != event.above_sibling) lost_ = true;
  } else if (event.above_sibling == frame_) {
    lost_ = true;
  } else if (event.window == belowFrame_) {
    // Should the frame follow it, the two would be neighbours again elsewhere.
    belowFrame_.reset();
  }
  return lost_;
}

}  // namespace pellar
