#include "platform/linux/panel/X11PointerHold.h"

#include <array>
#include <cstdint>
#include <utility>

#include "platform/linux/x11/EventType.h"
#include "platform/linux/x11/X11Connection.h"

namespace pellar {

X11PointerHold::X11PointerHold(X11Connection& connection, const X11Mirror& mirror)
    : connection_(connection),
      mirror_(mirror),
      events_(connection.onEvent([this](const xcb_generic_event_t& event) { handle(event); })) {}

X11PointerHold::~X11PointerHold() {
  release();
}

void X11PointerHold::panelMoves(xcb_window_t panel, const PixelRect& place) {
  const auto pointer = connection_.pointer();
  if (!pointer || pointer->child != panel) return;
  const RootPoint at{static_cast<double>(pointer->root_x), static_cast<double>(pointer->root_y)};
  const X11Window* active = mirror_.find(mirror_.activeWindow());
  if (rootRect(place).contains(at) || (active != nullptr && active->frame().contains(at))) return;
  release();
  place_ = at;
  window_ = xcb_generate_id(connection_.xcb());
  const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_LEAVE_WINDOW | XCB_EVENT_MASK_BUTTON_PRESS};
  xcb_create_window(connection_.xcb(), 0, window_, connection_.root(), pointer->root_x, pointer->root_y, 1, 1,
                    0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                    XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
  xcb_map_window(connection_.xcb(), window_);
  // It may have moved meanwhile, and would not be missed here then.
  const auto now = connection_.pointer();
  if (!now || now->child != window_) release();
}

void X11PointerHold::panelStands(const PixelRect& place) {
  if (window_ != XCB_WINDOW_NONE && rootRect(place).contains(place_)) release();
}

void X11PointerHold::handle(const xcb_generic_event_t& event) {
  if (window_ == XCB_WINDOW_NONE) return;
  const auto type = eventType(event);
  const bool left =
      type == XCB_LEAVE_NOTIFY && reinterpret_cast<const xcb_leave_notify_event_t&>(event).event == window_;
  const bool pressed =
      type == XCB_BUTTON_PRESS && reinterpret_cast<const xcb_button_press_event_t&>(event).event == window_;
  if (left || pressed) release();
}

void X11PointerHold::release() {
  if (window_ == XCB_WINDOW_NONE) return;
  xcb_destroy_window(connection_.xcb(), std::exchange(window_, XCB_WINDOW_NONE));
  xcb_flush(connection_.xcb());
}

}  // namespace pellar
