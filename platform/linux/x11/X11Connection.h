#pragma once

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <variant>

#include "platform/Subscription.h"
#include "platform/linux/x11/XcbReply.h"

namespace pellar {

// The atoms that the adapter speaks of, interned once.
struct X11Atoms {
  xcb_atom_t utf8String = 0;
  xcb_atom_t wmState = 0;
  xcb_atom_t wmChangeState = 0;
  xcb_atom_t netSupported = 0;
  xcb_atom_t netSupportingWmCheck = 0;
  xcb_atom_t netClientList = 0;
  xcb_atom_t netClientListStacking = 0;
  xcb_atom_t netActiveWindow = 0;
  xcb_atom_t netCurrentDesktop = 0;
  xcb_atom_t netWorkArea = 0;
  xcb_atom_t netCloseWindow = 0;
  xcb_atom_t netMoveResizeWindow = 0;
  xcb_atom_t netWmName = 0;
  xcb_atom_t netWmPid = 0;
  xcb_atom_t netWmDesktop = 0;
  xcb_atom_t netFrameExtents = 0;
  xcb_atom_t netRequestFrameExtents = 0;
  xcb_atom_t gtkFrameExtents = 0;
  xcb_atom_t gtkUniqueBusName = 0;
  xcb_atom_t gtkMenuBarPath = 0;
  xcb_atom_t gtkWindowPath = 0;
  xcb_atom_t gtkApplicationPath = 0;
  xcb_atom_t unityObjectPath = 0;
  xcb_atom_t netWmStrut = 0;
  xcb_atom_t netWmStrutPartial = 0;
  xcb_atom_t netWmState = 0;
  xcb_atom_t stateHidden = 0;
  xcb_atom_t stateFullscreen = 0;
  xcb_atom_t stateMaximizedVert = 0;
  xcb_atom_t stateMaximizedHorz = 0;
  xcb_atom_t stateSkipTaskbar = 0;
  xcb_atom_t netWmWindowType = 0;
  xcb_atom_t typeUtility = 0;
  xcb_atom_t typeNormal = 0;
  xcb_atom_t typeDialog = 0;
  xcb_atom_t typeDock = 0;
  xcb_atom_t typeDesktop = 0;
  xcb_atom_t xdndAware = 0;
  xcb_atom_t xdndPosition = 0;
  xcb_atom_t xdndStatus = 0;
  xcb_atom_t xdndLeave = 0;
  xcb_atom_t xdndDrop = 0;
  xcb_atom_t xdndFinished = 0;
  xcb_atom_t pellarTimestamp = 0;
};

// Who asks, in a message to the window manager (EWMH): not the application whose window it is but a program
// that manages windows for the user.
inline constexpr std::uint32_t fromPager = 2;

// Why there is no connection: one sentence for the user.
struct X11Failure {
  std::string sentence;
};

// The program's own connection to the X server, beside the toolkit's. Main thread only. Requests are sent
// with xcb() and reach the server at the next flush; X11Pump flushes at the end of each of its rounds and
// before the main loop sleeps.
class X11Connection {
 public:
  // Connects to the display of the environment (DISPLAY), unless that is an X server inside a Wayland
  // session.
  static std::variant<std::unique_ptr<X11Connection>, X11Failure> open();
  ~X11Connection();
  X11Connection(const X11Connection&) = delete;
  X11Connection& operator=(const X11Connection&) = delete;

  [[nodiscard]] xcb_connection_t* xcb() const { return connection_; }
  [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
  [[nodiscard]] xcb_window_t root() const { return screen_->root; }
  // Whether a window was made through this connection.
  [[nodiscard]] bool owns(xcb_window_t window) const;
  [[nodiscard]] const X11Atoms& atoms() const { return atoms_; }
  [[nodiscard]] int fileDescriptor() const { return xcb_get_file_descriptor(connection_); }
  // The server is gone; nothing will work any more.
  [[nodiscard]] bool lost() const { return xcb_connection_has_error(connection_) != 0; }

  // Every event, in order. Handlers only take note: they neither block nor call into the application, for
  // they also run while a call of the application waits for an answer. They may post; X11Pump runs that in
  // the same round.
  [[nodiscard]] Subscription onEvent(std::function<void(const xcb_generic_event_t&)> handler);

  // Hands over the events that have arrived, reading the socket but never waiting; a great many of them, but
  // not without end. Whether there were any.
  bool dispatchArrived() { return dispatchArrived(false) != Arrived::nothing; }
  enum class Arrived { nothing, events, press };
  // The same up to the next mouse press in a window of ours; whether that is where it ended.
  Arrived dispatchArrivedUpToPress() { return dispatchArrived(true); }
  // Waits until the socket has something to read. False when the time is up first.
  bool waitForInput(std::chrono::milliseconds time);
  // Sends what was asked for so far; first what `prepare`, given before, adds to it.
  void flush();
  void setBeforeFlush(std::function<void()> prepare) { beforeFlush_ = std::move(prepare); }
  // Whether events have been read from the socket and not been handed over. Any request or reply may read
  // some, and the socket then no longer announces them.
  [[nodiscard]] bool hasUnseenEvents();

  // The server's time now, for messages that a window manager orders by time. One round trip.
  xcb_timestamp_t serverTime();

  // Where the pointer is on the root window, and what is pressed; null when the server is gone. One round
  // trip.
  [[nodiscard]] XcbReply<xcb_query_pointer_reply_t> pointer() const;

  // Sends the window manager a message about a window.
  void sendToWindowManager(xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data);

 private:
  struct Handler {
    std::function<void(const xcb_generic_event_t&)> call;
    bool ended = false;
  };

  X11Connection(xcb_connection_t* connection, xcb_screen_t* screen);
  void internAtoms();
  void dispatch(const xcb_generic_event_t& event);
  Arrived dispatchArrived(bool upToPress);
  void noteError(const xcb_generic_event_t& event);

  xcb_connection_t* connection_;
  const xcb_screen_t* screen_;
  xcb_window_t ownWindow_;
  X11Atoms atoms_;
  xcb_timestamp_t lastTime_ = XCB_CURRENT_TIME;
  std::deque<XcbReply<xcb_generic_event_t>> unseen_;
  std::shared_ptr<std::list<Handler>> handlers_ = std::make_shared<std::list<Handler>>();
  std::function<void()> beforeFlush_;
  int dispatchDepth_ = 0;
  std::set<std::pair<int, int>> reportedErrors_;
};

}  // namespace pellar
