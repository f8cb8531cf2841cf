#pragma once

#include <xcb/xcb.h>

#include <optional>

#include "platform/View.h"

namespace pellar {

// Turns the pointer events of one panel's window into a view's: presses and drags of the left button, the
// other buttons, hovering, double clicks. Every call makes at most one call of the view and then touches
// nothing more, for the view may do away with the panel. What an event says is passed on after `noteInside`.
class X11PanelMouse {
 public:
  // The pointer is inside. Whether it was not so far, which the view is to be told before anything else.
  [[nodiscard]] bool noteInside();

  // `view` may be null. The screen's height turns the server's coordinates into y-up ones.
  void press(const xcb_button_press_event_t& event, View* view, double firstScreenHeight);
  void release(const xcb_button_release_event_t& event, View* view, double firstScreenHeight);
  void motion(const xcb_motion_notify_event_t& event, View* view, double firstScreenHeight);
  void enter(const xcb_enter_notify_event_t& event, View* view, double firstScreenHeight);
  void leave(const xcb_leave_notify_event_t& event, View* view);

  // Ends what a vanished window can no longer end: a press is released where the pointer was last, hovering
  // stops.
  void abandon(View* view);

 private:
  struct Press {
    xcb_timestamp_t time;
    int x;
    int y;
    int count;
  };

  void moveTo(const MouseEvent& event, bool leftIsDown, View* view);

  std::optional<Press> lastPress_;  // of the left button
  bool leftDown_ = false;
  bool inside_ = false;
  MouseEvent last_;
};

}  // namespace pellar
