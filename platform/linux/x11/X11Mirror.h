#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/X11Window.h"
#include "platform/linux/x11/X11WindowLoader.h"

namespace pellar {

// A copy of what the X server and the window manager say of the desktop and its client windows, kept by
// events, so that reading it is no round trip. Main thread only.
class X11Mirror {
 public:
  // What became different since it was last taken.
  struct Changes {
    std::set<xcb_window_t> windows;  // new, changed or gone
    bool membership = false;         // the client list, or what tells whose a window is
    bool activeWindow = false;
    bool desktop = false;  // another one is shown
    bool screens = false;  // monitors, work area or what reserves room on them
    [[nodiscard]] bool any() const {
      return membership || activeWindow || desktop || screens || !windows.empty();
    }
  };

  explicit X11Mirror(X11Connection& connection);
  X11Mirror(const X11Mirror&) = delete;
  X11Mirror& operator=(const X11Mirror&) = delete;

  // A window of the client list, or the active one; null when it is neither or gone. Valid until the next
  // read.
  [[nodiscard]] const X11Window* find(xcb_window_t id) const;
  // The window manager's clients, each in the place it had when it came. Those that a window manager leaves
  // behind on the screen when it ends are among them, for the next one will take them over.
  [[nodiscard]] const std::vector<xcb_window_t>& clientList() const { return clientList_; }
  // Whether a window manager has left its windows to the next one.
  [[nodiscard]] bool isBetweenWindowManagers() const { return !leftBehind_.empty(); }
  // Every window known, clients or not.
  [[nodiscard]] const std::map<xcb_window_t, X11Window>& windows() const { return windows_; }
  // 0 while no window is active.
  [[nodiscard]] xcb_window_t activeWindow() const { return activeWindow_; }
  // Whether a window is on the desktop shown: also when it is on all of them, or there is but one.
  [[nodiscard]] bool isOnShownDesktop(const X11Window& window) const;
  // Whether the user has put a window away. Some window managers say "iconic" of the windows of other
  // desktops, too.
  [[nodiscard]] bool isMinimized(const X11Window& window) const;
  // The area of a desktop outside its panels, one rectangle for all monitors; absent when the window
  // manager does not say.
  [[nodiscard]] std::optional<RootRect> workArea() const { return workArea_; }
  // The same number for all windows that a program made over one connection, another for any other's.
  [[nodiscard]] std::uint32_t makerOf(xcb_window_t id) const;

  // Reads all that events have made stale, in a few round trips whatever its amount. Whether there was any.
  bool readStale();
  // Whether something changed, or is stale, that has not been taken.
  [[nodiscard]] bool hasNews() const { return changes_.any() || isStale(); }
  [[nodiscard]] Changes takeChanges() { return std::exchange(changes_, {}); }

  // Says that the monitors changed.
  void noteScreensChanged();
  // Another number after each change of the monitors, the work area, or what reserves room on them.
  [[nodiscard]] std::uint64_t screensVersion() const { return screensVersion_; }

 private:
  void handle(const xcb_generic_event_t& event);
  void handleConfigure(const xcb_configure_notify_event_t& event);
  void handleProperty(const xcb_property_notify_event_t& event);
  [[nodiscard]] bool isStale() const;
  void readProperties();
  void readRoot();
  void readLinks();
  [[nodiscard]] bool isWindowManager(xcb_window_t check) const;
  void reconcile();
  // Those of these windows, which are listed no more, that a window manager left behind.
  [[nodiscard]] std::unordered_set<xcb_window_t> leftBehindOf(const std::vector<xcb_window_t>& leaving) const;
  void link(const X11Window& window);
  void unlink(const X11Window& window);
  void forget(xcb_window_t id);

  X11Connection& connection_;
  X11WindowLoader loader_;
  std::map<xcb_window_t, X11Window> windows_;
  std::unordered_multimap<xcb_window_t, xcb_window_t> owners_;  // of every link: the clients inside it
  std::vector<xcb_window_t> listed_;                            // as the property says
  std::vector<xcb_window_t> clientList_;                        // those that exist, and those left behind
  std::unordered_set<xcb_window_t> leftBehind_;                 // mapped and no longer listed
  xcb_window_t activeWindow_ = XCB_WINDOW_NONE;
  xcb_window_t check_ = XCB_WINDOW_NONE;         // by which the window manager shows that it is there
  bool hadWindowManager_ = true;                 // so that the lack of one is said once
  std::optional<std::uint32_t> currentDesktop_;  // absent where there are no desktops
  std::optional<RootRect> workArea_;

  bool rootStale_ = true;
  std::set<std::pair<xcb_window_t, X11Property>> staleProperties_;
  std::set<xcb_window_t> staleLinks_;
  Changes changes_;
  std::uint64_t screensVersion_ = 0;
  Subscription events_;
};

}  // namespace pellar
