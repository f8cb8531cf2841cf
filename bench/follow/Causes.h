#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <optional>
#include <string>

#include "bench/follow/Samples.h"

namespace pellar::bench {

// When something was asked for, and when this process read that it had happened.
struct Cause {
  Clock::time_point asked;
  Clock::time_point happened;
};

// Does to windows what users and programs do, on a connection of its own, and sees it happen. Absent when it
// did not happen in time.
class Causes {
 public:
  // How long anything may take.
  static constexpr std::chrono::milliseconds patience{2000};

  explicit Causes(const std::string& display);
  ~Causes();
  Causes(const Causes&) = delete;
  Causes& operator=(const Causes&) = delete;

  // Moves a managed window's frame, so that its corner is at (x, y).
  std::optional<Cause> move(xcb_window_t window, int x, int y);
  std::optional<Cause> retitle(xcb_window_t window, const std::string& title);
  std::optional<Cause> activate(xcb_window_t window);

  // The child of the root window that holds a window.
  [[nodiscard]] xcb_window_t topLevel(xcb_window_t window) const;

 private:
  template <class Matches>
  std::optional<Cause> await(Clock::time_point asked, const Matches& matches);
  void select(xcb_window_t window, std::uint32_t events);
  void dropEvents();
  [[nodiscard]] xcb_atom_t atom(const std::string& name) const;

  xcb_connection_t* connection_;
  xcb_window_t root_ = XCB_NONE;
  xcb_atom_t title_;
  xcb_atom_t utf8_;
  xcb_atom_t active_;
};

}  // namespace pellar::bench
