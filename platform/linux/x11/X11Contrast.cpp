#include "platform/linux/x11/X11Contrast.h"

#include <xcb/xfixes.h>

#include <span>

#include "platform/linux/x11/DesktopTheme.h"
#include "platform/linux/x11/EventType.h"
#include "platform/linux/x11/InternAtom.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/X11Selection.h"
#include "platform/linux/x11/XcbReply.h"

namespace pellar {
namespace {

constexpr std::uint32_t longestSettings = 16384;  // in units of four bytes

}  // namespace

X11Contrast::X11Contrast(xcb_connection_t* connection, const xcb_screen_t& screen)
    : connection_(connection),
      selection_(X11Selection::ofScreen(connection, screen, "_XSETTINGS_S")),
      settings_(internAtom(connection, "_XSETTINGS_SETTINGS")),
      selectionEvent_(X11Selection::follow(connection, screen.root, selection_)) {
  read();
}

// The service's window may go at any moment, and what is asked of it then is refused.
void X11Contrast::read() {
  increased_ = false;
  service_ = X11Selection::owner(connection_, selection_);
  if (service_ == XCB_NONE) return;
  // What is followed of every window, in case that this is one of a program's as well.
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, service_, XCB_CW_EVENT_MASK, &events);
  const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      connection_,
      xcb_get_property(connection_, 0, service_, settings_, XCB_GET_PROPERTY_TYPE_ANY, 0, longestSettings),
      nullptr));
  const auto settings = bytes(reply.get());
  const auto theme = settings ? themeIn(std::as_bytes(std::span(*settings))) : std::nullopt;
  increased_ = theme && increasesContrast(*theme);
}

bool X11Contrast::handle(const xcb_generic_event_t& event) {
  const auto type = eventType(event);
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
