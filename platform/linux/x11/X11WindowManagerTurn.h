#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <unordered_map>

#include "core/Alive.h"
#include "platform/Subscription.h"

namespace pellar {

class MainLoop;
class X11Connection;

// Calls back once the window manager has dealt with what the server has told it so far. A window manager
// takes each thing in its turn, so it is asked for something then: the extents of a frame for a window that
// is never shown (_NET_REQUEST_FRAME_EXTENTS, EWMH). Main thread only.
class X11WindowManagerTurn {
 public:
  X11WindowManagerTurn(X11Connection& connection, MainLoop& loop);
  ~X11WindowManagerTurn();
  X11WindowManagerTurn(const X11WindowManagerTurn&) = delete;
  X11WindowManagerTurn& operator=(const X11WindowManagerTurn&) = delete;

  // Calls back from the main loop: at once where no window manager says that it would answer, and after two
  // seconds when it hangs. Never once this has ended.
  void afterwards(std::function<void()> callback);

 private:
  struct Question {
    std::function<void()> callback;
    Subscription deadline;
  };

  [[nodiscard]] bool wouldBeAnswered() const;
  void handle(const xcb_generic_event_t& event);
  void end(xcb_window_t asked);

  X11Connection& connection_;
  MainLoop& loop_;
  std::unordered_map<xcb_window_t, Question> questions_;  // by the window that was asked about
  Subscription events_;
  Alive alive_;
};

}  // namespace pellar
