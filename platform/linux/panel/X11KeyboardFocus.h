#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <set>

#include "platform/Subscription.h"
#include "platform/linux/panel/KeyboardWatch.h"

namespace pellar {

class X11Connection;

// The keyboard, borrowed from the window that the user works in. It is no grab: the window manager's keys,
// media keys and screen lockers work as ever. Main thread only.
//
// The server's input focus goes to a window of ours that is nowhere seen, made inside the application's:
// window managers, which watch their clients' own focus, go on calling that one active. When this program
// ends without a word, the server gives the focus back to it.
class X11KeyboardFocus {
 public:
  X11KeyboardFocus(X11Connection& connection, MainLoop& loop);
  ~X11KeyboardFocus() { giveBack(); }
  X11KeyboardFocus(const X11KeyboardFocus&) = delete;
  X11KeyboardFocus& operator=(const X11KeyboardFocus&) = delete;

  // Keys are sent on to `receiver`, a window of this program, from now on. `time` is that of what the user
  // did for it, XCB_CURRENT_TIME when it was nothing. When somebody was given the keyboard after that,
  // `onTaken` is called.
  void take(xcb_window_t receiver, xcb_timestamp_t time);
  // Keys go to the window that had them before, unless they are somebody else's by now; also those that wait
  // behind a key that may end the typing.
  void giveBack();

  // What the user types behind Escape, Return or Enter waits in the server, so that it goes to the window
  // that has the keyboard once that key has done its work, as fast as it may come; a second at most when the
  // main thread hangs. To be called then, for any key.
  void keyIsDone(xcb_keycode_t key);

  // Somebody else has the keyboard. Called from a handler of the connection or inside `take`: only posts.
  std::function<void()> onTaken;

 private:
  void handle(const xcb_generic_event_t& event);
  void makeWindow(xcb_window_t parent);
  void tellTime();
  void sendOn(const xcb_key_press_event_t& key);
  void letKeysGo();
  void taken();
  void end();

  X11Connection& connection_;
  xcb_window_t window_ = XCB_WINDOW_NONE;  // ours, while we have the keyboard
  xcb_window_t receiver_ = XCB_WINDOW_NONE;
  xcb_timestamp_t takenAt_ = XCB_CURRENT_TIME;
  xcb_window_t before_ = XCB_WINDOW_NONE;
  std::uint8_t revertBefore_ = XCB_INPUT_FOCUS_POINTER_ROOT;
  std::set<xcb_keycode_t> endingKeys_;
  std::optional<xcb_keycode_t> waitedFor_;  // the key behind which others wait
  KeyboardWatch watch_;
  Subscription events_;
};

}  // namespace pellar
