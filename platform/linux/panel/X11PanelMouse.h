#pragma once

#include <xcb/xcb.h>

#include <optional>

#include "platform/View.h"

namespace pellar {

// Turns the pointer events of one panel's window into a view's: presses and drags of the left button, the
// other buttons, moving, double clicks; that the pointer comes and goes is told by others. Every call makes
// at most one call of the view and then touches nothing more, for the view may do away with the panel.
class X11PanelMouse {
 public:
  // `view` may be null. The screen's height turns the server's coordinates into y-up ones.
  void press(const xcb_button_press_event_t& event, View* view, double firstScreenHeight);
  void release(const xcb_button_release_event_t& event, View* view, double firstScreenHeight);
  void motion(const xcb_motion_notify_event_t& event, View* view, double firstScreenHeight);
  // The pointer came to the window, or went from it into one that stands in it.
  void cross(const xcb_enter_notify_event_t& event, View* view, double firstScreenHeight);
  // Whether the pointer leaves the view by it.
  [[nodiscard]] bool leavesBy(const xcb_leave_notify_event_t& event) const;

  // Ends a press that a vanished window can no longer end, where the pointer was last.
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
  MouseEvent last_;
};

}  // namespace pellar
