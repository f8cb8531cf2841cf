#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <functional>
#include <optional>
#include <set>

#include "platform/MainLoop.h"
#include "platform/linux/applications/X11Applications.h"
#include "platform/linux/x11/X11Mirror.h"

namespace pellar {

// Brings the question of a window that was told to close to the front. A window manager puts a dialog above
// its own window, and that may be below the one that the user works in: a program that waits for an answer
// there seems to hang. Main thread only.
class X11CloseQuestions {
 public:
  // `bringToFront` is given the question.
  X11CloseQuestions(const X11Mirror& mirror, const X11Applications& applications, MainLoop& loop,
                    std::function<void(xcb_window_t)> bringToFront);

  // A window is told to close, and may ask first.
  void noteClosing(xcb_window_t window);
  // What the mirror has taken in.
  void note(const X11Mirror::Changes& changes);

 private:
  struct Closing {
    ProcessId application;
    std::set<xcb_window_t> known;  // its windows that ask nothing new
    std::chrono::nanoseconds at;   // uptime
  };

  const X11Mirror& mirror_;
  const X11Applications& applications_;
  MainLoop& loop_;
  std::function<void(xcb_window_t)> bringToFront_;
  std::optional<Closing> closing_;
};

}  // namespace pellar
