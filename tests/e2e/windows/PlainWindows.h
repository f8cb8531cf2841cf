#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace pellar::e2e {

// The windows of one plain X program: no toolkit, so that each can misbehave in its own way.
class PlainWindows {
 public:
  explicit PlainWindows(std::string className);
  ~PlainWindows();
  PlainWindows(const PlainWindows&) = delete;
  PlainWindows& operator=(const PlainWindows&) = delete;

  // Carries out one command line and returns the answer. A window's own, with its number behind the verb:
  // "title HEX", "class NAME", "type NAME" (NORMAL, UTILITY ...), "off-taskbar", "transient PARENT" (the type
  // stays), "dialog PARENT", "group LEADER", "fixed", "aspect W H", "stubborn X Y", "asks" (when it is told
  // to close, and stays), "destroy", "storm COUNT PER-SECOND", "theme NAME".
  std::string run(const std::string& line);
  // Answers the events that are waiting; false when the X server is gone.
  bool answerEvents();
  [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(connection_); }

 private:
  struct Window {
    std::optional<std::array<std::uint32_t, 2>>
        home;           // stubborn: the corner of its frame that it goes back to
    std::string keys;   // those it received
    bool asks = false;  // before it closes
  };

  [[nodiscard]] xcb_atom_t atom(const std::string& name) const;
  void setText(xcb_window_t window, const std::string& property, const std::string& value);
  void setNumbers(xcb_window_t window, const std::string& property, xcb_atom_t type,
                  const std::uint32_t* values, std::uint32_t count);
  xcb_window_t open(std::int16_t x, std::int16_t y, std::uint16_t width, std::uint16_t height,
                    std::uint32_t shadow, const std::string& title, xcb_window_t parent = XCB_NONE);
  void setClass(xcb_window_t window, const std::string& name);
  void setType(xcb_window_t window, const std::string& name);
  // Has the window manager keep the window out of task bars.
  void keepOffTaskbar(xcb_window_t window);
  // Opens a question over the middle of the window, as a program does that was told to close it.
  void ask(xcb_window_t window);
  void makeStubborn(xcb_window_t window, int x, int y);
  // Where the frame's corner is when the window itself is at `x`, `y` of the root.
  [[nodiscard]] std::array<std::uint32_t, 2> frameCorner(xcb_window_t window, int x, int y) const;
  void fixSize(xcb_window_t window);
  void setShadow(xcb_window_t window, std::uint32_t margin);
  void storm(xcb_window_t window, int count, int perSecond);
  void churn(int count);
  // Has the window be the service that says which theme the desktop has.
  void publishTheme(xcb_window_t window, const std::string& theme);
  void answer(const xcb_generic_event_t& event);
  void noteKey(const xcb_key_press_event_t& press);

  std::string className_;
  xcb_connection_t* connection_;
  xcb_screen_t* screen_;
  std::map<xcb_window_t, Window> windows_;
};

}  // namespace pellar::e2e
