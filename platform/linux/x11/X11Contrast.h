#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace pellar {

// Whether the user has given his desktop a theme of high contrast, as its settings service says. False where
// none runs.
class X11Contrast {
 public:
  X11Contrast(xcb_connection_t* connection, const xcb_screen_t& screen);

  [[nodiscard]] bool isIncreased() const { return increased_; }
  // Takes an event of the connection; true when the answer changed.
  bool handle(const xcb_generic_event_t& event);

 private:
  void read();

  xcb_connection_t* connection_;
  xcb_atom_t selection_ = XCB_NONE;
  xcb_atom_t settings_ = XCB_NONE;
  std::uint8_t selectionEvent_ = 0;  // 0 when the server cannot report it
  xcb_window_t service_ = XCB_NONE;
  bool increased_ = false;
};

}  // namespace pellar
