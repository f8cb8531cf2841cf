#include "platform/linux/panel/X11DropTarget.h"

#include <utility>

#include "platform/linux/x11/X11Connection.h"

namespace pellar {
namespace {

constexpr std::uint32_t xdndVersion = 5;
// Of a status: not accepted, and the next movement is to be told as well.
constexpr std::uint32_t tellOn = 2;

}  // namespace

X11DropTarget::X11DropTarget(X11Connection& connection, xcb_window_t window)
    : connection_(connection), window_(window) {
  xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window, connection.atoms().xdndAware,
                      XCB_ATOM_ATOM, 32, 1, &xdndVersion);
}

void X11DropTarget::handle(const xcb_client_message_event_t& message, View* view, const PixelRect& frame,
                           double scale) {
  const X11Atoms& atoms = connection_.atoms();
  const xcb_window_t source = message.data.data32[0];
  if (message.type == atoms.xdndPosition) {
    answer(source, atoms.xdndStatus, tellOn);
    const std::uint32_t place = message.data.data32[2];
    const int x = static_cast<int>(place >> 16);
    const int y = static_cast<int>(place & 0xffff);
    inside_ = true;
    if (view != nullptr) view->draggingUpdated({(x - frame.x) / scale, (y - frame.y) / scale});
  } else if (message.type == atoms.xdndLeave) {
    leave(view);
  } else if (message.type == atoms.xdndDrop) {
    answer(source, atoms.xdndFinished, 0);
    leave(view);
  }
}

void X11DropTarget::leave(View* view) {
  if (std::exchange(inside_, false) && view != nullptr) view->draggingExited();
}

void X11DropTarget::answer(xcb_window_t source, xcb_atom_t type, std::uint32_t flags) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = source;
  message.type = type;
  message.data.data32[0] = window_;
  message.data.data32[1] = flags;
  xcb_send_event(connection_.xcb(), 0, source, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&message));
  connection_.flush();
}

}  // namespace pellar
