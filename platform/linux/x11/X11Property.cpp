#include "platform/linux/x11/X11Property.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "platform/linux/x11/CompoundText.h"

namespace pellar {

std::vector<std::uint32_t> numbers(const xcb_get_property_reply_t* reply) {
  if (reply == nullptr || reply->format != 32) return {};
  std::vector<std::uint32_t> values(reply->value_len);
  if (!values.empty()) {
    std::memcpy(values.data(), xcb_get_property_value(reply), values.size() * sizeof(std::uint32_t));
  }
  return values;
}

std::optional<std::string> bytes(const xcb_get_property_reply_t* reply) {
  if (reply == nullptr || reply->format != 8) return std::nullopt;
  return std::string(static_cast<const char*>(xcb_get_property_value(reply)), reply->value_len);
}

namespace {

// In units of four bytes.
constexpr std::uint32_t longestProperty = 16384;

// Decorations wider than this are nonsense that some client wrote into the property.
constexpr std::uint32_t widestEdge = 1000;

xcb_atom_t atomOf(X11Property property, const X11Atoms& atoms) {
  switch (property) {
    case X11Property::netName:
      return atoms.netWmName;
    case X11Property::wmName:
      return XCB_ATOM_WM_NAME;
    case X11Property::wmClass:
      return XCB_ATOM_WM_CLASS;
    case X11Property::clientMachine:
      return XCB_ATOM_WM_CLIENT_MACHINE;
    case X11Property::pid:
      return atoms.netWmPid;
    case X11Property::type:
      return atoms.netWmWindowType;
    case X11Property::transientFor:
      return XCB_ATOM_WM_TRANSIENT_FOR;
    case X11Property::hints:
      return XCB_ATOM_WM_HINTS;
    case X11Property::state:
      return atoms.netWmState;
    case X11Property::wmState:
      return atoms.wmState;
    case X11Property::desktop:
      return atoms.netWmDesktop;
    case X11Property::frameExtents:
      return atoms.netFrameExtents;
    case X11Property::shadow:
      return atoms.gtkFrameExtents;
    case X11Property::normalHints:
      return XCB_ATOM_WM_NORMAL_HINTS;
    case X11Property::strut:
      return atoms.netWmStrut;
    case X11Property::strutPartial:
      return atoms.netWmStrutPartial;
  }
  return XCB_ATOM_NONE;
}

std::optional<std::uint32_t> number(const xcb_get_property_reply_t* reply) {
  const auto values = numbers(reply);
  return values.empty() ? std::nullopt : std::optional(values.front());
}

std::string withoutTrailingZeros(std::string text) {
  while (!text.empty() && text.back() == '\0') text.pop_back();
  return text;
}

bool continuesCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// Takes off what the limit left of the last character.
std::string cutBetweenCharacters(std::string text) {
  std::size_t start = text.size();
  while (start > 0 && text.size() - start < 3 && continuesCharacter(text[start - 1])) --start;
  if (start == 0) return text;
  const auto lead = static_cast<unsigned char>(text[start - 1]);
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
  if (text.size() - (start - 1) < length) text.resize(start - 1);
  return text;
}

std::string utf8OfLatin1(const std::string& text) {
  std::string result;
  for (const char each : text) {
    const auto byte = static_cast<unsigned char>(each);
    if (byte < 0x80) {
      result += each;
    } else {
      result += static_cast<char>(0xC0U | (byte >> 6U));
      result += static_cast<char>(0x80U | (byte & 0x3FU));
    }
  }
  return result;
}

std::optional<std::string> titleText(const xcb_get_property_reply_t* reply, const X11Atoms& atoms) {
  auto text = bytes(reply);
  if (!text) return std::nullopt;
  if (reply->type == XCB_ATOM_STRING) return utf8OfLatin1(withoutTrailingZeros(*text));
  // The only other type that titles have is COMPOUND_TEXT.
  if (reply->type != atoms.utf8String) return utf8OfCompoundText(withoutTrailingZeros(*text));
  if (reply->bytes_after > 0) text = cutBetweenCharacters(*text);
  return withoutTrailingZeros(*text);
}

std::optional<X11Extents> extents(const xcb_get_property_reply_t* reply) {
  const auto values = numbers(reply);
  if (values.size() < 4) return std::nullopt;
  if (std::any_of(values.begin(), values.begin() + 4, [](auto width) { return width > widestEdge; })) {
    return std::nullopt;
  }
  return X11Extents{static_cast<int>(values[0]), static_cast<int>(values[1]), static_cast<int>(values[2]),
                    static_cast<int>(values[3])};
}

std::optional<std::vector<std::uint32_t>> exactly(std::size_t count, const xcb_get_property_reply_t* reply) {
  auto values = numbers(reply);
  if (values.size() < count) return std::nullopt;
  values.resize(count);
  return values;
}

void applyClass(X11Window& window, const xcb_get_property_reply_t* reply) {
  const std::string text = bytes(reply).value_or(std::string());
  const auto end = text.find('\0');
  window.instanceName = text.substr(0, end);
  window.className.clear();
  if (end != std::string::npos) window.className = text.substr(end + 1, text.find('\0', end + 1) - end - 1);
}

void applyType(X11Window& window, const xcb_get_property_reply_t* reply, const X11Atoms& atoms) {
  const auto type = number(reply);
  window.calledNormal = type == atoms.typeNormal;
  if (!type || *type == atoms.typeNormal) {
    window.kind = X11WindowKind::normal;
  } else if (*type == atoms.typeDialog) {
    window.kind = X11WindowKind::dialog;
  } else if (*type == atoms.typeDock || *type == atoms.typeDesktop) {
    window.kind = X11WindowKind::furniture;
  } else {
    window.kind = X11WindowKind::other;
  }
}

void applyState(X11Window& window, const xcb_get_property_reply_t* reply, const X11Atoms& atoms) {
  const auto states = numbers(reply);
  const auto has = [&states](xcb_atom_t atom) {
    return std::find(states.begin(), states.end(), atom) != states.end();
  };
  window.hidden = has(atoms.stateHidden);
  window.fullscreen = has(atoms.stateFullscreen);
  window.maximizedVertically = has(atoms.stateMaximizedVert);
  window.maximizedHorizontally = has(atoms.stateMaximizedHorz);
  window.skipsTaskbar = has(atoms.stateSkipTaskbar);
}

std::optional<xcb_window_t> groupOf(const xcb_get_property_reply_t* reply) {
  // WM_HINTS: flags first, the group's leader last, valid with flag WindowGroupHint.
  constexpr std::uint32_t hasGroup = 1U << 6U;
  const auto hints = numbers(reply);
  if (hints.size() < 9 || (hints[0] & hasGroup) == 0 || hints[8] == XCB_WINDOW_NONE) return std::nullopt;
  return hints[8];
}

std::optional<X11Aspect> aspectOf(const xcb_get_property_reply_t* reply) {
  // WM_SIZE_HINTS: two fractions, valid with flag PAspect, and before the gravity the base size, with flag
  // PBaseSize.
  constexpr std::uint32_t hasAspect = 1U << 7U;
  constexpr std::uint32_t hasBase = 1U << 8U;
  const auto hints = numbers(reply);
  if (hints.size() < 15 || (hints[0] & hasAspect) == 0) return std::nullopt;
  constexpr std::uint32_t largest = 1U << 15U;
  if (std::any_of(hints.begin() + 11, hints.begin() + 15,
                  [](std::uint32_t part) { return part == 0 || part > largest; }))
    return std::nullopt;
  X11Aspect aspect{
      static_cast<double>(hints[11]) / hints[12], static_cast<double>(hints[13]) / hints[14], {}};
  if (aspect.least > aspect.most) return std::nullopt;
  if (hints.size() >= 17 && (hints[0] & hasBase) != 0 && hints[15] <= largest && hints[16] <= largest)
    aspect.base = {static_cast<double>(hints[15]), static_cast<double>(hints[16])};
  return aspect;
}

std::uint32_t gravityOf(const xcb_get_property_reply_t* reply) {
  // WM_SIZE_HINTS: flags first, the gravity last, valid with flag PWinGravity.
  constexpr std::uint32_t hasGravity = 1U << 9U;
  const auto hints = numbers(reply);
  if (hints.size() < 18 || (hints[0] & hasGravity) == 0) return XCB_GRAVITY_NORTH_WEST;
  return hints[17];
}

}  // namespace

std::optional<X11Property> x11PropertyOf(xcb_atom_t atom, const X11Atoms& atoms) {
  for (const X11Property property : allX11Properties) {
    if (atomOf(property, atoms) == atom) return property;
  }
  return std::nullopt;
}

xcb_get_property_cookie_t requestX11Property(X11Connection& connection, xcb_window_t window,
                                             X11Property property) {
  return xcb_get_property(connection.xcb(), 0, window, atomOf(property, connection.atoms()),
                          XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
}

void applyX11Property(X11Window& window, X11Property property, const xcb_get_property_reply_t* reply,
                      const X11Atoms& atoms) {
  if (reply != nullptr && reply->type == XCB_ATOM_NONE) reply = nullptr;
  switch (property) {
    case X11Property::netName:
      window.netName = titleText(reply, atoms);
      break;
    case X11Property::wmName:
      window.wmName = titleText(reply, atoms);
      break;
    case X11Property::wmClass:
      applyClass(window, reply);
      break;
    case X11Property::clientMachine: {
      window.clientMachine = bytes(reply);
      if (window.clientMachine) window.clientMachine = withoutTrailingZeros(*window.clientMachine);
      break;
    }
    case X11Property::pid: {
      const auto pid = number(reply);
      const bool valid = pid && *pid > 0 && *pid <= 0x7FFFFFFFU;
      window.pid = valid ? std::optional(static_cast<std::int32_t>(*pid)) : std::nullopt;
      break;
    }
    case X11Property::type:
      applyType(window, reply, atoms);
      break;
    case X11Property::transientFor:
      window.transientFor = number(reply);
      if (window.transientFor == XCB_WINDOW_NONE) window.transientFor.reset();
      break;
    case X11Property::hints:
      window.group = groupOf(reply);
      break;
    case X11Property::state:
      applyState(window, reply, atoms);
      break;
    case X11Property::wmState:
      window.iconic = number(reply) == iconicState;
      break;
    case X11Property::desktop:
      window.desktop = number(reply);
      break;
    case X11Property::frameExtents:
      window.frameExtents = extents(reply);
      break;
    case X11Property::shadow:
      window.shadow = extents(reply).value_or(X11Extents{});
      break;
    case X11Property::normalHints:
      window.gravity = gravityOf(reply);
      window.aspect = aspectOf(reply);
      break;
    case X11Property::strut:
      window.strut = exactly(4, reply);
      break;
    case X11Property::strutPartial:
      window.strutPartial = exactly(12, reply);
      break;
  }
}

}  // namespace pellar
