#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <set>
#include <utility>

#include "platform/EventTap.h"

namespace pellar {

// Passive grabs of one key combination on the root window, whatever lock keys are on. A press freezes the
// keyboard until `settle` says what becomes of it.
class X11KeyGrabs {
 public:
  // `connection` is used by one thread at a time and outlives the grabs.
  X11KeyGrabs(xcb_connection_t* connection, xcb_window_t root, const KeyCombination& wanted);

  // Grabs the combination where the keyboard map has it now, in place of what is grabbed. False, and nothing
  // is grabbed, when another program holds a part of it, or when the key has no name here.
  bool take();

  [[nodiscard]] TapEvent event(const xcb_key_press_event_t& press) const;
  // Ends the freeze: the press is gone, or goes to the window that has the keyboard.
  void settle(const xcb_key_press_event_t& press, bool swallow);

 private:
  using Grab = std::pair<xcb_keycode_t, std::uint16_t>;  // modifiers

  [[nodiscard]] std::set<Grab> combinations() const;
  // The modifier that a key sets; 0 when it sets none.
  [[nodiscard]] std::uint16_t modifierOf(std::uint32_t keysym) const;
  void release();

  xcb_connection_t* connection_;
  xcb_window_t root_;
  KeyCombination wanted_;
  std::set<Grab> grabbed_;
};

}  // namespace pellar
