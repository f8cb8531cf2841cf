#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <set>

namespace pellar {

// The keys that have a symbol on any of their levels, by the server's keyboard map now. One round trip.
std::set<xcb_keycode_t> keyCodesOf(xcb_connection_t* connection, std::uint32_t keysym);

}  // namespace pellar
