#include "platform/linux/x11/KeyCodes.h"

#include "platform/linux/x11/XcbReply.h"

namespace pellar {

std::set<xcb_keycode_t> keyCodesOf(xcb_connection_t* connection, std::uint32_t keysym) {
  std::set<xcb_keycode_t> result;
  const xcb_setup_t* setup = xcb_get_setup(connection);
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const XcbReply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
      connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, count), nullptr));
  if (!map || map->keysyms_per_keycode == 0) return result;
  const xcb_keysym_t* keysyms = xcb_get_keyboard_mapping_keysyms(map.get());
  for (int i = 0; i < xcb_get_keyboard_mapping_keysyms_length(map.get()); ++i) {
    if (keysyms[i] == keysym)
      result.insert(static_cast<xcb_keycode_t>(setup->min_keycode + i / map->keysyms_per_keycode));
  }
  return result;
}

}  // namespace pellar
