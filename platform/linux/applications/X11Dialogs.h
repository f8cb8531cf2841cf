#pragma once

#include <xcb/xcb.h>

#include <vector>

#include "platform/linux/x11/X11Mirror.h"

namespace pellar {

// Which windows are dialogs of which, by what their programs tell the window manager. Main thread only.
class X11Dialogs {
 public:
  explicit X11Dialogs(const X11Mirror& mirror) : mirror_(mirror) {}

  // The window at the end of the dialogs of dialogs that starts here; the window itself when it is
  // no dialog, and when they have no end.
  [[nodiscard]] const X11Window& leaderOf(const X11Window& window) const;

  // The standard window that a window stands for: itself, the one it was opened for, or, of a dialog of a
  // whole group of windows, the only one of `windows` (its application's) in that group that the user sees.
  // Null when none or more than one may be meant.
  [[nodiscard]] const X11Window* standardWindowOf(const X11Window& window,
                                                  const std::vector<xcb_window_t>& windows) const;

 private:
  [[nodiscard]] bool isOfWholeGroup(const X11Window& window) const;

  const X11Mirror& mirror_;
};

}  // namespace pellar
