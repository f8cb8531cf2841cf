#include "platform/linux/panel/X11StackPlace.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/x11/EventType.h"
#include "platform/linux/x11/XcbReply.h"

namespace pellar {

xcb_window_t X11StackPlace::frameNow() const {
  const X11Window* window = mirror_.find(client_);
  return window == nullptr || window->links.empty() ? static_cast<xcb_window_t>(XCB_WINDOW_NONE)
                                                    : window->links.back().id;
}

void X11StackPlace::take() {
  frame_ = frameNow();
  // A frame that has just gone refuses: the panel stays where it is until the next one is known.
  const bool above = frame_ != XCB_WINDOW_NONE;
  const std::array<std::uint32_t, 2> values{above ? frame_ : static_cast<std::uint32_t>(XCB_STACK_MODE_ABOVE),
                                            XCB_STACK_MODE_ABOVE};
  const std::uint16_t sibling = above ? XCB_CONFIG_WINDOW_SIBLING : 0;
  xcb_configure_window(connection_.xcb(), panel_, sibling | XCB_CONFIG_WINDOW_STACK_MODE, values.data());
}

bool X11StackPlace::keep() {
  const xcb_window_t frame = frameNow();
  if (isOnTop() || frame == XCB_WINDOW_NONE || frame == frame_) return false;
  take();
  return true;
}

void X11StackPlace::takeAgain() {
  if (!isOnTop() && frameNow() != XCB_WINDOW_NONE) take();
}

void X11StackPlace::raise() {
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(connection_.xcb(), panel_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

bool X11StackPlace::note(const xcb_configure_notify_event_t& event) {
  // A window manager's own report says nothing of the stack.
  if (isSynthetic(event) || isOnTop() || frame_ == XCB_WINDOW_NONE || event.window == panel_) return false;
  if (event.window != frame_) return event.above_sibling == frame_;
  // Above the panel, and so another window will be below it.
  constexpr xcb_window_t unknown = XCB_WINDOW_NONE;
  const xcb_window_t below = event.above_sibling == panel_ ? unknown : event.above_sibling;
  return std::exchange(belowFrame_, below) != below || below == unknown;
}

std::vector<xcb_window_t> X11StackPlace::coveredWindows() const {
  std::vector<xcb_window_t> covered;
  const xcb_window_t frame = frameNow();
  if (isOnTop() || frame == XCB_WINDOW_NONE) return covered;
  const XcbReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
      connection_.xcb(), xcb_query_tree(connection_.xcb(), connection_.root()), nullptr));
  if (!tree) return covered;
  const xcb_window_t* begin = xcb_query_tree_children(tree.get());
  const xcb_window_t* end = begin + xcb_query_tree_children_length(tree.get());
  const xcb_window_t* first = std::find(begin, end, frame);
  const xcb_window_t* last = std::find(first, end, panel_);
  if (last == end) return covered;
  for (const auto& [id, window] : mirror_.windows()) {
    if (window.links.empty() || mirror_.isMinimized(window) || window.links.back().id == frame) continue;
    if (std::find(first, last, window.links.back().id) != last) covered.push_back(id);
  }
  return covered;
}

}  // namespace pellar
