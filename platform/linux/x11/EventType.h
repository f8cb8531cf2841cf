#pragma once

#include <cstdint>

namespace pellar {

// What kind of event of xcb this is (XCB_BUTTON_PRESS), whoever sent it; 0 for an error.
template <class Event>
[[nodiscard]] constexpr std::uint8_t eventType(const Event& event) {
  return event.response_type & 0x7fU;
}

// Whether another client sent it and not the server: a window manager's own report of where a window is.
template <class Event>
[[nodiscard]] constexpr bool isSynthetic(const Event& event) {
  return (event.response_type & 0x80U) != 0;
}

}  // namespace pellar
