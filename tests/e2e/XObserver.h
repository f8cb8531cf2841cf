#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/e2e/Waiting.h"

namespace pellar::e2e {

// A rectangle in pixels of the root window, y downward.
struct Box {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  friend bool operator==(const Box&, const Box&) = default;
};

std::string describe(const Box& box);

// Space between a window and its frame or its shadow, in pixels.
struct Margins {
  int left = 0;
  int right = 0;
  int top = 0;
  int bottom = 0;
};

// A picture of a window, row by row, 0x00RRGGBB.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
  [[nodiscard]] std::uint32_t at(int x, int y) const {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
  }
};

// The mean of a pixel's channels, 0 to 255.
[[nodiscard]] constexpr int brightness(std::uint32_t pixel) {
  return static_cast<int>((pixel >> 16 & 255) + (pixel >> 8 & 255) + (pixel & 255)) / 3;
}

// An independent client of the X server: it sees what is on the desktop and moves mouse and keyboard. A
// window that is gone is an absent answer, never an error.
class XObserver {
 public:
  explicit XObserver(const std::string& display);
  ~XObserver();
  XObserver(const XObserver&) = delete;
  XObserver& operator=(const XObserver&) = delete;

  [[nodiscard]] xcb_connection_t* connection() const { return connection_; }
  [[nodiscard]] xcb_window_t root() const { return root_; }
  [[nodiscard]] xcb_atom_t atom(const std::string& name) const;

  // Looks at `condition` after every event on the desktop until it holds. Throws DeadlineMissed, naming
  // `what`.
  void waitUntil(const std::string& what, const std::function<bool()>& condition,
                 std::chrono::milliseconds deadline = patience);
  // Returns when the server has carried out everything sent so far.
  void fence();

  // Returns when the window manager takes care of new windows.
  void waitUntilWindowsAreManaged();

  // Properties.
  [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, const std::string& property) const;
  [[nodiscard]] std::string text(xcb_window_t window, const std::string& property) const;

  // The desktop as the window manager describes it.
  [[nodiscard]] bool windowManagerReady() const;
  [[nodiscard]] xcb_window_t activeWindow() const;
  [[nodiscard]] std::vector<xcb_window_t> clients() const;
  [[nodiscard]] std::optional<xcb_window_t> clientTitled(const std::string& titlePart) const;
  [[nodiscard]] bool hasState(xcb_window_t window, const std::string& state) const;
  // WM_STATE: 1 normal, 3 iconic, 0 withdrawn or unknown.
  [[nodiscard]] int managedState(xcb_window_t window) const;

  // Windows.
  // From the lowest to the highest; none of a window that is gone.
  [[nodiscard]] std::vector<xcb_window_t> childrenOf(xcb_window_t window) const;
  // The children of the root.
  [[nodiscard]] std::vector<xcb_window_t> topLevels() const { return childrenOf(root_); }
  // How many of them can be seen, if nothing is above them.
  [[nodiscard]] std::size_t viewableTopLevels() const;
  // The one of them that gets a click at a point of the root; none when it is the root's.
  [[nodiscard]] xcb_window_t topLevelAt(int x, int y) const;
  // The one of them that holds this window, or is it; absent when it is gone.
  [[nodiscard]] std::optional<xcb_window_t> topLevelOf(xcb_window_t window) const;
  // How many of them are below the one that holds this window; absent when it is gone.
  [[nodiscard]] std::optional<std::size_t> heightInStack(xcb_window_t window) const;
  [[nodiscard]] bool isViewable(xcb_window_t window) const;
  // The window itself, without any frame.
  [[nodiscard]] std::optional<Box> box(xcb_window_t window) const;
  // The window with its decorations, without a shadow that it draws itself: what a user sees as the window.
  [[nodiscard]] std::optional<Box> frame(xcb_window_t window) const;
  [[nodiscard]] std::optional<Picture> picture(xcb_window_t window) const;

  // The X server's clock, in its milliseconds.
  [[nodiscard]] xcb_timestamp_t serverTime();

  // Requests a user makes through the window manager.
  void sendToRoot(xcb_window_t window, const std::string& message,
                  const std::vector<std::uint32_t>& data) const;
  void configure(xcb_window_t window, std::uint16_t mask, const std::vector<std::uint32_t>& values) const;

  // Mouse and keyboard, as the hardware would do it.
  void movePointer(int x, int y);
  void press(int button);
  void release(int button);
  void click(int x, int y, int button = 1);
  // Two clicks as far apart as a hand makes them.
  void doubleClick(int x, int y);
  void key(std::uint32_t keysym, bool down);
  // Presses a key and lets go of it.
  void strike(std::uint32_t keysym);
  // What the keyboard has on a key, whatever its layout; with Shift where that takes it.
  void type(const std::string& text);

  // Where the keyboard has a key; absent when it has none with that symbol. `shifted`: with Shift held.
  [[nodiscard]] std::optional<xcb_keycode_t> keycode(std::uint32_t keysym, bool shifted = false) const;
  // The window that keys go to, or none.
  [[nodiscard]] xcb_window_t focus() const;
  // Where the mouse pointer is, as a box of no size.
  [[nodiscard]] Box pointer() const;

  // Whether some program has taken the keyboard, or the mouse, for itself, as an open menu does.
  [[nodiscard]] bool keyboardIsGrabbed();
  [[nodiscard]] bool pointerIsGrabbed();

  // The text that a paste would give now; empty when the clipboard holds none.
  [[nodiscard]] std::string clipboard();

  // Everything that was ever active, or in the list of managed windows, since this observer connected.
  [[nodiscard]] const std::set<xcb_window_t>& everActive() const { return everActive_; }
  [[nodiscard]] const std::set<xcb_window_t>& everListed() const { return everListed_; }
  void takeEvents();

 private:
  void pressKey(xcb_keycode_t code, bool down);
  // Presses a button once the server has waited for so long.
  void pressAfter(std::uint32_t milliseconds, int button);
  // Whether a grab that was just tried, with the server held, is refused. Gives back what was got.
  template <class Reply, class Cookie>
  bool isRefused(Cookie tried, Reply* (*answerTo)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                 xcb_void_cookie_t (*letGo)(xcb_connection_t*, xcb_timestamp_t));
  void noteDesktop();

  xcb_connection_t* connection_;
  xcb_window_t root_ = 0;
  xcb_window_t own_ = 0;  // never shown; its property asks for the time
  xcb_timestamp_t lastTime_ = 0;
  bool selectionAnswered_ = false;
  mutable std::map<std::string, xcb_atom_t> atoms_;
  std::set<xcb_window_t> everActive_;
  std::set<xcb_window_t> everListed_;
};

}  // namespace pellar::e2e
