#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/MainLoop.h"
#include "platform/Workspace.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/applications/X11Dialogs.h"
#include "platform/linux/x11/X11Mirror.h"

namespace pellar {

// Windows that the user takes for one application: those of one class on one machine.
struct X11Application {
  ProcessId pid = 0;  // stands for the application while it has a window; made up where no process is known
  std::optional<std::string> bundleId;
  std::optional<std::string> name;
  bool isTerminal = false;            // what its windows show is other programs'
  std::vector<xcb_window_t> windows;  // clients, in the window manager's order
};

// Which application a window belongs to, which is in front, and what happens to them. Main thread only.
class X11Applications {
 public:
  X11Applications(X11Mirror& mirror, MainLoop& loop, DesktopEntries entries);
  X11Applications(const X11Applications&) = delete;
  X11Applications& operator=(const X11Applications&) = delete;

  // This program's own bundle identifier.
  static constexpr const char* ownBundleId = "app.pellar.Pellar";

  // The application that a process number stands for, else the one with a window of that process.
  [[nodiscard]] const X11Application* withPid(ProcessId pid) const;
  // A running application with this identifier; null when there is none.
  [[nodiscard]] const X11Application* withBundleId(const std::string& bundleId) const;
  [[nodiscard]] const X11Application* ofWindow(xcb_window_t window) const;

  // Whether a window belongs to a program of this machine.
  [[nodiscard]] bool isLocal(const X11Window& window) const;

  // The application with the active window. For a moment without one, as while the focus goes from a window
  // to another, it stays the last; so it does while the user looks at a desktop where no window is active.
  [[nodiscard]] std::optional<RunningApplication> frontmost() const;
  // The window of an application that the user works in; 0 when that is none of its. A dialog counts as the
  // standard window that it belongs to, where one can be meant; a palette as the one used last. The active
  // window has the same moment's grace.
  [[nodiscard]] xcb_window_t focusedWindow(const X11Application& application) const;
  // Counts the windows that became active.
  [[nodiscard]] std::uint64_t activationCount() const { return lastActivation_; }
  // The window of an application that was active last and is not minimised, of the desktop shown if it has
  // one there; 0 when there is none.
  [[nodiscard]] xcb_window_t lastActiveWindow(const X11Application& application) const;

  // A window was just asked to become the active one; it counts until another is, or half a second.
  void noteRaise(xcb_window_t window);
  // Whether such a window belongs to the application.
  [[nodiscard]] bool isRaising(const X11Application& application) const;

  // Takes the mirror's changes and tells the listeners, which only post.
  void update();

  std::function<void(const X11Mirror::Changes&)> onChanges;  // told before all others
  std::function<void(const std::set<ProcessId>&)> onWindowsChanged;
  std::function<void()> onFrontmostChanged;
  std::function<void(ProcessId)> onLaunched;
  std::function<void(ProcessId)> onTerminated;
  std::function<void()> onDesktopChanged;
  std::function<void()> onScreensChanged;

 private:
  using Key = std::string;
  enum class Among { all, standardOnes };

  // As lastActiveWindow.
  [[nodiscard]] xcb_window_t lastActive(const X11Application& application, Among among) const;
  [[nodiscard]] Key keyOf(const X11Window& window) const;
  // The windows by which programs are known whose toolkit names the others, by their makers.
  [[nodiscard]] std::map<std::uint32_t, const X11Window*> namedWindows() const;
  void regroup();
  void describe(X11Application& application, const X11Window& window);
  [[nodiscard]] ProcessId unusedPid(const X11Window& window);
  // Whether a window is on another desktop than the one shown.
  [[nodiscard]] bool isElsewhere(xcb_window_t window) const;
  void setActive(xcb_window_t window);
  void tell();

  X11Mirror& mirror_;
  X11Dialogs dialogs_;
  MainLoop& loop_;
  DesktopEntries entries_;
  std::string hostName_;
  std::map<Key, X11Application> applications_;
  std::map<xcb_window_t, Key> keys_;  // of every mirrored window
  std::map<xcb_window_t, std::uint64_t> activations_;
  std::uint64_t lastActivation_ = 0;
  ProcessId lastMadeUpPid_;

  xcb_window_t active_ = XCB_WINDOW_NONE;
  Key activeKey_;
  xcb_window_t raising_ = XCB_WINDOW_NONE;
  std::chrono::nanoseconds raisedAt_{};
  bool switching_ = false;

  std::set<ProcessId> changed_;
  std::set<ProcessId> launched_;
  std::set<ProcessId> terminated_;
  bool desktopChanged_ = false;
  bool screensChanged_ = false;
  std::optional<RunningApplication> toldFrontmost_;
  Subscription switchTimer_;
};

}  // namespace pellar
