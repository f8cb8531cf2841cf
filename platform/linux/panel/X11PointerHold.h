#pragma once

#include <xcb/xcb.h>

#include "platform/Subscription.h"
#include "platform/linux/drawing/PixelRect.h"
#include "platform/linux/x11/X11Mirror.h"

namespace pellar {

class X11Connection;

// Keeps a panel that moves away from under a resting pointer from handing the pointer to the window below.
// Where the window under the pointer has the keyboard, that one would take it from the window that the user
// has just chosen by the panel. An unseen window of one pixel has the pointer instead, until it moves or a
// button is pressed. Main thread only.
class X11PointerHold {
 public:
  X11PointerHold(X11Connection& connection, const X11Mirror& mirror);
  ~X11PointerHold();
  X11PointerHold(const X11PointerHold&) = delete;
  X11PointerHold& operator=(const X11PointerHold&) = delete;

  // `panel`, which has the pointer as far as is known, is about to move to `place`. Asks the server where the
  // pointer is; nothing happens when it is to stay in the panel, or is in the active window.
  void panelMoves(xcb_window_t panel, const PixelRect& place);
  // A panel stands there now, and takes the pointer itself.
  void panelStands(const PixelRect& place);

 private:
  void handle(const xcb_generic_event_t& event);
  void release();

  X11Connection& connection_;
  const X11Mirror& mirror_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  RootPoint place_;  // of window_
  Subscription events_;
};

}  // namespace pellar
