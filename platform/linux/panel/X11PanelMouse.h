#pragma once

#include <xcb/xcb.h>

#include <optional>

#include "platform/View.h"
#include "platform/linux/x11/PointMap.h"

namespace pellar {

// How the pointer's place in a panel, and on the X screen, becomes points.
struct PointerSpace {
  double scale = 1;  // the panel's pixels to a point
  const PointMap& map;
  double firstScreenHeight = 0;  // points; turns what is y-down into y-up

  [[nodiscard]] ScreenPoint onScreen(int rootX, int rootY) const {
    const AxPoint place = map.toPoints(RootPoint{static_cast<double>(rootX), static_cast<double>(rootY)});
    return {place.x, firstScreenHeight - place.y};
  }
};

// Turns the pointer events of one panel's window into a view's: presses and drags of the left button, the
// other buttons, moving, double clicks; that the pointer comes and goes is told by others. Every call makes
// at most one call of the view and then touches nothing more, for the view may do away with the panel.
class X11PanelMouse {
 public:
  // `view` may be null.
  void press(const xcb_button_press_event_t& event, View* view, const PointerSpace& space);
  void release(const xcb_button_release_event_t& event, View* view, const PointerSpace& space);
  void motion(const xcb_motion_notify_event_t& event, View* view, const PointerSpace& space);
  // The pointer came to the window, or went from it into one that stands in it.
  void cross(const xcb_enter_notify_event_t& event, View* view, const PointerSpace& space);
  // Whether the pointer leaves the view by it.
  [[nodiscard]] bool leavesBy(const xcb_leave_notify_event_t& event) const;

  // Whether the left button was pressed in the panel and is held still, so that the panel may be dragged.
  [[nodiscard]] bool leftIsDown() const { return leftDown_; }

  // Ends a press that a vanished window can no longer end, where the pointer was last.
  void abandon(View* view);

 private:
  struct Press {
    xcb_timestamp_t time;
    ViewPoint place;
    int count;
  };

  void moveTo(const MouseEvent& event, bool leftIsDown, View* view);

  std::optional<Press> lastPress_;  // of the left button
  bool leftDown_ = false;
  MouseEvent last_;
};

}  // namespace pellar
