#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>

#include "platform/MainLoop.h"
#include "platform/Subscription.h"
#include "platform/linux/system/X11ScreenList.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Density.h"
#include "platform/linux/x11/X11Mirror.h"

namespace pellar {

// Whether a window has come to rest. A window manager tells the place, the size and the state of a window one
// after the other and in an order of its own, and takes a write in between for the frame that it is to give
// back later. So a window whose state changed, or whose frame did while it fills its screen from top to
// bottom, is at rest only after a while in which nothing more was heard; any other one soon after its last
// move.
//
// A maximised window that leaves its strip no room is given some to take by itself: its window manager is
// told of the room that is reserved, and some heed that only when they maximise a window. So it is maximised
// anew once before anything is written to it, which would take its state and its old frame away.
//
// A window that is maximised on a screen below another one stays where its window manager holds it: no room
// can be reserved above it, and to move it would take its state and its old frame away. Its strip has room on
// the screen above. Main thread only.
class X11Rest {
 public:
  X11Rest(X11Connection& connection, const X11Mirror& mirror, const X11Density& density,
          const X11ScreenList& screens, MainLoop& loop);

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
    bool maximizedAnew = false;           // by us, since it was maximised by others
    bool leavesToComeBack = false;        // is asked to give the state up for that, and still has it
    [[nodiscard]] bool sameStateAs(const Last& other) const;
  };
  struct Wait;

  [[nodiscard]] bool isHeldBelowAnotherScreen(xcb_window_t window) const;
  [[nodiscard]] bool reachesFromTopToBottom(const X11Window& window) const;
  [[nodiscard]] std::chrono::milliseconds untilRest(xcb_window_t window) const;
  // Whether its window manager may move it below the strip by itself yet.
  [[nodiscard]] bool mayMakeRoom(xcb_window_t window) const;
  void maximizeAnew(xcb_window_t window);
  void askToBeMaximized(xcb_window_t window, const Last& last, bool on);
  void wait(const std::shared_ptr<Wait>& waiting);

  X11Connection& connection_;
  const X11Mirror& mirror_;
  const X11Density& density_;
  const X11ScreenList& screens_;
  MainLoop& loop_;
  std::map<xcb_window_t, Last> last_;
};

}  // namespace pellar
