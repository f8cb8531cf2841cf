#include "platform/linux/x11/X11Selection.h"

#include <xcb/xfixes.h>

#include "platform/linux/x11/InternAtom.h"
#include "platform/linux/x11/XcbReply.h"

namespace pellar::X11Selection {
namespace {

int screenNumber(xcb_connection_t* connection, const xcb_screen_t& screen) {
  int number = 0;
  for (auto each = xcb_setup_roots_iterator(xcb_get_setup(connection)); each.rem > 0;
       xcb_screen_next(&each), ++number) {
    if (each.data->root == screen.root) return number;
  }
  return 0;
}

}  // namespace

xcb_atom_t ofScreen(xcb_connection_t* connection, const xcb_screen_t& screen, const std::string& prefix) {
  return internAtom(connection, prefix + std::to_string(screenNumber(connection, screen)));
}

xcb_window_t owner(xcb_connection_t* connection, xcb_atom_t selection) {
  const auto reply = owned(
      xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr));
  return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

std::uint8_t follow(xcb_connection_t* connection, xcb_window_t root, xcb_atom_t selection) {
  const auto* const xfixes = xcb_get_extension_data(connection, &xcb_xfixes_id);
  if (xfixes == nullptr || xfixes->present == 0) return 0;
  // A server answers nothing of the extension to a client that has not said which version it speaks.
  const auto version = owned(xcb_xfixes_query_version_reply(
      connection, xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
      nullptr));
  if (!version) return 0;
  xcb_xfixes_select_selection_input(connection, root, selection,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  return static_cast<std::uint8_t>(xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
}

}  // namespace pellar::X11Selection
