#pragma once

#include <xcb/xcb.h>

#include "platform/linux/x11/XcbReply.h"

namespace pellar {

// Returns when the server has carried out all that was asked over this connection. What it had to tell of
// that has arrived by then.
inline void syncWithServer(xcb_connection_t* connection) {
  const auto reply = owned(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace pellar
