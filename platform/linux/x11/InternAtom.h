#pragma once

#include <xcb/xcb.h>

#include <string_view>

#include "platform/linux/x11/XcbReply.h"

namespace pellar {

// The server's number for a name, made where it has none yet; XCB_ATOM_NONE when the server is lost. Waits
// for the answer: who needs many asks for all before the first answer (X11Connection).
inline xcb_atom_t internAtom(xcb_connection_t* connection, std::string_view name) {
  const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const auto reply = owned(xcb_intern_atom_reply(connection, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

}  // namespace pellar
