#pragma once

#include <xcb/xcb.h>

#include "platform/View.h"
#include "platform/linux/drawing/PixelRect.h"

namespace pellar {

class X11Connection;

// The other end of a drag and drop for one panel's window (XDND, version 5): says where the drag is, and
// takes nothing. Every call makes at most one call of the view and then touches nothing more.
class X11DropTarget {
 public:
  // Tells drag sources that the window understands them.
  X11DropTarget(X11Connection& connection, xcb_window_t window);

  // A client message of the window. `view` may be null; `frame` is the window's, `scale` its pixels to a
  // point.
  void handle(const xcb_client_message_event_t& message, View* view, const PixelRect& frame, double scale);
  // The window left the screen.
  void leave(View* view);

 private:
  void answer(xcb_window_t source, xcb_atom_t type, std::uint32_t flags);

  X11Connection& connection_;
  xcb_window_t window_;
  bool inside_ = false;
};

}  // namespace pellar
