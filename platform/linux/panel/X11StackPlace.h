#pragma once

#include <xcb/xcb.h>

#include <vector>

#include "platform/linux/x11/X11Mirror.h"

namespace pellar {

// Where a panel's window stands in the server's one stack: above all, or directly above the frame of a window
// of another application, below that one's dialogs and whatever else its window manager puts above it. The
// window manager knows nothing of it, and may raise it with the windows that it does not manage, so the panel
// takes its place anew whenever the stack changed; what it asks for changes no other window's place, and is
// nothing where the place is still its own. Requests are not flushed.
class X11StackPlace {
 public:
  // Of the window `panel`.
  X11StackPlace(X11Connection& connection, const X11Mirror& mirror, xcb_window_t panel)
      : connection_(connection), mirror_(mirror), panel_(panel) {}

  // Both take effect with the next take() or keep().
  void standOnTop() { client_ = XCB_WINDOW_NONE; }
  void standOver(xcb_window_t client) { client_ = client; }
  [[nodiscard]] bool isOnTop() const { return client_ == XCB_WINDOW_NONE; }

  // Takes the place.
  void take();
  // Takes it if the panel belongs to a window and another one than before, or one that is in another frame.
  // Whether that was asked for.
  bool keep();
  // Takes the place of a panel that belongs to a window whose frame is known, for the stack has changed.
  void takeAgain();
  // Puts the panel above all until it takes its place again.
  void raise();
  // Whether the window has moved in the stack by this event, or another one to right above it. A window that
  // is merely moved, perhaps a hundred times a second, stays above the same one.
  [[nodiscard]] bool note(const xcb_configure_notify_event_t& event);
  // The windows that should stand above the panel and stand below it. Asks the server.
  [[nodiscard]] std::vector<xcb_window_t> coveredWindows() const;

 private:
  // The top-level window of the one that the panel belongs to; 0 while that is not known.
  [[nodiscard]] xcb_window_t frameNow() const;

  X11Connection& connection_;
  const X11Mirror& mirror_;
  xcb_window_t panel_;
  xcb_window_t client_ = XCB_WINDOW_NONE;
  xcb_window_t frame_ = XCB_WINDOW_NONE;       // above which the place was taken
  xcb_window_t belowFrame_ = XCB_WINDOW_NONE;  // as the frame's last event told
};

}  // namespace pellar
