#pragma once

#include <xcb/xcb.h>

#include <compare>
#include <map>
#include <optional>
#include <set>

#include "platform/linux/applications/X11Applications.h"
#include "platform/linux/drawing/PixelRect.h"
#include "platform/linux/system/X11ScreenList.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Density.h"
#include "platform/linux/x11/X11Mirror.h"

namespace pellar {

// Has the window manager keep maximised windows below the strip: while a window of an application with a
// strip is maximised on a screen, room for the strip is reserved at the top of that screen, as panels reserve
// theirs. The window keeps its state, and the window manager the frame from before.
//
// A reservation is counted from the edge of all screens together, so none is made on a screen that has
// another one above it. Main thread only.
class X11StripRoom {
 public:
  X11StripRoom(X11Connection& connection, const X11Mirror& mirror, const X11Applications& applications,
               const X11Density& density, X11ScreenList& screens);
  ~X11StripRoom();
  X11StripRoom(const X11StripRoom&) = delete;
  X11StripRoom& operator=(const X11StripRoom&) = delete;

  // What the mirror has taken in.
  void note(const X11Mirror::Changes& changes);
  // Reserves what is to be reserved now. `strip` is where the strip is; absent while it is off the screen.
  void update(const std::optional<PixelRect>& strip);

 private:
  // What is kept free: so many pixels from the top of the root window, from the first column to the last.
  struct Reserve {
    int depth = 0;
    int first = 0;
    int last = 0;
    friend auto operator<=>(const Reserve&, const Reserve&) = default;
  };

  void noteStrip(const std::optional<PixelRect>& strip);
  [[nodiscard]] bool needsRoom(const X11Window& window) const;
  [[nodiscard]] std::optional<Reserve> reserveFor(const RootRect& pixels) const;
  [[nodiscard]] xcb_window_t reserve(const Reserve& reserve);

  X11Connection& connection_;
  const X11Mirror& mirror_;
  const X11Applications& applications_;
  const X11Density& density_;
  X11ScreenList& screens_;
  bool stale_ = true;
  int height_ = 0;                            // of the strip, pixels
  std::set<ProcessId> withStrip_;             // applications that had a strip when they were last in front
  std::map<xcb_window_t, RootRect> windows_;  // those that room is reserved for, each on its monitor
  std::map<Reserve, xcb_window_t> made_;      // each by a window of its own
};

}  // namespace pellar
