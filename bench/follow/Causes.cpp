#include "bench/follow/Causes.h"

#include <poll.h>

#include <stdexcept>

#include "tests/e2e/XReply.h"

namespace pellar::bench {
namespace {

using e2e::XReply;

}  // namespace

Causes::Causes(const std::string& display) : connection_(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection_) != 0) throw std::runtime_error("cannot use display " + display);
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  title_ = atom("_NET_WM_NAME");
  utf8_ = atom("UTF8_STRING");
  active_ = atom("_NET_ACTIVE_WINDOW");
  select(root_, XCB_EVENT_MASK_PROPERTY_CHANGE);
}

Causes::~Causes() {
  xcb_disconnect(connection_);
}

xcb_atom_t Causes::atom(const std::string& name) const {
  const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
  if (!reply) throw std::runtime_error("the X server is gone");
  return reply->atom;
}

void Causes::select(xcb_window_t window, std::uint32_t events) {
  xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &events);
  const XReply<xcb_get_input_focus_reply_t> fence(
      xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  dropEvents();
}

void Causes::dropEvents() {
  while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
  }
}

xcb_window_t Causes::topLevel(xcb_window_t window) const {
  for (;;) {
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
    if (!tree || tree->parent == root_ || tree->parent == XCB_NONE) return window;
    window = tree->parent;
  }
}

template <class Matches>
std::optional<Cause> Causes::await(Clock::time_point asked, const Matches& matches) {
  const auto end = asked + patience;
  for (;;) {
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
      const auto now = Clock::now();
      if (matches(*event)) return Cause{asked, now};
    }
    if (xcb_connection_has_error(connection_) != 0) throw std::runtime_error("the X server is gone");
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0) return std::nullopt;
    pollfd entry{xcb_get_file_descriptor(connection_), POLLIN, 0};
    poll(&entry, 1, static_cast<int>(left));
  }
}

std::optional<Cause> Causes::move(xcb_window_t window, int x, int y) {
  const auto frame = topLevel(window);
  select(frame, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
  const std::uint32_t place[] = {static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)};
  const auto asked = Clock::now();
  xcb_configure_window(connection_, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place);
  xcb_flush(connection_);
  return await(asked, [&](const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_CONFIGURE_NOTIFY) return false;
    const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    return configure.window == frame && configure.x == x && configure.y == y;
  });
}

std::optional<Cause> Causes::retitle(xcb_window_t window, const std::string& title) {
  select(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
  const auto asked = Clock::now();
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, title_, utf8_, 8,
                      static_cast<std::uint32_t>(title.size()), title.data());
  xcb_flush(connection_);
  return await(asked, [&](const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) return false;
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    return property.window == window && property.atom == title_;
  });
}

std::optional<Cause> Causes::activate(xcb_window_t window) {
  dropEvents();
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = active_;
  message.data.data32[0] = 2;  // asked by the user's own tool
  const auto asked = Clock::now();
  xcb_send_event(connection_, 0, root_,
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&message));
  xcb_flush(connection_);
  return await(asked, [&](const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) return false;
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (property.window != root_ || property.atom != active_) return false;
    return true;
  });
}

}  // namespace pellar::bench
