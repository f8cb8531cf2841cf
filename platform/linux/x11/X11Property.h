#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Window.h"

namespace pellar {

// The properties of client windows that the mirror follows.
enum class X11Property {
  netName,
  wmName,
  wmClass,
  clientMachine,
  pid,
  type,
  transientFor,
  hints,
  state,
  wmState,
  desktop,
  frameExtents,
  shadow,
  normalHints,
  strut,
  strutPartial
};

inline constexpr std::array allX11Properties{
    X11Property::netName, X11Property::wmName,      X11Property::wmClass,      X11Property::clientMachine,
    X11Property::pid,     X11Property::type,        X11Property::transientFor, X11Property::hints,
    X11Property::state,   X11Property::wmState,     X11Property::desktop,      X11Property::frameExtents,
    X11Property::shadow,  X11Property::normalHints, X11Property::strut,        X11Property::strutPartial};

// The property that an atom names; absent when the mirror does not follow it.
[[nodiscard]] std::optional<X11Property> x11PropertyOf(xcb_atom_t atom, const X11Atoms& atoms);

// The numbers of a property's value; none when the reply is null or no list of 32-bit numbers.
[[nodiscard]] std::vector<std::uint32_t> numbers(const xcb_get_property_reply_t* reply);
// The bytes of a property's value; absent when the reply is null or no list of bytes.
[[nodiscard]] std::optional<std::string> bytes(const xcb_get_property_reply_t* reply);

// Asks for a property, at most 64 kB of it.
xcb_get_property_cookie_t requestX11Property(X11Connection& connection, xcb_window_t window,
                                             X11Property property);

// Takes a property's value into `window`; null, or a value of the wrong shape, means that it has none.
void applyX11Property(X11Window& window, X11Property property, const xcb_get_property_reply_t* reply,
                      const X11Atoms& atoms);

}  // namespace pellar
