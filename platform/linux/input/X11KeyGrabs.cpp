#include "platform/linux/input/X11KeyGrabs.h"

#include <array>
#include <optional>
#include <vector>

#include "platform/VirtualKey.h"
#include "platform/linux/x11/KeyCodes.h"
#include "platform/linux/x11/XcbReply.h"

namespace pellar {
namespace {

constexpr std::uint32_t numLock = 0xff7f;
constexpr std::uint32_t scrollLock = 0xff14;

struct ModifierName {
  std::uint64_t flag;
  std::uint16_t mask;
};

// The keys that a Mac's keyboard calls Option and Command are Alt and Super here.
constexpr std::array<ModifierName, 5> modifierNames{{{KeyFlags::capsLock, XCB_MOD_MASK_LOCK},
                                                     {KeyFlags::shift, XCB_MOD_MASK_SHIFT},
                                                     {KeyFlags::control, XCB_MOD_MASK_CONTROL},
                                                     {KeyFlags::option, XCB_MOD_MASK_1},
                                                     {KeyFlags::command, XCB_MOD_MASK_4}}};

// The keysym of a virtual key code, of those that are tapped.
std::optional<std::uint32_t> keysymOf(std::uint16_t keyCode) {
  if (keyCode == VirtualKey::tab) return 0xff09;  // XK_Tab
  return std::nullopt;
}

// Every sum of some of `masks` and `base`.
std::set<std::uint16_t> sums(std::uint16_t base, const std::vector<std::uint16_t>& masks) {
  std::set<std::uint16_t> result{base};
  for (const std::uint16_t mask : masks) {
    std::set<std::uint16_t> with;
    for (const std::uint16_t each : result) with.insert(static_cast<std::uint16_t>(each | mask));
    result.merge(with);
  }
  return result;
}

}  // namespace

X11KeyGrabs::X11KeyGrabs(xcb_connection_t* connection, xcb_window_t root, const KeyCombination& wanted)
    : connection_(connection), root_(root), wanted_(wanted) {}

bool X11KeyGrabs::take() {
  const std::set<Grab> wanted = combinations();
  if (wanted.empty()) return false;
  // A new keyboard map is told in many pieces, few of which are about these keys.
  if (wanted == grabbed_) return true;
  release();
  std::vector<xcb_void_cookie_t> cookies;
  cookies.reserve(wanted.size());
  for (const auto& [key, modifiers] : wanted) {
    cookies.push_back(
        xcb_grab_key_checked(connection_, 0, root_, modifiers, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC));
  }
  grabbed_ = wanted;
  bool refused = false;
  for (const auto cookie : cookies) refused = owned(xcb_request_check(connection_, cookie)) || refused;
  if (refused) release();
  return !refused;
}

void X11KeyGrabs::release() {
  for (const auto& [key, modifiers] : grabbed_) xcb_ungrab_key(connection_, key, root_, modifiers);
  grabbed_.clear();
  xcb_flush(connection_);
}

std::set<X11KeyGrabs::Grab> X11KeyGrabs::combinations() const {
  const auto keysym = keysymOf(wanted_.keyCode);
  if (!keysym) return {};
  std::uint16_t held = 0;
  std::vector<std::uint16_t> either{modifierOf(numLock), modifierOf(scrollLock)};
  for (const auto& [flag, mask] : modifierNames) {
    if ((wanted_.flags & flag) != 0) held = static_cast<std::uint16_t>(held | mask);
    if ((wanted_.mask & flag) == 0) either.push_back(mask);
  }
  std::set<Grab> result;
  for (const xcb_keycode_t key : keyCodesOf(connection_, *keysym)) {
    for (const std::uint16_t modifiers : sums(held, either)) result.emplace(key, modifiers);
  }
  return result;
}

std::uint16_t X11KeyGrabs::modifierOf(std::uint32_t keysym) const {
  const std::set<xcb_keycode_t> keys = keyCodesOf(connection_, keysym);
  const auto map =
      owned(xcb_get_modifier_mapping_reply(connection_, xcb_get_modifier_mapping(connection_), nullptr));
  if (!map || map->keycodes_per_modifier == 0) return 0;
  const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(map.get());
  std::uint16_t result = 0;
  for (int i = 0; i < xcb_get_modifier_mapping_keycodes_length(map.get()); ++i) {
    if (codes[i] != 0 && keys.contains(codes[i]))
      result = static_cast<std::uint16_t>(result | 1U << (i / map->keycodes_per_modifier));
  }
  return result;
}

TapEvent X11KeyGrabs::event(const xcb_key_press_event_t& press) const {
  TapEvent result{TapEvent::Type::keyDown, wanted_.keyCode, 0};
  for (const auto& [flag, mask] : modifierNames)
    if ((press.state & mask) != 0) result.flags |= flag;
  return result;
}

void X11KeyGrabs::settle(const xcb_key_press_event_t& press, bool swallow) {
  if (swallow) {
    // Not let go first: what was typed meanwhile would be given to this grab, and be lost. The end of the
    // grab hands on what is waiting, and what is typed before the key comes up.
    xcb_ungrab_keyboard(connection_, press.time);
  } else {
    xcb_allow_events(connection_, XCB_ALLOW_REPLAY_KEYBOARD, press.time);
  }
  xcb_flush(connection_);
}

}  // namespace pellar
