#include "platform/linux/x11/X11Contrast.h"

#include <xcb/xfixes.h>

#include <span>
#include <string>
#include <string_view>

#include "platform/linux/x11/DesktopTheme.h"
#include "platform/linux/x11/ScreenNumber.h"
#include "platform/linux/x11/XcbReply.h"

namespace pellar {
namespace {

constexpr std::uint32_t longestSettings = 16384;  // in units of four bytes

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
  const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
      connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
      nullptr));
  return reply ? reply->atom : XCB_NONE;
}

}  // namespace

X11Contrast::X11Contrast(xcb_connection_t* connection, const xcb_screen_t& screen)
    : connection_(connection),
      selection_(atom(connection, "_XSETTINGS_S" + std::to_string(screenNumber(connection, screen)))),
      settings_(atom(connection, "_XSETTINGS_SETTINGS")) {
  // Its version was told to the server by X11Compositor.
  if (const auto* xfixes = xcb_get_extension_data(connection, &xcb_xfixes_id);
      xfixes != nullptr && xfixes->present != 0) {
    selectionEvent_ = static_cast<std::uint8_t>(xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    xcb_xfixes_select_selection_input(connection, screen.root, selection_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  }
  read();
}

// The service's window may go at any moment, and what is asked of it then is refused.
void X11Contrast::read() {
  increased_ = false;
  const XcbReply<xcb_get_selection_owner_reply_t> owner(
      xcb_get_selection_owner_reply(connection_, xcb_get_selection_owner(connection_, selection_), nullptr));
  service_ = owner ? owner->owner : XCB_NONE;
  if (service_ == XCB_NONE) return;
  // What is followed of every window, in case that this is one of a program's as well.
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, service_, XCB_CW_EVENT_MASK, &events);
  const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      connection_,
      xcb_get_property(connection_, 0, service_, settings_, XCB_GET_PROPERTY_TYPE_ANY, 0, longestSettings),
      nullptr));
  if (!reply || reply->format != 8) return;
  const auto* const bytes = static_cast<const std::byte*>(xcb_get_property_value(reply.get()));
  const auto theme = themeIn({bytes, static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))});
  increased_ = theme && increasesContrast(*theme);
}

bool X11Contrast::handle(const xcb_generic_event_t& event) {
  const auto type = event.response_type & 0x7fU;
  const auto& selection = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
  const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  const bool otherService =
      selectionEvent_ != 0 && type == selectionEvent_ && selection.selection == selection_;
  const bool otherSettings = type == XCB_PROPERTY_NOTIFY && service_ != XCB_NONE &&
                             property.window == service_ && property.atom == settings_;
  if (!otherService && !otherSettings) return false;
  const bool before = increased_;
  read();
  return increased_ != before;
}

}  // namespace pellar
