#pragma once

#include <xcb/xcb.h>

namespace pellar {

// A screen's place among the server's, by which desktops name what they have one of for each screen.
inline int screenNumber(xcb_connection_t* connection, const xcb_screen_t& screen) {
  int number = 0;
  for (auto each = xcb_setup_roots_iterator(xcb_get_setup(connection)); each.rem > 0;
       xcb_screen_next(&each), ++number) {
    if (each.data->root == screen.root) return number;
  }
  return 0;
}

}  // namespace pellar
