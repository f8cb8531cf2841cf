#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string>

// What one program at a time owns, and by that says that it runs (ICCCM 2.8).
namespace pellar::X11Selection {

// The selection of a service that runs once for each screen: `prefix` and the screen's number.
[[nodiscard]] xcb_atom_t ofScreen(xcb_connection_t* connection, const xcb_screen_t& screen,
                                  const std::string& prefix);

// The window of the program that owns it; XCB_WINDOW_NONE when no program does.
[[nodiscard]] xcb_window_t owner(xcb_connection_t* connection, xcb_atom_t selection);

// Has every change of the owner reported. The type of those events, which are
// xcb_xfixes_selection_notify_event_t; 0 when the server cannot report them.
std::uint8_t follow(xcb_connection_t* connection, xcb_window_t root, xcb_atom_t selection);

}  // namespace pellar::X11Selection
