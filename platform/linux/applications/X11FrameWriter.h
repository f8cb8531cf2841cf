#pragma once

#include <xcb/xcb.h>

#include <map>
#include <optional>
#include <set>

#include "core/Geometry.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Density.h"
#include "platform/linux/x11/X11Mirror.h"

namespace pellar {

// Moves and resizes client windows. What is written to one window within a turn of the main loop goes out as
// one request; the window manager answers it when it likes, or with something else. Main thread only.
class X11FrameWriter {
 public:
  X11FrameWriter(X11Connection& connection, X11Mirror& mirror, const X11Density& density);
  ~X11FrameWriter();
  X11FrameWriter(const X11FrameWriter&) = delete;
  X11FrameWriter& operator=(const X11FrameWriter&) = delete;

  // Where the corner of a window's visible frame shall be.
  void setPosition(xcb_window_t window, AxPoint corner);
  // How large a window's visible frame shall be.
  void setSize(xcb_window_t window, Size size);

  // Sends what was written so far.
  void send();

  // Has the mirror show what became of the writes made in this turn: waits for the window manager's answer,
  // but not longer than 40 ms, and a tenth of that for a window that left the last one unanswered.
  void settle(xcb_window_t window);

 private:
  struct Wish {
    std::optional<AxPoint> corner;
    std::optional<Size> size;
  };
  // The same in pixels.
  struct Request {
    std::optional<RootPoint> corner;
    std::optional<Size> size;
    std::uint64_t reportsBefore = 0;
  };

  [[nodiscard]] Request requestFor(const X11Window& window, const Wish& wish) const;
  void request(const X11Window& window, const Request& wish);
  [[nodiscard]] static bool fulfilled(const X11Window& window, const Request& wish);
  // Whether the window is off the place it was to have by just what its frame adds, so that the window
  // manager takes a place to be another corner than it was thought to; from now on it is thought to do so.
  [[nodiscard]] bool meantAnotherCorner(const X11Window& window, const Request& wish);

  X11Connection& connection_;
  X11Mirror& mirror_;
  const X11Density& density_;
  bool placesClient_ = false;  // a place is the client's corner to the window manager, not the frame's
  std::map<xcb_window_t, Wish> unsent_;
  std::map<xcb_window_t, Request> unsettled_;
  std::set<xcb_window_t> silent_;  // windows whose last write had no answer
};

}  // namespace pellar
