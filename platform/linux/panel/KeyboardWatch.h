#pragma once

#include <xcb/xcb.h>

#include <memory>

#include "platform/MainLoop.h"
#include "platform/linux/system/SideThread.h"

namespace pellar {

// While the server waits behind a key that was typed into a window of ours, it keeps the whole keyboard, also
// from the window manager and screen lockers. When the main thread does not answer for a second, a thread
// lets it go. Main thread only.
class KeyboardWatch {
 public:
  KeyboardWatch(xcb_connection_t* connection, MainLoop& loop) : connection_(connection), loop_(loop) {}
  ~KeyboardWatch() { end(); }
  KeyboardWatch(const KeyboardWatch&) = delete;
  KeyboardWatch& operator=(const KeyboardWatch&) = delete;

  // From now on. Wakes the main thread once a second.
  void begin();
  void end();

 private:
  struct State;
  static void watch(const std::shared_ptr<State>& state, xcb_connection_t* connection, MainLoop& loop);

  xcb_connection_t* connection_;
  MainLoop& loop_;
  std::shared_ptr<State> state_;  // null while it does not watch
  SideThread thread_;
};

}  // namespace pellar
