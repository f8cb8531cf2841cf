#pragma once

#include <vector>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Window.h"

namespace pellar {

// Reads windows of others for the first time, many at once: all requests of a step, then all replies.
class X11WindowLoader {
 public:
  explicit X11WindowLoader(X11Connection& connection) : connection_(connection) {}

  // Selects the windows' events and reads all that the mirror keeps of them. Windows that are gone are left
  // out.
  [[nodiscard]] std::vector<X11Window> load(const std::vector<xcb_window_t>& ids);

  // Reads again which ancestors a window has; those whose window is gone meanwhile come out without links.
  void loadLinks(const std::vector<X11Window*>& windows);

  // Ends the events of a window.
  void release(xcb_window_t id);

 private:
  X11Connection& connection_;
};

}  // namespace pellar
