#pragma once

#include <xcb/xcb.h>

#include <optional>

#include "platform/linux/x11/X11Mirror.h"

namespace pellar {

// Where a panel's window stands in the server's one stack: above all, or directly above the frame of a window
// of another application, below that one's dialogs and whatever else its window manager puts above it. The
// window manager knows nothing of it and tells only which windows it moves, so the panel takes its place anew
// after those; what it asks for then changes no other window's place, and is nothing where the place is still
// its own. Requests are not flushed.
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
  // Takes it if the panel belongs to a window and may not stand directly above it. Whether that was asked
  // for.
  bool keep();
  // Something covers the panel, or no longer does.
  void noteVisibility() { lost_ = true; }
  // Whether another window may have come between the panel and its window by this event.
  bool note(const xcb_configure_notify_event_t& event);

 private:
  // The top-level window of the one that the panel belongs to; 0 while that is not known.
  [[nodiscard]] xcb_window_t frameNow() const;

  X11Connection& connection_;
  const X11Mirror& mirror_;
  xcb_window_t panel_;
  xcb_window_t client_ = XCB_WINDOW_NONE;
  xcb_window_t frame_ = XCB_WINDOW_NONE;    // above which the place was taken
  std::optional<xcb_window_t> belowFrame_;  // the window directly below it; absent while that is not known
  bool lost_ = false;
};

}  // namespace pellar
