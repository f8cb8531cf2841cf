#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>

#include "platform/MainLoop.h"
#include "platform/Subscription.h"
#include "platform/linux/system/X11ScreenList.h"
#include "platform/linux/x11/X11Density.h"
#include "platform/linux/x11/X11Mirror.h"

namespace pellar {

// Whether a window has come to rest. A window manager tells the place, the size and the state of a window one
// after the other and in an order of its own, and takes a write in between for the frame that it is to give
// back later. So a window whose state changed, or whose frame did while it fills its screen from top to
// bottom, is at rest only after a while in which nothing more was heard; any other one soon after its last
// move.
//
// A window that is maximised on a screen below another one stays where its window manager holds it: no room
// can be reserved above it, and to move it would take its state and its old frame away. Its strip has room on
// the screen above. Main thread only.
class X11Rest {
 public:
  X11Rest(const X11Mirror& mirror, const X11Density& density, const X11ScreenList& screens, MainLoop& loop);

  // What the mirror has taken in.
  void note(const X11Mirror::Changes& changes);
  // As Accessibility::onceAtRest.
  [[nodiscard]] Subscription onceAtRest(xcb_window_t window, std::function<void()> callback);

 private:
  struct Last {
    RootRect frame;
    bool fullscreen = false;
    bool maximizedVertically = false;
    bool maximizedHorizontally = false;
    std::chrono::nanoseconds restsAt{0};  // uptime
    [[nodiscard]] bool sameStateAs(const Last& other) const;
  };
  struct Wait;

  [[nodiscard]] bool isHeldBelowAnotherScreen(xcb_window_t window) const;
  [[nodiscard]] bool reachesFromTopToBottom(const X11Window& window) const;
  [[nodiscard]] std::chrono::milliseconds untilRest(xcb_window_t window) const;
  void wait(const std::shared_ptr<Wait>& waiting);

  const X11Mirror& mirror_;
  const X11Density& density_;
  const X11ScreenList& screens_;
  MainLoop& loop_;
  std::map<xcb_window_t, Last> last_;
};

}  // namespace pellar
