#pragma once

#include <xcb/xcb.h>

#include <QImage>

namespace pellar::e2e {

// What an X window, or the root window, shows with everything on top of it; null when it is not on the screen
// or the screen is not true-colour. The pointer is not in it.
[[nodiscard]] QImage photograph(xcb_connection_t* connection, xcb_window_t window);

}  // namespace pellar::e2e
