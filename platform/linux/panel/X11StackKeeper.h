#pragma once

#include <xcb/xcb.h>

#include <set>
#include <vector>

#include "core/Alive.h"
#include "platform/MainLoop.h"
#include "platform/Subscription.h"
#include "platform/linux/panel/X11PanelWindow.h"
#include "platform/linux/panel/X11StackPlace.h"

namespace pellar {

// Keeps the window of a panel in its place in the stack while it is shown. Where a window manager does not
// let it have that place, the windows that should stand above it show through it. Main thread only.
class X11StackKeeper {
 public:
  // `window` outlives this.
  X11StackKeeper(X11Connection& connection, const X11Mirror& mirror, MainLoop& loop, X11PanelWindow& window);

  // Where the window is to stand from the next showing or keeping on.
  void standOnTop() { place_.standOnTop(); }
  void standOver(xcb_window_t client) { place_.standOver(client); }
  [[nodiscard]] bool isOnTop() const { return place_.isOnTop(); }

  // Takes the place for a window that is about to be shown. Not flushed.
  void take();
  // Takes it if the panel belongs to another window than before.
  void keep();
  // The window leaves the screen.
  void rest();

  // A window is about to be raised, and some window managers would put others over the panel on the way,
  // which then had the pointer for a moment: the panel stands above all until they are done. Not flushed.
  void raiseForNow();

  // The window manager has changed the stack, or something covers the window, or no longer does.
  void noteStacking();
  // Another window has been configured.
  void noteConfigured(const xcb_configure_notify_event_t& event);
  // These windows are new, changed or gone.
  void noteWindows(const std::set<xcb_window_t>& changed);

 private:
  void takeAgain();
  void check();
  void spare(std::vector<xcb_window_t> windows);

  const X11Mirror& mirror_;
  MainLoop& loop_;
  X11PanelWindow& window_;
  X11StackPlace place_;
  bool isShown_ = false;
  bool posted_ = false;
  int refusals_ = 0;                  // one after the other
  std::vector<xcb_window_t> spared_;  // clients that show through the window
  Subscription again_;
  Alive alive_;
};

}  // namespace pellar
